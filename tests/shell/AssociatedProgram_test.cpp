#include "shell/AssociatedProgram.h"

#include <gmock/gmock.h>

#include "support/FakeKeyStore.h"

namespace pictavo::tests {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AssociatedProgramTest : public ::testing::Test {
  protected:
    std::string Get(const std::string& extension = ".gpf") {
        return GetAssociatedProgram(store, extension,
                                    [this](const std::string& text) { told.push_back(text); });
    }

    FakeKeyStore store;
    std::vector<std::string> told;
};

TEST_F(AssociatedProgramTest, IsTheCommandOfTheExtensionsType) {
    store.keys[".gpf"][""] = "gpffile";
    store.keys["gpffile\\shell\\open\\command"][""] = "C:\\p.exe \"%1\"";
    EXPECT_EQ(Get(), "C:\\p.exe \"%1\"");
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(AssociatedProgramTest, ATerminatingNulIsNoPartOfAValue) {
    store.keys["gpffile\\shell\\open\\command"][""] = std::string("C:\\p.exe \"%1\"\0", 14);
    store.keys[".gpf"][""] = std::string("gpffile\0", 8);
    store.keys[".gpf2"][""] = "gpffile";
    for (const std::string extension : {".gpf", ".gpf2"}) EXPECT_EQ(Get(extension), "C:\\p.exe \"%1\"");
}

TEST_F(AssociatedProgramTest, AnUnknownExtensionIsNamed) {
    EXPECT_EQ(Get(".xyz"), "Unregistered file extension .xyz");
}

TEST_F(AssociatedProgramTest, ATypeMayHaveNoCommand) {
    store.keys[".gpf"][""] = "gpffile";
    EXPECT_EQ(Get(), "File type is not associated with a program.");
    store.keys["gpffile\\shell\\open\\command"];
    EXPECT_EQ(Get(), "File type is not associated with a program.");
}

TEST_F(AssociatedProgramTest, ATypesNameThatCanNotBeReadIsToldByNumberAndGivesNothing) {
    store.keys[".gpf"];
    store.readError = 234;
    EXPECT_EQ(Get(), "");
    EXPECT_THAT(told, ElementsAre("234"));
}

}  // namespace
}  // namespace pictavo::tests
