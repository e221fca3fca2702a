#include "shell/FreedesktopStore.h"

#include <QProcess>
#include <QStandardPaths>
#include <gmock/gmock.h>

#include "shell/CFileAssociation.h"
#include "shell/Shell_.h"
#include "shell/SystemAssociations.h"
#include "support/CoreApplication.h"
#include "support/Environment.h"
#include "support/ScriptedPorts.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Environment = pictavo::tests::Environment;

constexpr const char* kEntry = "pictavo-gpffile.desktop";

/// A user's folders of their own, empty at first; the store takes them from the environment.
class FreedesktopStoreTest : public ::testing::Test {
  protected:
    FreedesktopStoreTest() {
        environment.Set("HOME", temp.Path().string());
        environment.Set("XDG_DATA_HOME", data.string());
        environment.Set("XDG_CONFIG_HOME", config.string());
        environment.Set("XDG_DATA_DIRS", system.string());
        environment.Set("XDG_CONFIG_DIRS", (temp / "etc").string());
        for (const char* session :
             {"XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "KDE_SESSION_VERSION", "KDE_FULL_SESSION",
              "GNOME_DESKTOP_SESSION_ID", "MATE_DESKTOP_SESSION_ID"})
            environment.Unset(session);
    }

    FreedesktopStore Store() {
        return {UserDesktopFolders(), processes,
                [](int size) { return Bytes(static_cast<std::size_t>(size)); }};
    }

    Status Register(const std::string& opening) {
        FreedesktopStore store = Store();
        return SystemAssociations(store, prompts).RegisterPictureFileTypes(opening);
    }

    std::string Lookup(const std::string& extension = ".gpf") {
        FreedesktopStore store = Store();
        return SystemAssociations(store, prompts).GetAssociatedProgram(extension);
    }

    void Delete(const std::string& extension) {
        FreedesktopStore store = Store();
        CFileAssociation association(store, "");
        association.strExt = extension;
        association.strAppID = kPictureFileClass;
        association.DeleteAssociation();
        EXPECT_TRUE(association.Written());
        EXPECT_TRUE(store.Commit());
    }

    fs::path WriteIn(const fs::path& folder, const std::string& name, const std::string& text) {
        fs::create_directories(folder);
        return WriteFile(folder / name, text);
    }

    void MakeTemplatesFolder() {
        fs::create_directory(templates);
        WriteIn(config, "user-dirs.dirs", "XDG_TEMPLATES_DIR=\"$HOME/Vorlagen\"\n");
    }

    /// Every file under the test's folder with its bytes.
    std::map<std::string, std::string> Files() {
        std::map<std::string, std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(temp.Path()))
            if (entry.is_regular_file()) files[entry.path().string()] = ReadText(entry.path());
        return files;
    }

    std::string IconPath(int size) {
        const std::string side = std::to_string(size);
        return (data / ("icons/hicolor/" + side + "x" + side + "/mimetypes/image-x-gpffile.png")).string();
    }

    TempFolder temp;
    const fs::path data = temp / "data home";
    const fs::path config = temp / "config";
    const fs::path system = temp / "system";
    const fs::path templates = temp / "Vorlagen";
    const std::string command = "/opt/the phone/pictavo \"%1\"";
    Environment environment;
    FakeProcesses processes;
    ScriptedPrompts prompts;
};

TEST_F(FreedesktopStoreTest, BeforeRegistrationTheTypesAreUnknown) {
    EXPECT_EQ(Lookup(), "Unregistered file extension .gpf");
    EXPECT_EQ(Lookup(".xyz"), "Unregistered file extension .xyz");
    EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(FreedesktopStoreTest, WhatWasRegisteredIsFound) {
    ASSERT_TRUE(Register(command));
    for (const std::string extension : {".gpf", ".gpf2"}) EXPECT_EQ(Lookup(extension), command);
    EXPECT_EQ(Lookup(".xyz"), "Unregistered file extension .xyz");
}

TEST_F(FreedesktopStoreTest, PackageEntryDefaultAndIconsAreWritten) {
    ASSERT_TRUE(Register(command));
    std::vector<std::string> names;
    for (const auto& [name, text] : Files()) names.push_back(name);
    std::vector<std::string> expected = {config / "mimeapps.list", data / "applications" / kEntry,
                                         data / "mime" / "packages" / "pictavo.xml"};
    for (const int size : {16, 32, 48, 64, 128, 256}) expected.push_back(IconPath(size));
    EXPECT_THAT(names, ::testing::UnorderedElementsAreArray(expected));
    EXPECT_EQ(ReadText(config / "mimeapps.list"),
              "[Default Applications]\nimage/x-gpffile=pictavo-gpffile.desktop;\n");
    EXPECT_EQ(ReadText(data / "applications" / kEntry),
              "[Desktop Entry]\nType=Application\nName=Pictavo\nExec=\"/opt/the phone/pictavo\" %f\n"
              "Icon=image-x-gpffile\nNoDisplay=true\nMimeType=image/x-gpffile;\n");
    EXPECT_EQ(fs::file_size(IconPath(48)), 48U);
}

TEST_F(FreedesktopStoreTest, RegisteringTwiceChangesNothing) {
    MakeTemplatesFolder();
    ASSERT_TRUE(Register(command));
    const auto once = Files();
    const auto when = fs::last_write_time(data / "applications" / kEntry);
    const std::size_t calls = processes.calls.size();
    ASSERT_TRUE(Register(command));
    EXPECT_EQ(Files(), once);
    EXPECT_EQ(fs::last_write_time(data / "applications" / kEntry), when);
    EXPECT_EQ(processes.calls.size(), calls);
}

TEST_F(FreedesktopStoreTest, AnotherCopyOfTheProgramTakesOver) {
    ASSERT_TRUE(Register("/old/pictavo \"%1\""));
    ASSERT_TRUE(Register(command));
    EXPECT_EQ(Lookup(".gpf2"), command);
}

TEST_F(FreedesktopStoreTest, DeletingUndoesWhatWasMade) {
    MakeTemplatesFolder();
    WriteIn(config, "mimeapps.list", "# mine\n[Default Applications]\ntext/plain=ed.desktop\n");
    const auto before = Files();
    ASSERT_TRUE(Register(command));
    ASSERT_NE(Files(), before);
    Delete(".gpf");
    EXPECT_EQ(Lookup(), "Unregistered file extension .gpf");
    EXPECT_EQ(Lookup(".gpf2"), "File type is not associated with a program.");
    Delete(".gpf2");
    EXPECT_EQ(Files(), before);
}

TEST_F(FreedesktopStoreTest, DeletingWhereNothingIsRegisteredChangesNothing) {
    WriteIn(config, "mimeapps.list", "[Default Applications]\nimage/x-gpffile=other.desktop\n");
    const auto before = Files();
    Delete(".gpf");
    EXPECT_EQ(Files(), before);
}

TEST_F(FreedesktopStoreTest, LinesOfOthersInTheListStay) {
    WriteIn(config, "mimeapps.list", "# mine\n[Default Applications]\nimage/x-gpffile=other.desktop\n[x]\ny");
    ASSERT_TRUE(Register(command));
    EXPECT_EQ(
        ReadText(config / "mimeapps.list"),
        "# mine\n[Default Applications]\nimage/x-gpffile=pictavo-gpffile.desktop;other.desktop;\n[x]\ny");
}

TEST_F(FreedesktopStoreTest, AListBehindALinkIsWrittenThere) {
    const fs::path real = WriteIn(temp / "dotfiles", "list", "# mine\n");
    fs::create_directory(config);
    fs::create_symlink(real, config / "mimeapps.list");
    ASSERT_TRUE(Register(command));
    EXPECT_TRUE(fs::is_symlink(config / "mimeapps.list"));
    EXPECT_THAT(ReadText(real), ::testing::StartsWith("# mine\n[Default Applications]\n"));
}

TEST_F(FreedesktopStoreTest, TheUsersDefaultWinsOverTheSystems) {
    ASSERT_TRUE(Register(command));
    WriteIn(data / "applications", "other.desktop", "[Desktop Entry]\nExec=/opt/other %F\n");
    WriteIn(config, "mimeapps.list", "[Default Applications]\nimage/x-gpffile=gone.desktop;other.desktop\n");
    EXPECT_EQ(Lookup(), "/opt/other \"%1\"");
}

TEST_F(FreedesktopStoreTest, AnEntryThatADesktopPassesOverIsPassedOver) {
    ASSERT_TRUE(Register(command));
    WriteIn(config, "mimeapps.list",
            "[Default Applications]\nimage/x-gpffile=other.desktop;" + std::string(kEntry) + "\n");
    for (const std::string reason : {"Hidden=true", "TryExec=/opt/not there", "TryExec=not-there-either"}) {
        WriteIn(data / "applications", "other.desktop",
                "[Desktop Entry]\nExec=/opt/other %F\n" + reason + "\n");
        EXPECT_EQ(Lookup(), command) << reason;
    }
    WriteIn(data / "applications", "other.desktop",
            "[Desktop Entry]\nExec=/opt/other %F\nHidden=false\nTryExec=/bin/sh\n");
    EXPECT_EQ(Lookup(), "/opt/other \"%1\"");
}

TEST_F(FreedesktopStoreTest, AnEntryMayLieInAFolderThatItsNameBeginsWith) {
    WriteIn(system / "mime" / "packages", "pictavo.xml", "<glob pattern=\"*.gpf\"/>");
    WriteIn(config, "mimeapps.list", "[Default Applications]\nimage/x-gpffile=a-b-c.desktop\n");
    for (const char* place : {"a/b/c.desktop", "a/b-c.desktop", "a-b-c.desktop"}) {
        const fs::path file = system / "applications" / place;
        WriteIn(file.parent_path(), file.filename().string(),
                "[Desktop Entry]\nExec=" + std::string(place) + "\n");
        EXPECT_EQ(Lookup(), place);
    }
}

TEST_F(FreedesktopStoreTest, WhatIsInstalledForAllUsersIsFound) {
    WriteIn(system / "mime" / "packages", "pictavo.xml", "<glob pattern=\"*.gpf\"/>");
    EXPECT_EQ(Lookup(), "File type is not associated with a program.");
    WriteIn(system / "applications", "all.desktop", "[Desktop Entry]\nExec=/usr/bin/pictavo %F\n");
    WriteIn(system / "applications", "mimeapps.list",
            "[Default Applications]\nimage/x-gpffile=all.desktop\n");
    EXPECT_EQ(Lookup(), "/usr/bin/pictavo \"%1\"");
    EXPECT_EQ(Lookup(".gpf2"), "Unregistered file extension .gpf2");
}

/// As a package installs it: an entry that opens the type, and no default application.
class InstalledPackage : public FreedesktopStoreTest {
  protected:
    InstalledPackage() {
        WriteIn(system / "mime" / "packages", "pictavo.xml", "<glob pattern=\"*.gpf\"/>");
        WriteIn(applications, "pictavo.desktop", "[Desktop Entry]\nExec=/usr/bin/pictavo %F\n");
        Cache("pictavo.desktop;");
    }

    void Cache(const std::string& entries) {
        WriteIn(applications, "mimeinfo.cache", "[MIME Cache]\nimage/x-gpffile=" + entries + "\n");
    }

    const fs::path applications = system / "applications";
};

TEST_F(InstalledPackage, IsFoundWithoutADefaultApplication) {
    EXPECT_EQ(Lookup(), "/usr/bin/pictavo \"%1\"");
}

TEST_F(InstalledPackage, StandsBehindEveryDefaultApplicationThatExists) {
    WriteIn(config, "mimeapps.list", "[Default Applications]\nimage/x-gpffile=other.desktop\n");
    EXPECT_EQ(Lookup(), "/usr/bin/pictavo \"%1\"");
    WriteIn(data / "applications", "other.desktop", "[Desktop Entry]\nExec=/opt/other %F\n");
    EXPECT_EQ(Lookup(), "/opt/other \"%1\"");
}

TEST_F(InstalledPackage, StandsBehindWhatTheUserAdded) {
    WriteIn(data / "applications", "other.desktop", "[Desktop Entry]\nExec=/opt/other %F\n");
    Cache("pictavo.desktop;other.desktop;");
    EXPECT_EQ(Lookup(), "/usr/bin/pictavo \"%1\"");
    WriteIn(config, "mimeapps.list", "[Added Associations]\nimage/x-gpffile=other.desktop;\n");
    EXPECT_EQ(Lookup(), "/opt/other \"%1\"");
}

TEST_F(InstalledPackage, IsNotFoundOnceTheUserTookTheTypeAway) {
    WriteIn(config, "mimeapps.list", "[Removed Associations]\nimage/x-gpffile=pictavo.desktop;\n");
    EXPECT_EQ(Lookup(), "File type is not associated with a program.");
}

TEST_F(InstalledPackage, IsNotFoundByAnotherType) {
    WriteIn(applications, "mimeinfo.cache", "[MIME Cache]\nimage/png=pictavo.desktop;\n");
    EXPECT_EQ(Lookup(), "File type is not associated with a program.");
}

TEST_F(FreedesktopStoreTest, ABareProgramIsSoughtOnTheSearchPathBehindLinks) {
    const fs::path program = WriteIn(temp / "opt", "pictavo", "#!/bin/sh\n");
    fs::permissions(program, fs::perms::owner_all);
    fs::create_directory(temp / "bin");
    fs::create_symlink(program, temp / "bin" / "pictavo");
    environment.Set("PATH", (temp / "bin").string());
    ASSERT_TRUE(Register(command));
    WriteFile(data / "applications" / kEntry, std::string("[Desktop Entry]\nExec=pictavo %F\n"));
    EXPECT_EQ(Lookup(), fs::canonical(program).string() + " \"%1\"");
}

TEST_F(FreedesktopStoreTest, TheNewMenuGetsEmptyTemplatesWhereThereIsAFolderForThem) {
    MakeTemplatesFolder();
    ASSERT_TRUE(Register(command));
    EXPECT_THAT(ListNames(templates), ElementsAre("Graphic Patch File.gpf", "Graphic Patch File.gpf2"));
    EXPECT_EQ(fs::file_size(templates / "Graphic Patch File.gpf"), 0U);
}

TEST_F(FreedesktopStoreTest, ATemplateThatTheUserFilledStays) {
    MakeTemplatesFolder();
    const fs::path filled = WriteFile(templates / "Graphic Patch File.gpf", std::string("his"));
    ASSERT_TRUE(Register(command));
    Delete(".gpf");
    EXPECT_EQ(ReadText(filled), "his");
}

TEST_F(FreedesktopStoreTest, ATemplatesFolderThatCanNotBeLookedIntoIsToldOf) {
    const std::string name(300, 'x');  // longer than a name can be
    WriteIn(config, "user-dirs.dirs", "XDG_TEMPLATES_DIR=\"$HOME/" + name + "\"\n");
    const Status registered = Register(command);
    ASSERT_FALSE(registered);
    EXPECT_EQ(registered.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(registered.error().path, temp / name);
    EXPECT_EQ(registered.error().detail, "cannot be looked into (File name too long)");
}

TEST_F(FreedesktopStoreTest, AHomeFolderIsNoTemplatesFolder) {
    WriteIn(config, "user-dirs.dirs", "XDG_TEMPLATES_DIR=\"$HOME/\"\n");
    ASSERT_TRUE(Register(command));
    EXPECT_FALSE(fs::exists(temp / "Graphic Patch File.gpf"));
}

TEST_F(FreedesktopStoreTest, TheDesktopsToolsAreRunWhereTheyExist) {
    fs::create_directory(temp / "bin");
    environment.Set("PATH", (temp / "bin").string());
    ASSERT_TRUE(Register("/old/pictavo \"%1\""));
    EXPECT_THAT(processes.calls, IsEmpty());
    for (const char* name : {"update-mime-database", "update-desktop-database"})
        fs::permissions(WriteFile(temp / "bin" / name, std::string("#!/bin/sh\n")), fs::perms::owner_all);
    ASSERT_TRUE(Register(command));
    Delete(".gpf");
    ASSERT_EQ(processes.calls.size(), 3U);
    EXPECT_EQ(processes.calls[0].program, temp / "bin" / "update-desktop-database");
    EXPECT_THAT(processes.calls[0].arguments, ElementsAre((data / "applications").string()));
    EXPECT_EQ(processes.calls[1].program, temp / "bin" / "update-mime-database");
    EXPECT_THAT(processes.calls[1].arguments, ElementsAre((data / "mime").string()));
}

TEST_F(FreedesktopStoreTest, AFolderThatCanNotBeMadeIsTold) {
    WriteFile(data, std::string("a file"));
    const Status status = Register(command);
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().kind, ErrorKind::WriteFailed);
    EXPECT_EQ(status.error().path, data / "mime" / "packages");
}

TEST_F(FreedesktopStoreTest, AListThatCanNotBeReadIsNotReplaced) {
    fs::create_directories(config / "mimeapps.list");
    const Status status = Register(command);
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().path, config / "mimeapps.list");
    EXPECT_TRUE(fs::is_directory(config / "mimeapps.list"));
}

TEST_F(FreedesktopStoreTest, OtherKeysHaveNoPlace) {
    FreedesktopStore store = Store();
    for (const std::string key :
         {".xyz", "xyzfile", "gpffile\\shell\\print\\command", ".xyz\\ShellNew", ""}) {
        EXPECT_FALSE(store.CreateKey(key)) << key;
        EXPECT_FALSE(store.WriteValue(key, "", "x")) << key;
        EXPECT_FALSE(store.DeleteKey(key)) << key;
        EXPECT_FALSE(store.HasKey(key)) << key;
    }
    EXPECT_FALSE(store.WriteValue(".gpf", "", "otherfile"));
    EXPECT_FALSE(store.WriteValue(".gpf\\ShellNew", "Command", "x"));
    EXPECT_TRUE(store.Commit());
    EXPECT_THAT(Files(), IsEmpty());
}

/// What the desktop itself says, by its own tools.
class DesktopsOwnView : public FreedesktopStoreTest {
  protected:
    /// Registers with the real tools.
    void RegisterForReal(const std::string& commandToRegister) {
        ChildProcessRunner runner;
        FreedesktopStore store(UserDesktopFolders(), runner, [](int) { return Bytes(1); });
        ASSERT_TRUE(SystemAssociations(store, prompts).RegisterPictureFileTypes(commandToRegister));
    }

    static bool IsInstalled(const char* tool) { return !QStandardPaths::findExecutable(tool).isEmpty(); }

    static std::string OutputOf(const char* tool, const QStringList& arguments) {
        QProcess process;
        process.start(tool, arguments);
        EXPECT_TRUE(process.waitForFinished(-1)) << tool;
        EXPECT_EQ(process.exitCode(), 0) << tool << ": " << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput().trimmed().toStdString();
    }
};

TEST_F(DesktopsOwnView, OfTheDefaultApplication) {
    RegisterForReal("/bin/sh \"%1\"");
    ASSERT_TRUE(IsInstalled("xdg-mime"));
    EXPECT_EQ(OutputOf("xdg-mime", {"query", "default", "image/x-gpffile"}), kEntry);
}

TEST_F(DesktopsOwnView, OfTheDefaultApplicationByItsLibrary) {
    RegisterForReal("/bin/sh \"%1\"");
    ASSERT_TRUE(IsInstalled("gio"));
    EXPECT_THAT(OutputOf("gio", {"mime", "image/x-gpffile"}), ::testing::HasSubstr(kEntry));
}

TEST_F(DesktopsOwnView, OfFilesByNameAndByContent) {
    ASSERT_TRUE(IsInstalled("update-mime-database") && IsInstalled("gio"));
    RegisterForReal("/bin/sh \"%1\"");
    for (const auto& [name, bytes] : std::map<std::string, std::string>{{"other.gpf", "other"},
                                                                        {"other.gpf2", "other"},
                                                                        {"one", "GraphicPatchFile"},
                                                                        {"two", "GraphPatchFile_2"}}) {
        const fs::path file = WriteFile(temp / name, bytes);
        EXPECT_THAT(OutputOf("gio", {"info", "-a", "standard::content-type", QString::fromStdString(file)}),
                    ::testing::EndsWith("image/x-gpffile"))
            << name;
    }
}

TEST_F(DesktopsOwnView, OfTheEntry) {
    RegisterForReal(command);
    ASSERT_TRUE(IsInstalled("desktop-file-validate"));
    EXPECT_EQ(OutputOf("desktop-file-validate", {QString::fromStdString(data / "applications" / kEntry)}),
              "");
}

}  // namespace
}  // namespace pictavo::tests
