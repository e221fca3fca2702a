#include "shell/KeyFile.h"

#include <gtest/gtest.h>

namespace pictavo::tests {
namespace {

constexpr const char* kText =
    "# mine\n[Other]\na=1\n\n[ Odd ]\n[Group]\n# a=0\na = 2 \r\n[x]=3\nb=\n\n[Group]\nc=4";

std::string AfterSet(const std::string& text, const std::string& group, const std::string& key) {
    KeyFile file(text);
    file.Set(group, key, "new");
    return file.Text();
}

std::string AfterRemove(const std::string& text, const std::string& group, const std::string& key) {
    KeyFile file(text);
    file.Remove(group, key);
    return file.Text();
}

TEST(KeyFile, AValueIsThatOfItsGroup) {
    const KeyFile file(kText);
    EXPECT_EQ(file.Value("Other", "a"), "1");
    EXPECT_EQ(file.Value("Group", "a"), "2");
    EXPECT_EQ(KeyFile("[Group]\nc=4").Value("Group", "c"), "4");
    EXPECT_EQ(KeyFile("[Group]\nb=").Value("Group", "b"), "");
    EXPECT_EQ(file.Value("Other", "b"), std::nullopt);
    EXPECT_EQ(file.Value("None", "a"), std::nullopt);
    EXPECT_EQ(KeyFile("").Value("Group", "a"), std::nullopt);
}

TEST(KeyFile, TheLastOfSeveralLinesHolds) {
    EXPECT_EQ(KeyFile("[G]\na=1\na=2\n[H]\na=3\n").Value("G", "a"), "2");
    EXPECT_EQ(AfterSet("[G]\nb=1\nb=2\n", "G", "b"), "[G]\nb=1\nb=new\n");
    EXPECT_EQ(AfterRemove("[G]\na=1\nb=2\na=3\n", "G", "a"), "[G]\nb=2\n");
}

TEST(KeyFile, UnchangedItIsTheSameToTheByte) {
    for (const std::string& text : {std::string(kText), std::string(), std::string("\n"), std::string("x"),
                                    std::string("[G]\r\na=\xFF\0z\r\n\r\n", 14)})
        EXPECT_EQ(KeyFile(text).Text(), text);
}

TEST(KeyFile, SettingTouchesNoOtherLine) {
    EXPECT_EQ(AfterSet("[A]\nb=1\n[G]\n#b\nb = 2\r\nc=3", "G", "b"), "[A]\nb=1\n[G]\n#b\nb=new\r\nc=3");
    EXPECT_EQ(AfterSet("[A]\nb=1\n[G]\n#b\n", "G", "b"), "[A]\nb=1\n[G]\nb=new\n#b\n");
    EXPECT_EQ(AfterSet("[A]\nb=1", "G", "b"), "[A]\nb=1\n[G]\nb=new\n");
    EXPECT_EQ(AfterSet("[G]", "G", "b"), "[G]\nb=new\n");
    EXPECT_EQ(AfterSet("", "G", "b"), "[G]\nb=new\n");
}

TEST(KeyFile, RemovingUndoesSetting) {
    for (const std::string text : {"", "[A]\nb=1\n", "[G]\nc=1\n[B]\n"})
        EXPECT_EQ(AfterRemove(AfterSet(text, "G", "b"), "G", "b"), text);
}

TEST(KeyFile, RemovingTouchesNoOtherLine) {
    EXPECT_EQ(AfterRemove("[G]\na=1\nb=2\n", "G", "a"), "[G]\nb=2\n");
    EXPECT_EQ(AfterRemove("[G]\na=1\n[H]\nb=2\n", "G", "a"), "[G]\n[H]\nb=2\n");
    for (const std::string group : {"G", "None"})
        EXPECT_EQ(AfterRemove("[G]\na=1\n", group, "b"), "[G]\na=1\n");
}

TEST(KeyFile, ListItemsEndWithASemicolon) {
    EXPECT_EQ(ListItems("a;b c; d ;;e"), (std::vector<std::string>{"a", "b c", "d", "e"}));
    EXPECT_TRUE(ListItems("").empty());
    EXPECT_TRUE(ListItems(" ; ").empty());
}

}  // namespace
}  // namespace pictavo::tests
