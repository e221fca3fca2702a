/// What the window does to the user's folders when it registers its file types, as a program:
/// AssociationsWriter FOLDER, in which the folders of data, configuration and templates lie.

#include <iostream>

#include "shell/FreedesktopStore.h"
#include "shell/SystemAssociations.h"

namespace pictavo::tests {
namespace {

/// A desktop without tools of its own.
class NoProcesses final : public ProcessRunner {
  public:
    std::string RunAndWait(const std::filesystem::path&, const std::vector<std::string>&) override {
        return "";
    }
};

/// A registration asks and tells nothing.
class NoPrompts final : public Prompts {
  public:
    bool Confirm(const Question&) override { return false; }
    void Tell(const Notice&) override {}
    std::filesystem::path ChooseOpen(const FileChoice&) override { return {}; }
    std::filesystem::path ChooseSave(const FileChoice&) override { return {}; }
    std::filesystem::path BrowseForFolder(const std::string&) override { return {}; }
    std::optional<SaveCommand> ChooseSaveCommand() override { return std::nullopt; }
};

Status Register(const std::filesystem::path& folder) {
    NoProcesses processes;
    NoPrompts prompts;
    FreedesktopStore store({{folder / "config"}, {folder / "data"}, folder / "templates"}, processes,
                           [](int size) { return Bytes(static_cast<std::size_t>(size), 'i'); });
    return SystemAssociations(store, prompts).RegisterPictureFileTypes("/opt/pictavo \"%1\"");
}

}  // namespace
}  // namespace pictavo::tests

int main(int, char** arguments) {
    const pictavo::Status registered = pictavo::tests::Register(arguments[1]);
    if (registered) return 0;
    std::cerr << registered.error().path.string() << ": " << registered.error().detail << '\n';
    return 1;
}
