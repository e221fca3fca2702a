#include "ui/ProgramInformation.h"

#include <gmock/gmock.h>

#include "core/Version.h"

namespace pictavo::tests {
namespace {

TEST(ProgramInformation, VersionAndHelpAreAnswered) {
    EXPECT_EQ(InformationAskedFor({"--version"}), "pictavo " + std::string(kVersion) + "\n");
    EXPECT_THAT(InformationAskedFor({"--help"}).value_or(""), ::testing::StartsWith("Usage: pictavo [FILE"));
}

TEST(ProgramInformation, AllElseNamesFiles) {
    using Arguments = std::vector<std::string>;
    for (const auto& arguments :
         {Arguments{}, {"a.bin"}, {"--Help"}, {"-h"}, {"--help", "a.bin"}, {"a.bin", "--version"}})
        EXPECT_FALSE(InformationAskedFor(arguments));
}

}  // namespace
}  // namespace pictavo::tests
