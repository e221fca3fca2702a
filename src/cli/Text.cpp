#include "cli/Text.h"

namespace pictavo::cli {

std::string KeyLine(const std::string& key, const std::string& value) {
    return key + ": " + value + "\n";
}

}  // namespace pictavo::cli
