#include "cli/PathOption.h"

#include "core/PathText.h"

namespace pictavo::cli {

CLI::Option* AddPath(CLI::App& app, const std::string& name, std::filesystem::path& path,
                     const std::string& description) {
    const auto take = [&path](const CLI::results_t& texts) {
        path = PathOf(texts.front());
        return true;
    };
    return app.add_option(name, take, description)->type_name("TEXT");
}

}  // namespace pictavo::cli
