#include "core/SignatureSearch.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace pictavo {

namespace {

using Place = std::optional<std::uint64_t>;

[[maybe_unused]] bool IsSearchable(const Signature& signature) {
    const std::size_t length = signature.bytes.size();
    return length >= 1 && length <= Signature::kLongest && signature.rarest < length;
}

std::size_t AtMost(std::size_t size, std::uint64_t most) {
    return static_cast<std::size_t>(std::min<std::uint64_t>(size, most));
}

std::optional<std::size_t> IndexIn(std::string_view text, const Signature& signature) {
    const char rarest = signature.bytes[signature.rarest];
    for (std::size_t at = signature.rarest; (at = text.find(rarest, at)) != std::string_view::npos; ++at) {
        const std::size_t index = at - signature.rarest;
        if (text.substr(index, signature.bytes.size()) == signature.bytes) return index;
    }
    return std::nullopt;
}

/// Looks at the places before `border` from which a signature would reach across it.
Result<Place> FindAcross(const ByteSource& source, const Signature& signature, std::uint64_t from,
                         std::uint64_t border) {
    const std::size_t reach = signature.bytes.size() - 1;
    const std::uint64_t start = border - std::min<std::uint64_t>(border - from, reach);
    std::array<std::uint8_t, 2 * Signature::kLongest> around{};
    const auto wanted = static_cast<std::size_t>(border - start) + reach;
    PICTAVO_TRY(const std::size_t count, source.ReadAt(start, MutableByteView(around).first(wanted)));
    const auto index = IndexIn(AsText(ByteView(around).first(count)), signature);
    return index ? Place(start + *index) : Place();
}

/// The first place in what the source has at hand from `from` on, or across the end of that.
Result<Place> FindNear(const ByteSource& source, const Signature& signature, std::uint64_t from,
                       ByteView view) {
    if (const auto index = IndexIn(AsText(view), signature)) return Place(from + *index);
    return FindAcross(source, signature, from, from + view.size());
}

}  // namespace

Result<std::optional<std::uint64_t>> FindSignature(const ByteSource& source, const Signature& signature,
                                                   std::uint64_t from, std::uint64_t limit,
                                                   const SearchStep& step) {
    assert(IsSearchable(signature));
    while (from < limit) {
        if (!step(from)) return Fail(ErrorKind::Stopped, "stopped before the end");
        PICTAVO_TRY(ByteView view, source.ViewAt(from));
        if (view.empty()) break;
        view = view.first(AtMost(view.size(), limit - from + signature.bytes.size()));
        const std::uint64_t next = from + view.size();
        PICTAVO_TRY(const Place place, FindNear(source, signature, from, view));
        if (place) return *place < limit ? place : Place();
        from = next;
    }
    return Place();
}

}  // namespace pictavo
