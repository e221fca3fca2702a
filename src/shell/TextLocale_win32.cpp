#include <windows.h>

#include "shell/TextLocale.h"

namespace pictavo {

namespace {

constexpr unsigned kCyrillicCodePage = 1251;

}  // namespace

bool IsLocaleCyrillic() {
    return GetACP() == kCyrillicCodePage;
}

}  // namespace pictavo
