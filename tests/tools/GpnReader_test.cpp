#include "tools/GpnReader.h"

#include <gmock/gmock.h>
#include <random>

#include "codec/GPFcodec.h"

namespace pictavo {

bool operator==(const GpnPicture& one, const GpnPicture& other) {
    return one.place == other.place && one.number == other.number && one.isGPF2 == other.isGPF2;
}

void PrintTo(const GpnPicture& picture, std::ostream* out) {
    *out << picture.number << (picture.isGPF2 ? " (GPF2) " : " (GPF) ") << picture.place.begin << " to "
         << picture.place.end;
}

}  // namespace pictavo

namespace pictavo::tests {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using std::string_literals::operator""s;

const std::string kGpf(kGpfMagic);
const std::string kGpf2(kGpf2Magic);

/// The block behind a magic, which begins with the number's two bytes.
std::string Head(const std::string& number) {
    return number + std::string(14, 'h');
}

std::string Data(std::size_t length) {
    return std::string(length, 'd');
}

std::vector<GpnPicture> Read(const std::string& container) {
    const ByteView bytes = AsBytes(container);
    const auto pictures = ReadGpn(MemorySource(Bytes(bytes.begin(), bytes.end())));
    EXPECT_TRUE(pictures);
    return pictures.value_or(std::vector<GpnPicture>());
}

TEST(GpnReader, APictureReachesFromItsMagicToTheNextOrToTheEnd) {
    const std::string container = kGpf + Head("\x05\x00"s) + Data(48) + kGpf2 + Head("\x25\x00"s) + Data(16);
    EXPECT_THAT(Read(container), ElementsAre(GpnPicture{{0, 80}, 5, false}, GpnPicture{{80, 128}, 37, true}));
}

TEST(GpnReader, TheNumberIsLittleEndian) {
    EXPECT_THAT(Read(kGpf + Head("\x02\x01"s)), ElementsAre(GpnPicture{{0, 32}, 258, false}));
}

TEST(GpnReader, KeptTheNumberIsSigned) {
    EXPECT_EQ(Read(kGpf + Head("\xFF\x7F"s)).at(0).number, 32767);
    EXPECT_EQ(Read(kGpf + Head("\x00\x80"s)).at(0).number, -32768);
    EXPECT_EQ(Read(kGpf + Head("\xFF\xFF"s)).at(0).number, -1);
}

TEST(GpnReader, AMagicOffTheStepsOfSixteenIsData) {
    for (std::size_t off = 1; off < 16; ++off) {
        const std::string container =
            kGpf + Head("\x01\x00"s) + Data(off) + kGpf2 + Data(16 - off) + Head("\x02\x00"s);
        EXPECT_THAT(Read(container), ElementsAre(GpnPicture{{0, container.size()}, 1, false})) << off;
    }
}

TEST(GpnReader, AMagicInOtherCaseIsData) {
    const std::string start = kGpf + Head("\x01\x00"s);
    for (const char* other : {"graphicpatchfile", "GRAPHICPATCHFILE", "GraphPatchfile_2", "GraphPatchFile_3"})
        EXPECT_THAT(Read(start + other + Data(16)), ElementsAre(GpnPicture{{0, 64}, 1, false})) << other;
}

TEST(GpnReader, WhatLiesBeforeTheFirstMagicBelongsToNoPicture) {
    EXPECT_THAT(Read(Data(48) + kGpf + Head("\x03\x00"s)), ElementsAre(GpnPicture{{48, 80}, 3, false}));
}

TEST(GpnReader, WithoutAMagicThereIsNoPicture) {
    EXPECT_THAT(Read(""), IsEmpty());
    EXPECT_THAT(Read(Data(1000)), IsEmpty());
    EXPECT_THAT(Read(kGpf.substr(0, 15)), IsEmpty());
    EXPECT_THAT(Read(Data(8) + kGpf + Head("\x01\x00"s)), IsEmpty());
}

TEST(GpnReader, TheBlockBehindAMagicIsThePicturesEvenWhenItIsAMagicItself) {
    const int number = 'G' + ('r' << 8);
    EXPECT_THAT(Read(kGpf + kGpf2 + Data(16)), ElementsAre(GpnPicture{{0, 48}, number, false}));
}

TEST(GpnReader, MagicsMayFollowEachOtherHeadByHead) {
    EXPECT_THAT(Read(kGpf + Head("\x01\x00"s) + kGpf2 + Head("\x02\x00"s)),
                ElementsAre(GpnPicture{{0, 32}, 1, false}, GpnPicture{{32, 64}, 2, true}));
}

TEST(GpnReader, AShortLastBlockBelongsToTheLastPicture) {
    for (std::size_t rest = 1; rest < 16; ++rest)
        EXPECT_THAT(Read(kGpf + Head("\x01\x00"s) + Data(rest)),
                    ElementsAre(GpnPicture{{0, 32 + rest}, 1, false}));
}

TEST(GpnReader, AHeadThatTheContainerCutsReadsAsZerosThere) {
    EXPECT_THAT(Read(kGpf), ElementsAre(GpnPicture{{0, 16}, 0, false}));
    EXPECT_THAT(Read(kGpf + "\x07"), ElementsAre(GpnPicture{{0, 17}, 7, false}));
}

/// The procedure as it would be told: block by block, the block behind a magic going with it.
std::vector<GpnPicture> ReadPlainly(const std::string& container) {
    std::vector<GpnPicture> pictures;
    for (std::size_t at = 0; at < container.size(); at += 16) {
        const std::string block = container.substr(at, 16);
        if (!pictures.empty()) pictures.back().place.end = std::min(at + 16, container.size());
        if (block != kGpf && block != kGpf2) continue;
        if (!pictures.empty()) pictures.back().place.end = at;
        const std::string head = container.substr(std::min(at + 16, container.size()), 16) + "\0\0"s;
        const int low = static_cast<std::uint8_t>(head[0]);
        const int number = low + 256 * static_cast<std::int8_t>(head[1]);
        at += 16;
        pictures.push_back({{at - 16, std::min(at + 16, container.size())}, number, block == kGpf2});
    }
    return pictures;
}

TEST(GpnReader, CutsRandomContainersAsThePlainProcedureDoes) {
    std::mt19937 random(4);
    for (int round = 0; round < 20'000; ++round) {
        std::string container;
        for (auto pieces = random() % 12; pieces > 0; --pieces) {
            const std::string all[] = {
                kGpf,     kGpf2,    Head(std::string(1, static_cast<char>(random())) + "\x01"),
                Data(16), Data(32), Data(random() % 20 == 0 ? 5 : 16)};
            container += all[random() % std::size(all)];
        }
        ASSERT_EQ(Read(container), ReadPlainly(container)) << container;
    }
}

}  // namespace
}  // namespace pictavo::tests
