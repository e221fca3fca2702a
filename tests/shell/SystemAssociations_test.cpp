#include "shell/SystemAssociations.h"

#include "support/FakeKeyStore.h"
#include "support/ScriptedPorts.h"

namespace pictavo::tests {
namespace {

class SystemAssociationsTest : public ::testing::Test {
  protected:
    const std::string command = "C:\\the phone\\Pictavo.exe \"%1\"";
    FakeKeyStore store;
    ScriptedPrompts prompts;
    SystemAssociations associations{store, prompts};
};

TEST_F(SystemAssociationsTest, WhatWasRegisteredIsFoundForBothExtensions) {
    EXPECT_TRUE(associations.RegisterPictureFileTypes(command));
    for (const std::string extension : {".gpf", ".gpf2"})
        EXPECT_EQ(associations.GetAssociatedProgram(extension), command);
    EXPECT_EQ(store.keys["gpffile"][""], "Graphic Patch File");
    EXPECT_EQ(store.keys["gpffile\\DefaultIcon"][""], "C:\\the phone\\Pictavo.exe,0");
    EXPECT_EQ(store.commits, 1);
}

TEST_F(SystemAssociationsTest, AFailureIsTheResultWhenAllWasTried) {
    store.refusedKey = ".gpf";
    const Status status = associations.RegisterPictureFileTypes(command);
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().path, ".gpf");
    EXPECT_EQ(store.keys[".gpf2"][""], "gpffile");
    EXPECT_EQ(store.commits, 1);
}

TEST_F(SystemAssociationsTest, ACommandThatTakesNoFileIsNotRegistered) {
    const Status status = associations.RegisterPictureFileTypes("C:\\Pictavo.exe");
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().kind, ErrorKind::Malformed);
    EXPECT_TRUE(store.changes.empty());
}

TEST_F(SystemAssociationsTest, ATypesNameThatCanNotBeReadIsShown) {
    store.keys[".gpf"];
    EXPECT_EQ(associations.GetAssociatedProgram(".gpf"), "");
    EXPECT_EQ(prompts.NoticeTexts(), std::vector<std::string>{"2"});
}

}  // namespace
}  // namespace pictavo::tests
