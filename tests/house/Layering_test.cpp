/// Reads the include lines under src/ and samples/: includes point down only, and Qt stays in the rooms made
/// for it. Files and folders are reached through one door. The picture is in CONTRIBUTING.md.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace pictavo::tests {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using Names = std::vector<std::string>;

/// A folder under src/, and what its files may include besides one another.
struct Room {
    std::string name;
    Names below;      ///< rooms, each with all of its headers; or a single header of a room
    Names qtModules;  ///< of which Qt headers may be included
};

const Names kNoQt;
const Names kCoreAndGui{"QtCore", "QtGui"};
const Names kWithWidgets{"QtCore", "QtGui", "QtWidgets"};

/// From the ground up: a room stands behind all that it may include.
const std::vector<Room> kRooms{
    {"core", {}, kNoQt},
    {"codec", {"core"}, kNoQt},
    {"patch", {"codec", "core"}, kNoQt},
    {"tools", {"codec/GPFcodec.h", "codec/PngFormat.h", "core"}, kNoQt},
    {"config", {"core"}, kNoQt},
    {"session", {"patch", "tools", "config", "codec", "core"}, kNoQt},
    {"imaging", {"codec", "core"}, kCoreAndGui},
    {"shell", {"session/Ports.h", "imaging", "codec/GPFcodec.h", "core"}, kCoreAndGui},
    {"readers", {"shell/LatePictureLoader.h", "shell/QtPictureLoader.h"}, kNoQt},
    {"ui", {"shell", "session", "patch", "tools", "config", "codec", "core"}, kWithWidgets},
    {"cli", {"shell", "session", "patch", "tools", "config", "codec", "core"}, kCoreAndGui},
    {"converter", {"imaging", "codec", "core"}, kCoreAndGui},
};

/// The sample maker lies beside src/ and shares nothing with it.
const Room kSamples{"samples", {}, kNoQt};

const Room* FindRoom(const std::string& name) {
    const auto found =
        std::find_if(kRooms.begin(), kRooms.end(), [&](const Room& r) { return r.name == name; });
    return found == kRooms.end() ? nullptr : &*found;
}

/// The part before the first "/"; empty for a path without one.
std::string RoomNameOf(const std::string& path) {
    const std::size_t slash = path.find('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

bool Holds(const Names& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// "core/./x.h" and "core/../ui/x.h" would hide where they lead.
bool IsPlainPath(const std::string& path) {
    return fs::path(path).lexically_normal() == path;
}

bool MayIncludeOwnHeader(const Room& room, const std::string& header) {
    const std::string other = RoomNameOf(header);
    return IsPlainPath(header) && !other.empty() &&
           (other == room.name || Holds(room.below, other) || Holds(room.below, header));
}

/// Holds a folder of headers for each of Qt's modules.
const fs::path kQtHeaders(PICTAVO_QT_HEADERS);

/// <QString>, <qglobal.h>, <QtCore/QString>: nothing else has such a name.
bool IsQtHeader(const std::string& header) {
    return header.starts_with("Q") || (header.starts_with("q") && header.ends_with(".h"));
}

bool IsOfQtModule(const std::string& header, const std::string& module) {
    if (header.starts_with(module + "/")) return true;
    return RoomNameOf(header).empty() && fs::is_regular_file(kQtHeaders / module / header);
}

/// Our own headers stand in quotation marks, so that no arrow hides among the outside ones.
bool IsOwnHeader(const std::string& header) {
    return FindRoom(RoomNameOf(header)) != nullptr || header.starts_with(".") || header.starts_with("/");
}

bool MayIncludeOutsideHeader(const Room& room, const std::string& header) {
    if (IsOwnHeader(header)) return false;
    if (!IsQtHeader(header)) return true;
    return std::any_of(room.qtModules.begin(), room.qtModules.end(),
                       [&](const std::string& module) { return IsOfQtModule(header, module); });
}

/// An include line's word and what follows it, as it stands; empty for any other line.
std::string IncludeOf(const std::string& line) {
    const auto skipBlanks = [&](std::size_t from) {
        return std::min(line.find_first_not_of(" \t", from), line.size());
    };
    const std::size_t hash = skipBlanks(0);
    if (hash == line.size() || line[hash] != '#') return {};
    const std::string directive = line.substr(skipBlanks(hash + 1));
    return directive.starts_with("include") || directive.starts_with("import") ? directive : "";
}

/// What stands between `open` and `close`, the rest of the line being a comment at most; else empty.
std::string HeaderBetween(const std::string& include, const std::string& open, char close) {
    if (!include.starts_with(open)) return {};
    const std::size_t end = std::min(include.find(close, open.size()), include.size());
    const std::size_t behind = include.find_first_not_of(" \t", end + 1);
    const bool isAll =
        end < include.size() && (behind == std::string::npos || include.compare(behind, 2, "//") == 0);
    return isAll ? include.substr(open.size(), end - open.size()) : "";
}

/// Whether `room` may include so. A form that cannot be read it may not.
bool IsAllowed(const Room& room, const std::string& include) {
    const std::string ours = HeaderBetween(include, "include \"", '"');
    const std::string outside = HeaderBetween(include, "include <", '>');
    return (!ours.empty() && MayIncludeOwnHeader(room, ours)) ||
           (!outside.empty() && MayIncludeOutsideHeader(room, outside));
}

Names Includes(const std::string& text) {
    Names includes;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (const std::string include = IncludeOf(line); !include.empty()) includes.push_back(include);
    return includes;
}

/// What is wrong with the file of that name under src/.
Names Objections(const Room& room, const std::string& name, const std::string& text) {
    Names objections;
    for (const std::string& include : Includes(text))
        if (!IsAllowed(room, include)) objections.push_back(name + ": " + include);
    return objections;
}

Names Objections(const std::string& name, const std::string& text) {
    const Room* room = FindRoom(RoomNameOf(name));
    return room == nullptr ? Names{name + ": is in no known room"} : Objections(*room, name, text);
}

std::string Text(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Every file under a folder of the source tree but the build's own lists, by its path from that folder on.
Names FilesUnder(const fs::path& folder) {
    Names files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().filename() != "CMakeLists.txt")
            files.push_back(fs::relative(entry.path(), folder).generic_string());
    return files;
}

const fs::path kSourceTree(PICTAVO_SOURCE_DIR);

TEST(Layering, EveryFileUnderSrcIncludesOnlyWhatItsRoomMay) {
    std::size_t includes = 0;
    for (const std::string& file : FilesUnder(kSourceTree / "src")) {
        const std::string text = Text(kSourceTree / "src" / file);
        EXPECT_THAT(Objections(file, text), IsEmpty());
        includes += Includes(text).size();
    }
    EXPECT_GT(includes, 100U);
}

TEST(Layering, TheSampleMakerIncludesNothingOfSrc) {
    std::size_t includes = 0;
    for (const std::string& file : FilesUnder(kSourceTree / "samples")) {
        const std::string text = Text(kSourceTree / "samples" / file);
        EXPECT_THAT(Objections(kSamples, file, text), IsEmpty());
        includes += Includes(text).size();
    }
    EXPECT_GT(includes, 10U);
}

TEST(Layering, TheTableItselfPointsDownOnly) {
    Names known;
    for (const Room& room : kRooms) {
        for (const std::string& below : room.below) {
            const std::string other = RoomNameOf(below);
            EXPECT_TRUE(Holds(known, other.empty() ? below : other)) << room.name << " over " << below;
            EXPECT_TRUE(other.empty() || fs::exists(kSourceTree / "src" / below)) << below;
        }
        known.push_back(room.name);
    }
}

TEST(Layering, ItsOwnRoomAndThoseBelowAreAllowed) {
    EXPECT_THAT(Objections("codec/A.h", "#include \"codec/B.h\"\n#include \"core/C.h\"\n"), IsEmpty());
    EXPECT_THAT(Objections("cli/A.cpp", "  #  include \"core/C.h\"  // why\n#include <vector>\n#ifdef X\n"),
                IsEmpty());
    EXPECT_THAT(Objections("core/A.h", "// #include \"ui/Form1.h\"\n"), IsEmpty());
}

TEST(Layering, AnArrowUpOrAcrossIsFound) {
    const std::vector<std::pair<std::string, std::string>> arrows{
        {"core/A.h", "codec/Raster.h"},    {"codec/A.h", "session/Session.h"},
        {"patch/A.h", "tools/PNGcodec.h"}, {"tools/A.h", "patch/A.h"},
        {"config/A.h", "codec/Raster.h"},  {"session/A.h", "shell/Shell_.h"},
        {"session/A.h", "cli/Text.h"},     {"shell/A.h", "cli/Run.h"},
        {"shell/A.h", "ui/Form1.h"},       {"ui/A.h", "cli/Text.h"},
        {"cli/A.h", "ui/Form1.h"},         {"converter/A.h", "session/Names.h"},
        {"converter/A.h", "patch/A.h"},    {"core/A.h", "samples/Drawing.h"},
        {"core/A.h", "tests/A.h"},         {"converter/A.h", "shell/QtPath.h"},
        {"imaging/A.h", "shell/QtPath.h"}, {"session/A.h", "imaging/A.h"},
    };
    for (const auto& [file, header] : arrows) {
        const std::string include = "include \"" + header + "\"";
        EXPECT_THAT(Objections(file, "\n#" + include + "\n"), ElementsAre(file + ": " + include));
    }
}

TEST(Layering, OfSomeRoomsOnlyOneHeaderIsAllowed) {
    EXPECT_THAT(Objections("shell/A.h", "#include \"session/Ports.h\""), IsEmpty());
    EXPECT_EQ(Objections("shell/A.h", "#include \"session/Session.h\"").size(), 1U);
    for (const std::string room : {"tools", "shell"}) {
        EXPECT_THAT(Objections(room + "/A.h", "#include \"codec/GPFcodec.h\""), IsEmpty()) << room;
        EXPECT_EQ(Objections(room + "/A.h", "#include \"codec/Raster.h\"").size(), 1U) << room;
    }
}

TEST(Layering, AnIncludeThatHidesWhereItLeadsIsFound) {
    for (const std::string include :
         {"\"Raster.h\"", "\"../core/Bytes.h\"", "\"core/../ui/Form1.h\"", "\"./core/Bytes.h\"", "HEADER", "",
          "\"core/Bytes.h", "\"/usr/include/x.h\"", "<core/Bytes.h>", "<../src/ui/Form1.h>",
          "</usr/include/x.h>", "\"QString\""})
        EXPECT_EQ(Objections("codec/A.h", "#include " + include).size(), 1U) << include;
    EXPECT_EQ(Objections("codec/A.h", "#include_next <vector>").size(), 1U);
    EXPECT_EQ(Objections("codec/A.h", "#import \"core/Bytes.h\"").size(), 1U);
}

TEST(Layering, AFileInNoKnownRoomIsFound) {
    EXPECT_THAT(Objections("A.h", ""), ElementsAre("A.h: is in no known room"));
    EXPECT_THAT(Objections("cellar/A.h", ""), ElementsAre("cellar/A.h: is in no known room"));
}

TEST(Layering, QtIsFoundInTheRoomsThatHaveNone) {
    for (const std::string room : {"core", "codec", "patch", "tools", "config", "session"})
        for (const std::string header : {"QString", "QtCore/QString", "QtGlobal", "qglobal.h", "QImage"})
            EXPECT_EQ(Objections(room + "/A.h", "#include <" + header + ">").size(), 1U)
                << room << " " << header;
}

TEST(Layering, WidgetsAreFoundOutsideOfTheWindowsRoom) {
    for (const std::string header :
         {"QtWidgets", "QtWidgets/QLabel", "QApplication", "QMessageBox", "qwidget.h"}) {
        const std::string line = "#include <" + header + ">";
        for (const std::string room : {"imaging", "shell", "cli", "converter", "session"})
            EXPECT_EQ(Objections(room + "/A.h", line).size(), 1U) << room << " " << header;
        EXPECT_THAT(Objections("ui/A.h", line), IsEmpty());
    }
}

TEST(Layering, QtCoreAndGuiAreAllowedWhereTheSystemIsSpokenTo) {
    for (const std::string room : {"imaging", "shell", "cli", "converter", "ui"})
        for (const std::string header : {"QString", "QtCore/QString", "qglobal.h", "QImage", "QtGui/QImage"})
            EXPECT_THAT(Objections(room + "/A.h", "#include <" + header + ">"), IsEmpty());
}

TEST(Layering, OtherModulesOfQtAreFoundEverywhere) {
    for (const std::string room : {"imaging", "shell", "cli", "converter", "ui"})
        for (const std::string header : {"QtNetwork/QTcpSocket", "QTcpSocket", "QNoSuchHeader"})
            EXPECT_EQ(Objections(room + "/A.h", "#include <" + header + ">").size(), 1U)
                << room << " " << header;
}

/// The doors themselves, and what is of one system alone.
bool MayCallTheSystem(const std::string& file) {
    const std::string stem = fs::path(file).stem().string();
    return file == "core/SystemNames.cpp" || stem.ends_with("_posix") || stem.ends_with("_win32");
}

/// The calls of the standard library that ask the system for files, or change them.
Names FileCalls(const std::string& text) {
    static const std::regex call(R"(\bstd::filesystem::[a-z_]+\(|\bfopen\b|\b[io]?fstream\b)");
    Names calls;
    for (std::sregex_iterator found(text.begin(), text.end(), call), end; found != end; ++found)
        if (found->str() != "std::filesystem::path(") calls.push_back(found->str());
    return calls;
}

TEST(Layering, FilesAreReachedThroughTheirDoorsOnly) {
    for (const std::string& file : FilesUnder(kSourceTree / "src")) {
        if (MayCallTheSystem(file)) continue;
        EXPECT_THAT(FileCalls(Text(kSourceTree / "src" / file)), IsEmpty()) << file;
    }
    EXPECT_THAT(FileCalls(Text(kSourceTree / "src/core/SystemNames_posix.cpp")), Not(IsEmpty()));
}

TEST(Layering, ACallPastTheDoorsIsFound) {
    for (const std::string call : {"std::filesystem::remove(path);", "std::ifstream file(path);",
                                   "#include <fstream>", "std::fopen(name, mode);"})
        EXPECT_EQ(FileCalls(call).size(), 1U) << call;
    EXPECT_THAT(FileCalls("std::filesystem::path(name).filename()"), IsEmpty());
}

}  // namespace
}  // namespace pictavo::tests
