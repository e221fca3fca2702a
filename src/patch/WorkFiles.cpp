#include "patch/WorkFiles.h"

#include "core/BasicCalculations_Tarsk.h"

namespace pictavo {

std::filesystem::path WorkFiles::Replacement(int number) const {
    return folder / (PadZeros(std::to_string(number), 4, true) + ".gpf2");
}

void RemoveWorkFile(const std::filesystem::path& path) {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

}  // namespace pictavo
