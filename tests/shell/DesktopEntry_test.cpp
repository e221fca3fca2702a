#include "shell/DesktopEntry.h"

#include <gtest/gtest.h>

#include "shell/KeyFile.h"

namespace pictavo::tests {
namespace {

std::string Located(const std::string& name) {
    return "/found/" + name;
}

std::string ExecOf(const std::string& program) {
    const std::string entry = DesktopEntryText(program + " \"%1\"", "x/y", "icon");
    return KeyFile(entry).Value("Desktop Entry", "Exec").value_or("none");
}

std::string CommandOf(const std::string& exec) {
    return CommandOfEntry("[Desktop Entry]\nExec=" + exec + "\n", Located).value_or("none");
}

TEST(DesktopEntry, OpensTheTypeAndStandsInNoMenu) {
    EXPECT_EQ(DesktopEntryText("/opt/pictavo \"%1\"", "x/y", "icon"),
              "[Desktop Entry]\nType=Application\nName=Pictavo\nExec=/opt/pictavo %f\nIcon=icon\n"
              "NoDisplay=true\nMimeType=x/y;\n");
}

TEST(DesktopEntry, ThePathIsQuotedWhereItMustBe) {
    EXPECT_EQ(ExecOf("/opt/pictavo"), "/opt/pictavo %f");
    EXPECT_EQ(ExecOf("/opt/the phone/pictavo"), "\"/opt/the phone/pictavo\" %f");
    EXPECT_EQ(ExecOf("/o\"$`p"), R"("/o\\"\\$\\`p" %f)");
    EXPECT_EQ(ExecOf("/o\\p"), R"("/o\\\\p" %f)");
    EXPECT_EQ(ExecOf("/100%"), "/100%% %f");
    EXPECT_EQ(ExecOf("/\xD0\x96"), "/\xD0\x96 %f");
}

TEST(DesktopEntry, EveryPathComesBack) {
    for (const std::string path : {"/opt/p", "/a b/p", "/it's/p", "/q\"q/p", "/$(id);x/p", "/back\\sl/p",
                                   "/\\n/p", "/line\nend/p", "/tab\tx/p", "/cr\rx/p", "/100%/p", "/%f/p",
                                   "/%%/p", "/~&|*?#`/p", "/\xD0\x96\xF0\x9F\x98\x80/p"}) {
        const std::string command = path + " \"%1\"";
        EXPECT_EQ(CommandOfEntry(DesktopEntryText(command, "x/y", ""), Located), command);
    }
}

TEST(DesktopEntry, ABlankMayBeEscapedAndALetterWithoutAMeaningStandsForItself) {
    EXPECT_EQ(CommandOf(R"(/p\s%f)"), "/p \"%1\"");
    EXPECT_EQ(CommandOf(R"(/\p\q\s%f)"), "/pq \"%1\"");
}

TEST(DesktopEntry, FilesAndTheirAddressesAreOneArgument) {
    for (const std::string code : {"%f", "%F", "%u", "%U"})
        EXPECT_EQ(CommandOf("/p " + code), "/p \"%1\"") << code;
    EXPECT_EQ(CommandOf("/p"), "/p");
    EXPECT_EQ(CommandOf("/p --open  %f"), "/p --open \"%1\"");
    EXPECT_EQ(CommandOf("/p %i"), "/p %i");
}

TEST(DesktopEntry, ABareNameIsLocated) {
    EXPECT_EQ(CommandOf("pictavo %F"), "/found/pictavo \"%1\"");
}

TEST(DesktopEntry, WithoutExecThereIsNoCommand) {
    EXPECT_EQ(CommandOfEntry("[Desktop Entry]\nName=x\n[Desktop Action a]\nExec=/p\n", Located),
              std::nullopt);
    EXPECT_EQ(CommandOf(""), "");
    EXPECT_EQ(CommandOf("\"unclosed %f"), "/found/unclosed %f");
}

}  // namespace
}  // namespace pictavo::tests
