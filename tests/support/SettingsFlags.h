#pragma once

/// The settings that are on or off, each with its key in the settings file.

#include <array>

#include "config/AppSettings.h"

namespace pictavo::tests {

struct Flag {
    const char* key;
    bool AppSettings::*member;
};

inline constexpr std::array<Flag, 9> kFlags = {{
    {"Transparency", &AppSettings::Transparency},
    {"CompressGPF", &AppSettings::CompressGPF},
    {"DefaultGPF2", &AppSettings::DefaultGPF2},
    {"ZeroFilename", &AppSettings::ZeroFilename},
    {"HEXFilename", &AppSettings::HEXFilename},
    {"ChanR", &AppSettings::ChanR},
    {"ChanG", &AppSettings::ChanG},
    {"ChanB", &AppSettings::ChanB},
    {"ChanA", &AppSettings::ChanA},
}};

}  // namespace pictavo::tests
