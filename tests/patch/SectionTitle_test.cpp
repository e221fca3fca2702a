#include "patch/SectionTitle.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

TEST(SectionTitle, IsTheLineOfItsKind) {
    EXPECT_EQ(SectionTitle(SectionKind::Picture, "0012"), "; ##### Picture 0012 #####");
    EXPECT_EQ(SectionTitle(SectionKind::Png, "0012AB40"), "; ##### PNG Picture 0012AB40 #####");
}

TEST(SectionTitle, GivesItsNameBackToItsOwnKindOnly) {
    for (const char* name : {"0012", "", "a b", "#####", "Picture 1", "PNG Picture 1 #####"}) {
        EXPECT_EQ(NameIn(SectionTitle(SectionKind::Picture, name), SectionKind::Picture), name);
        EXPECT_EQ(NameIn(SectionTitle(SectionKind::Png, name), SectionKind::Png), name);
        EXPECT_EQ(NameIn(SectionTitle(SectionKind::Png, name), SectionKind::Picture), std::nullopt);
        EXPECT_EQ(NameIn(SectionTitle(SectionKind::Picture, name), SectionKind::Png), std::nullopt);
    }
}

TEST(SectionTitle, ALineThatEndsBeforeItsMarksIsNone) {
    const std::string shortest = SectionTitle(SectionKind::Picture, "");
    for (std::size_t length = 0; length < shortest.size(); ++length)
        EXPECT_EQ(NameIn(shortest.substr(0, length), SectionKind::Picture), std::nullopt) << length;
}

TEST(SectionTitle, WhateverStandsInThePlaceOfTheMarksIsTakenForThem) {
    EXPECT_EQ(NameIn("; ##### Picture 0012345678", SectionKind::Picture), "0012");
}

}  // namespace
}  // namespace pictavo::tests
