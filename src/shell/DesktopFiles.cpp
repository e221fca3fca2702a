#include "shell/DesktopFiles.h"

#include "core/ByteSource.h"
#include "core/OutputFile.h"
#include "core/SystemNames.h"

namespace pictavo {

namespace fs = std::filesystem;

bool IsThere(const fs::path& path) {
    const fs::file_type type = system_file::TypeOfName(path);
    return type != fs::file_type::none && type != fs::file_type::not_found;
}

Result<std::string> WholeText(const fs::path& path) {
    if (NameIsFree(path)) return std::string();
    PICTAVO_TRY(const auto source, FileSource::Open(path));
    PICTAVO_TRY(const Bytes bytes, source->ReadExactly(0, source->Size()));
    return std::string(AsText(bytes));
}

std::string TextOrNone(const fs::path& path) {
    return WholeText(path).value_or("");
}

fs::path BehindLinks(const fs::path& path) {
    std::error_code error;
    const fs::path target = fs::weakly_canonical(path, error);
    return error ? path : target;
}

Result<bool> RemoveText(const fs::path& path) {
    if (NameIsFree(path)) return false;
    system_file::RemoveFile(path);
    if (NameIsFree(path)) return true;
    return Fail(ErrorKind::WriteFailed, path, "cannot be removed");
}

Result<bool> PutText(const fs::path& path, std::string_view text) {
    if (text.empty()) return RemoveText(path);
    PICTAVO_TRY(const std::string before, WholeText(path));
    if (before == text) return false;
    PICTAVO_TRY(EnsureFolder(path.parent_path()));
    PICTAVO_TRY(WriteWholeFile(BehindLinks(path), AsBytes(text), CommitMode::Replace, Durability::Synced));
    return true;
}

}  // namespace pictavo
