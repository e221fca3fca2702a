#include <string>

#include "samples/FileMakers.h"
#include "samples/Random.h"

namespace pictavo::samples {

Bytes MakeXml(std::uint32_t seed) {
    Random random(seed);
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<theme number=\"" + std::to_string(seed) + "\">\r\n";
    const std::uint32_t count = 3 + random.Below(20);
    for (std::uint32_t i = 0; i < count; ++i) {
        text += "  <item picture=\"" + std::to_string(random.Below(2000));
        text += "\" colour=\"" + std::to_string(random.Below(0x10000)) + "\"/>\r\n";
    }
    text += "</theme>";
    Bytes xml;
    AppendText(xml, text);
    return xml;
}

}  // namespace pictavo::samples
