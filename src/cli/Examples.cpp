#include "cli/Examples.h"

#include <map>

namespace pictavo::cli {

namespace {

const std::map<std::string, std::string> kArguments{
    {"info", "phone.bin"},
    {"list", "phone.bin --json"},
    {"export", "phone.bin -o pictures --format bmp --pictures 0,5,7-20"},
    {"convert", "logo.png logo.gpf2 --type 88"},
    {"patch", "phone.bin -o new.vkp --picture 12=logo.png@16 --compress"},
    {"check", "new.vkp phone.bin"},
    {"apply", "new.vkp phone.bin -o patched.bin"},
    {"backup-pit", "phone.bin -o backup"},
    {"rebuild-pit", "phone.bin --from gpf -o rebuilt"},
    {"extract-patch", "new.vkp -o pictures"},
    {"extract-gpn", "collection.gpn -o pictures"},
    {"carve", "png phone.bin -o pngs"},
    {"png-info", "logo.png"},
};

}  // namespace

std::string ExampleOf(const std::string& command) {
    const auto found = kArguments.find(command);
    return found == kArguments.end() ? "" : "pictavo-cli " + command + " " + found->second;
}

}  // namespace pictavo::cli
