#include <gmock/gmock.h>
#include <regex>
#include <set>

#include "docs/FormatPage.h"

namespace pictavo::tests {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;
using ::testing::Not;

/// Files under `folder`, subfolders included, whose extension is one of `extensions`.
std::vector<fs::path> FilesUnder(const fs::path& folder, const std::set<std::string>& extensions) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && extensions.contains(entry.path().extension().string()))
            files.push_back(entry.path());
    return files;
}

/// What the first group of `pattern` matches in `text`, each match.
Lines Matches(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    Lines matches;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match)
        matches.push_back((*match)[1]);
    return matches;
}

fs::path Formats() {
    return SourceTree() / "docs" / "formats";
}

TEST(Links, EveryFormatPageThatAHeaderNamesExists) {
    std::set<std::string> named;
    for (const fs::path& header : FilesUnder(SourceTree() / "src", {".h", ".cpp"}))
        for (const std::string& page : Matches(ReadText(header), R"(docs/formats/([\w-]+\.md))")) {
            EXPECT_TRUE(fs::is_regular_file(Formats() / page)) << header << " names " << page;
            named.insert(page);
        }
    EXPECT_THAT(named, Not(IsEmpty()));
}

TEST(Links, EveryFormatPageIsInTheIndex) {
    const Lines listed = Matches(ReadText(Formats() / "README.md"), R"(\]\(([\w-]+\.md)\))");
    for (const fs::path& page : FilesUnder(Formats(), {".md"})) {
        if (page.filename() == "README.md") continue;
        EXPECT_THAT(listed, ::testing::Contains(page.filename().string()));
    }
}

std::vector<fs::path> Documents() {
    std::vector<fs::path> documents = FilesUnder(SourceTree() / "docs", {".md"});
    for (const char* name : {"README.md", "CONTRIBUTING.md"}) documents.push_back(SourceTree() / name);
    return documents;
}

bool LeadsOutOfTheTree(const std::string& target) {
    return target.find("://") != std::string::npos || target.starts_with("#") ||
           target.starts_with("mailto:");
}

TEST(Links, EveryLinkToAFileOfTheTreeLeadsSomewhere) {
    std::size_t followed = 0;
    for (const fs::path& document : Documents()) {
        for (const std::string& target : Matches(ReadText(document), R"(\]\(([^)\s]+)\))")) {
            if (LeadsOutOfTheTree(target)) continue;
            const std::string file = target.substr(0, target.find('#'));
            EXPECT_TRUE(fs::exists(document.parent_path() / file)) << document << " -> " << target;
            ++followed;
        }
    }
    EXPECT_GT(followed, 0U);
}

/// Fenced blocks hold no prose.
std::string WithoutBlocks(const std::string& page) {
    std::string prose;
    bool isInBlock = false;
    for (const std::string& line : LinesOf(page)) {
        if (line.starts_with("```"))
            isInBlock = !isInBlock;
        else if (!isInBlock)
            prose += line + "\n";
    }
    return prose;
}

/// Pages name things as the code does; a thing renamed there must be renamed here.
TEST(Links, EveryNameOfCodeOnAFormatPageStandsInTheSources) {
    std::string sources;
    for (const fs::path& file : FilesUnder(SourceTree() / "src", {".h", ".cpp", ".in"}))
        sources += file.filename().string() + ReadText(file);
    std::size_t names = 0;
    for (const fs::path& page : FilesUnder(Formats(), {".md"}))
        for (const std::string& name : Matches(WithoutBlocks(ReadText(page)), R"(`([A-Za-z_]\w{3,})`)")) {
            EXPECT_NE(sources.find(name), std::string::npos) << page.filename() << " names " << name;
            ++names;
        }
    EXPECT_GT(names, 0U);
}

TEST(Links, EverySourceFileOnAFormatPageExists) {
    std::size_t paths = 0;
    for (const fs::path& page : FilesUnder(Formats(), {".md"}))
        for (const std::string& path : Matches(ReadText(page), R"(`((?:src|tests)/[\w/.]+)`)")) {
            EXPECT_TRUE(fs::exists(SourceTree() / path)) << page.filename() << " names " << path;
            ++paths;
        }
    EXPECT_GT(paths, 0U);
}

}  // namespace
}  // namespace pictavo::tests
