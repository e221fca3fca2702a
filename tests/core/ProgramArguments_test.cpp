#include "core/ProgramArguments.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

#ifndef _WIN32  // there the arguments of main do not count
TEST(ProgramArguments, AreThoseOfMainWithoutTheProgram) {
    std::string program = "p", blank = "a b", bytes = "\xFF\xD0\x96", empty;
    char* given[] = {program.data(), blank.data(), bytes.data(), empty.data()};
    EXPECT_EQ(ProgramArguments(4, given), (std::vector<std::string>{"a b", "\xFF\xD0\x96", ""}));
    EXPECT_TRUE(ProgramArguments(1, given).empty());
    EXPECT_TRUE(ProgramArguments(0, given).empty());
}
#endif

}  // namespace
}  // namespace pictavo::tests
