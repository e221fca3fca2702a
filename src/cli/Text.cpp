#include "cli/Text.h"

#include "core/ErrorText.h"

namespace pictavo::cli {

std::string KeyLine(const std::string& key, const std::string& value) {
    return key + ": " + OnOneLine(value) + "\n";
}

}  // namespace pictavo::cli
