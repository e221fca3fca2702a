#pragma once

#include <functional>
#include <memory>

#include "core/Bytes.h"
#include "session/Ports.h"
#include "shell/KeyStore.h"

namespace pictavo {

/// Where this system keeps what it opens file types with: the registry, or the files of a freedesktop.org
/// desktop, which needs the type's icon as a PNG file of `size` x `size` pixels. `processes` outlives it.
std::unique_ptr<KeyStore> MakeSystemStore(ProcessRunner& processes,
                                          const std::function<Bytes(int size)>& drawIcon);

}  // namespace pictavo
