#include "shell/FreedesktopStore.h"
#include "shell/SystemStore.h"

namespace pictavo {

std::unique_ptr<KeyStore> MakeSystemStore(ProcessRunner& processes,
                                          const std::function<Bytes(int size)>& drawIcon) {
    return std::make_unique<FreedesktopStore>(UserDesktopFolders(), processes, drawIcon);
}

}  // namespace pictavo
