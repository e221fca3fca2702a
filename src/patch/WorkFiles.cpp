#include "patch/WorkFiles.h"

#include "core/BasicCalculations_Tarsk.h"
#include "core/SystemNames.h"

namespace pictavo {

std::filesystem::path WorkFiles::Replacement(int number) const {
    return folder / (PadZeros(std::to_string(number), 4, true) + ".gpf2");
}

void RemoveWorkFile(const std::filesystem::path& path) {
    system_file::RemoveFile(path);
}

}  // namespace pictavo
