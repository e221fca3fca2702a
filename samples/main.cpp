/// pictavo-sample: writes a fullflash dump that was never in a phone, to try Pictavo and to test it.
/// Exit status: 0 done, 1 something could not be written, 2 wrong usage.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>
#include <system_error>

#include "samples/Replacements.h"
#include "samples/Sample.h"
#include "samples/WholeFile.h"

namespace {

using namespace pictavo::samples;

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

const std::map<std::string, FlashKind> kKinds{{"sgold", FlashKind::SGold},
                                              {"new-sgold", FlashKind::NewSGold},
                                              {"e71", FlashKind::NewSGoldE71},
                                              {"el71", FlashKind::NewSGoldEL71}};

struct Wishes {
    SampleSpec spec;
    std::string kind = "new-sgold";
    bool noErased = false;
    std::filesystem::path output;
    std::filesystem::path replacements;
};

void DeclareOptions(CLI::App& app, Wishes& wishes) {
    SampleSpec& spec = wishes.spec;
    app.add_option("-o,--output", wishes.output, "The dump to write; an older file of that name is replaced")
        ->required()
        ->type_name("FILE");
    app.add_option("--kind", wishes.kind, "The phone: sgold, new-sgold, e71 or el71")
        ->check(CLI::IsMember(kKinds))
        ->type_name("KIND")
        ->capture_default_str();
    app.add_option("--size", spec.sizeMiB, "Size in MiB: 16, 32, 64 or 128")
        ->type_name("MIB")
        ->capture_default_str();
    app.add_option("--pictures", spec.pictureCount,
                   "Pictures in the table: up to 2001, or 2501 with e71 and el71")
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--gifs", spec.gifCount, "Embedded GIF files, up to 1000")
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--pngs", spec.pngCount, "Embedded PNG files, up to 1000")
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--xmls", spec.xmlCount, "Embedded XML files, up to 1000")
        ->type_name("N")
        ->capture_default_str();
    app.add_option("--seed", spec.seed, "Another number gives other pictures")
        ->type_name("S")
        ->capture_default_str();
    app.add_flag("--no-erased", wishes.noErased, "Leave no erased flash for grown pictures");
    app.add_option("--replacements", wishes.replacements,
                   "Also write some picture files to replace pictures with, named by number with leading "
                   "zeros (0007.png)")
        ->type_name("DIR");
}

int Complain(const std::string& reason, int status) {
    std::cerr << "pictavo-sample: " << reason << '\n';
    return status;
}

Outcome WriteReplacements(const Sample& sample, const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) return Outcome::Failed(folder.string() + ": cannot be made: " + error.message());
    for (const ReplacementFile& file : MakeReplacements(sample)) {
        if (Outcome outcome = WriteWholeFile(folder / file.name, file.bytes); !outcome) return outcome;
    }
    return Outcome::Done();
}

int WriteAll(const Wishes& wishes) {
    const Sample sample = MakeSample(wishes.spec);
    if (const Outcome outcome = sample.flash.WriteTo(wishes.output); !outcome) {
        return Complain(outcome.Reason(), kFailed);
    }
    if (!wishes.replacements.empty()) {
        const Outcome outcome = WriteReplacements(sample, wishes.replacements);
        if (!outcome) return Complain(outcome.Reason(), kFailed);
    }
    std::cout << wishes.output.string() << ": " << sample.flash.Size() << " bytes, " << sample.pictures.size()
              << " pictures, " << sample.files.size() << " embedded files\n";
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Wishes wishes;
    CLI::App app("Writes a fullflash dump that was never in a phone, to try Pictavo with.", "pictavo-sample");
    DeclareOptions(app, wishes);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kWrongUsage;
    }
    wishes.spec.kind = kKinds.at(wishes.kind);
    wishes.spec.erasedAreas = !wishes.noErased;
    const std::string fault = FaultOf(wishes.spec);
    return fault.empty() ? WriteAll(wishes) : Complain(fault, kWrongUsage);
}
