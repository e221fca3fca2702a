#pragma once

/// The whole error of a call that must fail, to be compared in one piece: kind, file, place and text.

#include <gtest/gtest.h>
#include <ostream>

#include "core/Result.h"

namespace pictavo {

inline void PrintTo(const Error& error, std::ostream* out) {
    *out << "kind " << static_cast<int>(error.kind) << ", file " << error.path << ", offset ";
    if (error.offset) *out << *error.offset;
    *out << ", \"" << error.detail << '"';
}

}  // namespace pictavo

namespace pictavo::tests {

template <typename T>
Error RefusalOf(const Result<T>& result) {
    if (!result) return result.error();
    ADD_FAILURE() << "was not refused";
    return {};
}

}  // namespace pictavo::tests
