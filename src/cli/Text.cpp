#include "cli/Text.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/ErrorText.h"

namespace pictavo::cli {

namespace {

constexpr unsigned kDelete = 0x7F;
constexpr unsigned kLead = 0xC2;  // in UTF-8, of the control characters U+0080 to U+009F

bool IsBehindLead(unsigned code) {
    return code >= 0x80 && code < 0xA0;
}

}  // namespace

std::string KeyLine(const std::string& key, const std::string& value) {
    return key + ": " + OnOneLine(value) + "\n";
}

std::string JsonText(const std::string& json) {
    std::string text;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const unsigned code = static_cast<unsigned char>(json[i]);
        const unsigned next = i + 1 < json.size() ? static_cast<unsigned char>(json[i + 1]) : 0U;
        const bool isOfTwo = code == kLead && IsBehindLead(next);
        if (code == kDelete || isOfTwo)
            text += "\\u" + HexText(isOfTwo ? next : code, 4);
        else
            text += json[i];
        if (isOfTwo) ++i;
    }
    return text + "\n";
}

}  // namespace pictavo::cli
