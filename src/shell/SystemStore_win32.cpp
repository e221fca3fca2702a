#include "shell/RegistryStore_win32.h"
#include "shell/SystemStore.h"

namespace pictavo {

std::unique_ptr<KeyStore> MakeSystemStore(ProcessRunner&, const std::function<Bytes(int size)>&) {
    return std::make_unique<RegistryStore>();
}

}  // namespace pictavo
