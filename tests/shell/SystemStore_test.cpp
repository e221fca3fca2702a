#include "shell/SystemStore.h"

#include <gtest/gtest.h>

#include "shell/SystemAssociations.h"
#include "support/CoreApplication.h"
#include "support/Environment.h"
#include "support/ScriptedPorts.h"
#include "support/TempFolder.h"

namespace pictavo::tests {
namespace {

using Environment = pictavo::tests::Environment;

TEST(SystemStore, IsTheUsersDesktop) {
    const TempFolder temp;
    Environment environment;
    environment.Set("HOME", temp.Path().string());
    environment.Set("XDG_DATA_HOME", (temp / "data").string());
    environment.Set("XDG_CONFIG_HOME", (temp / "config").string());
    FakeProcesses processes;
    ScriptedPrompts prompts;
    const auto store =
        MakeSystemStore(processes, [](int size) { return Bytes(static_cast<std::size_t>(size)); });
    SystemAssociations associations(*store, prompts);
    ASSERT_TRUE(associations.RegisterPictureFileTypes("/opt/pictavo \"%1\""));
    EXPECT_EQ(associations.GetAssociatedProgram(".gpf2"), "/opt/pictavo \"%1\"");
    EXPECT_TRUE(std::filesystem::exists(temp / "data/applications/pictavo-gpffile.desktop"));
    EXPECT_EQ(std::filesystem::file_size(temp / "data/icons/hicolor/48x48/mimetypes/image-x-gpffile.png"),
              48U);
}

}  // namespace
}  // namespace pictavo::tests
