#pragma once

/// Runs a program again and again, each time with another one of its calls on files gone wrong, and looks at
/// what it leaves behind.

#include <functional>
#include <gmock/gmock.h>
#include <map>

#include "support/ChildProcess.h"
#include "support/TempFolder.h"

namespace pictavo::tests {

using ::testing::AnyOf;
using ::testing::HasSubstr;

/// What goes wrong: the call of this number fails with an error of the system, is cut short, or is the last
/// one that the program makes.
struct Fault {
    int at = 0;  ///< counted from 1; 0 for none
    std::string how;
    std::string program;  ///< the name of the one that meets it: the command's own, or the converter's
    bool lasts = false;  ///< later calls fail too: all that take space of a full disk, all reads of a bad one
};

/// All files under a folder: paths from there, and what the files hold.
using Tree = std::map<std::string, Bytes>;

inline Tree ReadTree(const std::filesystem::path& folder) {
    Tree tree;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            tree[std::filesystem::relative(entry.path(), folder).string()] = ReadFile(entry.path());
    return tree;
}

/// One call on a file that the program makes, by the name that the injector gives it.
struct Call {
    std::string name;
    std::string path;
};

inline std::vector<Fault> FaultsOf(const Call& call, const std::string& program, int at) {
    const std::map<std::string, std::vector<std::string>> ways = {
        {"open", {"EACCES", "EIO", "EINTR"}},
        {"enter", {"EACCES", "EIO"}},
        {"create", {"EACCES", "EIO", "ENOSPC", "EINTR", "KILL"}},
        {"read", {"EIO", "EINTR", "SHORT"}},
        {"write", {"EIO", "ENOSPC", "EINTR", "SHORT", "KILL", "KILL_HALF"}},
        {"sync", {"EIO", "ENOSPC", "EINTR", "KILL"}},
        {"close", {"EIO", "ENOSPC", "EINTR", "KILL"}},
        {"look", {"EACCES", "EIO"}},
        {"list", {"EIO"}},
        {"lock", {"EIO", "EINTR"}},
        {"rename", {"EACCES", "EIO", "ENOSPC", "KILL"}},
        {"link", {"EACCES", "EIO", "ENOSPC", "KILL"}},
        {"remove", {"EACCES", "EIO", "KILL"}},
        {"mkdir", {"EACCES", "EIO", "ENOSPC", "KILL"}},
    };
    std::vector<Fault> faults;
    for (const std::string& how : ways.at(call.name)) faults.push_back({at, how, program, false});
    if (call.name == "read") faults.push_back({at, "EIO", program, true});
    if (ways.at(call.name).back().starts_with("KILL")) faults.push_back({at, "ENOSPC", program, true});
    return faults;
}

/// A program between faults: its inputs lie in one folder, what it writes goes to another, which is made anew
/// for every run, and its temporary files to a third.
class FaultyRuns {
  public:
    explicit FaultyRuns(std::vector<std::string> command) : command_(std::move(command)) {
        for (const auto& folder : {Inputs(), Outputs(), Temporary(), old_ / ""})
            std::filesystem::create_directories(folder);
    }

    std::filesystem::path Inputs() const { return root_ / "in"; }
    std::filesystem::path Outputs() const { return root_ / "out"; }

    /// "{in}" and "{out}" stand for the folders.
    void Arguments(const std::vector<std::string>& arguments) {
        for (const std::string& argument : arguments) command_.push_back(WithFolders(argument));
    }

    /// Stands where the program writes, before each run.
    void Old(const std::string& name, const std::string& text) {
        std::filesystem::create_directories((old_ / name).parent_path());
        WriteFile(old_ / name, Bytes(text.begin(), text.end()));
    }

    /// Tells of an output that is neither old nor what a clean run writes whether it is whole all the same: a
    /// command that reports a failure may have written what it could.
    std::function<bool(const std::filesystem::path&)> isWholeInPart = [](const auto&) { return false; };

    /// What the system is to be without: "nameless files", "links by handle", "exclusive renames", "hard
    /// links".
    std::string lacks;

    /// Whether each output must stand on the disk before it takes its name, and its name after that.
    bool mustBeOnDisk = false;

    /// Tries every fault at every call; how many there were.
    int TryAll() {
        inputTree_ = ReadTree(Inputs());
        oldTree_ = ReadTree(old_.Path());
        const Ended whole = Run({}, true);
        EXPECT_EQ(whole.status, 0) << whole.err;
        wholeTree_ = ReadTree(Outputs());
        EXPECT_NE(wholeTree_, oldTree_) << "nothing is written";
        if (mustBeOnDisk) ExpectOnDisk();
        int tried = 0;
        for (const auto& [number, process] : Processes()) tried += TryEach(process);
        return tried;
    }

    /// The same for a command that must be refused, whatever goes wrong beside.
    int TryAllRefused() {
        mustBeRefused_ = true;
        inputTree_ = ReadTree(Inputs());
        oldTree_ = ReadTree(old_.Path());
        EXPECT_EQ(Run({}, true).status, 1);
        int tried = 0;
        for (const auto& [number, process] : Processes()) tried += TryEach(process);
        return tried;
    }

  private:
    std::string WithFolders(std::string argument) const {
        for (const auto& [name, folder] : {std::pair{"{in}", Inputs()}, std::pair{"{out}", Outputs()}})
            if (const std::size_t at = argument.find(name); at != std::string::npos)
                argument.replace(at, std::string(name).size(), folder.string());
        return argument;
    }

    std::filesystem::path Temporary() const { return root_ / "tmp"; }
    std::filesystem::path LogPath() const { return scratch_ / "calls"; }

    Ended Run(const Fault& fault, bool isLogged = false) {
        for (const auto& folder : {Outputs(), Temporary()}) std::filesystem::remove_all(folder);
        std::filesystem::create_directory(Temporary());
        std::filesystem::copy(old_.Path(), Outputs(), std::filesystem::copy_options::recursive);
        return RunProgram(command_, {{}, Environment(fault, isLogged), {}});
    }

    std::vector<std::string> Environment(const Fault& fault, bool isLogged) const {
        std::vector<std::string> all{"PATH=/usr/bin:/bin",
                                     "TMP=" + Temporary().string(),
                                     "LD_PRELOAD=" PICTAVO_FAULTS,
                                     "FAULTS_FOLDER=" + root_.Path().string(),
                                     "FAULTS_AT=" + std::to_string(fault.at),
                                     "FAULTS_HOW=" + fault.how,
                                     "FAULTS_PROGRAM=" + fault.program,
                                     "FAULTS_LACKS=" + lacks};
        if (fault.lasts) all.emplace_back("FAULTS_LASTING=1");
        if (isLogged) all.push_back("FAULTS_LOG=" + LogPath().string());
        return all;
    }

    /// One process that took part, and its calls in order.
    struct Process {
        std::string program;
        std::vector<Call> calls;
    };

    /// By the number of the process.
    std::map<std::string, Process> Processes() const {
        std::map<std::string, Process> processes;
        std::ifstream log(LogPath());
        Call call;
        for (std::string program, number;
             log >> program >> number >> call.name && std::getline(log >> std::ws, call.path);) {
            processes[number].program = program;
            processes[number].calls.push_back(call);
        }
        return processes;
    }

    int TryEach(const Process& process) {
        int tried = 0;
        for (std::size_t i = 0; i < process.calls.size(); ++i) {
            for (const Fault& fault : FaultsOf(process.calls[i], process.program, static_cast<int>(i) + 1)) {
                Try(fault, process.calls[i]);
                ++tried;
            }
        }
        return tried;
    }

    bool IsOutput(const Call& call) const { return call.path.starts_with(Outputs().string()); }

    /// A file is written, synced and named, and then its folder is synced.
    void ExpectOnDisk() const {
        for (const auto& [number, process] : Processes()) {
            bool areBytesSynced = true;
            bool isNameSynced = true;
            for (const Call& call : process.calls) {
                if (!IsOutput(call)) continue;
                const bool isNaming = call.name == "link" || call.name == "rename";
                EXPECT_TRUE(areBytesSynced || !isNaming) << call.path << " has its name before its bytes";
                if (isNaming) isNameSynced = false;
                if (call.name == "write") areBytesSynced = false;
                if (call.name == "sync") areBytesSynced = isNameSynced = true;
            }
            EXPECT_TRUE(isNameSynced) << "the last name does not stand on the disk";
        }
    }

    std::string OwnName() const { return std::filesystem::path(command_.front()).filename().string(); }

    /// Whether the call belongs to the tidying up, after which nothing hidden may stay.
    bool IsTidying(const Call& call) const {
        const bool isListing = call.name == "enter" || call.name == "look" || call.name == "list";
        return call.name == "remove" || (isListing && call.path.starts_with(Temporary().string()));
    }

    void Try(const Fault& fault, const Call& call) {
        const std::string what = fault.program + ": " + fault.how + (fault.lasts ? " for ever" : "") +
                                 " at " + std::to_string(fault.at) + ", " + call.name + " " + call.path;
        const ::testing::ScopedTrace trace(__FILE__, __LINE__, what);
        const Ended ended = Run(fault);
        const bool wasKilled = fault.how.starts_with("KILL") && fault.program == OwnName();
        EXPECT_TRUE(ReadTree(Inputs()) == inputTree_) << "an input changed";
        ExpectOldOrWhole(wasKilled || IsTidying(call), ended.status == 1);
        if (!wasKilled) ExpectTold(ended, fault, !IsTidying(call));
    }

    /// What the program could not tidy up any more is hidden, and no output.
    void ExpectOldOrWhole(bool mayLeaveHidden, bool isReported) const {
        const Tree now = ReadTree(Outputs());
        for (const auto& [name, bytes] : now) {
            EXPECT_TRUE(Holds(oldTree_, name, bytes) || Holds(wholeTree_, name, bytes) ||
                        (IsHidden(name) && mayLeaveHidden) || (isReported && isWholeInPart(Outputs() / name)))
                << name << " is neither old nor new";
        }
        for (const auto& [name, bytes] : oldTree_) EXPECT_TRUE(now.contains(name)) << name << " is gone";
        if (!mayLeaveHidden) {
            EXPECT_TRUE(std::filesystem::is_empty(Temporary())) << "a temporary file stayed";
        }
    }

    static bool IsHidden(const std::string& name) {
        return std::filesystem::path(name).filename().string().starts_with(".pictavo-");
    }

    static Tree WithoutHidden(Tree tree) {
        std::erase_if(tree, [](const auto& file) { return IsHidden(file.first); });
        return tree;
    }

    static bool Holds(const Tree& tree, const std::string& name, const Bytes& bytes) {
        const auto found = tree.find(name);
        return found != tree.end() && found->second == bytes;
    }

    /// Done means that all is written; all else has been said, by the name of a file.
    void ExpectTold(const Ended& ended, const Fault& fault, bool isTidied) const {
        const bool isHarmless = fault.how == "EINTR" || fault.how == "SHORT";
        EXPECT_TRUE((ended.status == 0 && !mustBeRefused_) ||
                    (ended.status == 1 && (!isHarmless || mustBeRefused_)))
            << "exit status " << ended.status << "\n"
            << ended.err;
        if (ended.status == 0) {
            const Tree now = ReadTree(Outputs());
            EXPECT_TRUE((isTidied ? now : WithoutHidden(now)) == wholeTree_) << "not all is written\n"
                                                                             << ended.err;
        } else {
            EXPECT_THAT(ended.err, AnyOf(HasSubstr(root_.Path().string()), HasSubstr("pictavo-convert")))
                << "no file is named";
        }
    }

    const TempFolder root_;
    const TempFolder old_;
    const TempFolder scratch_;
    std::vector<std::string> command_;
    bool mustBeRefused_ = false;
    Tree inputTree_;
    Tree oldTree_;
    Tree wholeTree_;
};

}  // namespace pictavo::tests
