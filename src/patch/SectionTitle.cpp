#include "patch/SectionTitle.h"

#include "core/NoOtherValue.h"

namespace pictavo {

namespace {

constexpr std::string_view kEnd = " #####";

std::string_view BeginOf(SectionKind kind) {
    switch (kind) {
        case SectionKind::Picture:
            return "; ##### Picture ";
        case SectionKind::Png:
            return "; ##### PNG Picture ";
    }
    NoOtherValue();
}

}  // namespace

std::string SectionTitle(SectionKind kind, std::string_view name) {
    return std::string(BeginOf(kind)) + std::string(name) + std::string(kEnd);
}

std::optional<std::string> NameIn(std::string_view line, SectionKind kind) {
    const std::string_view begin = BeginOf(kind);
    if (!line.starts_with(begin) || line.size() < begin.size() + kEnd.size()) return std::nullopt;
    return std::string(line.substr(begin.size(), line.size() - begin.size() - kEnd.size()));
}

}  // namespace pictavo
