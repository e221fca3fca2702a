#include "cli/Text.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/ErrorText.h"

namespace pictavo::cli {

std::string KeyLine(const std::string& key, const std::string& value) {
    return key + ": " + OnOneLine(value) + "\n";
}

std::string Indented(const std::string& json) {
    std::string text;
    for (const char letter : json) text += letter == '\n' ? "\n  " : std::string(1, letter);
    return text;
}

std::string JsonText(const std::string& json) {
    std::string text;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const std::size_t control = json[i] == '\n' ? 0 : ControlLength(std::string_view(json).substr(i));
        if (control == 0) {
            text += json[i];
        } else {
            i += control - 1;
            text += "\\u" + HexText(static_cast<unsigned char>(json[i]), 4);
        }
    }
    return text + "\n";
}

}  // namespace pictavo::cli
