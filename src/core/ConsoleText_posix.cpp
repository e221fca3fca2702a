#include "core/ConsoleText.h"

namespace pictavo {

ConsoleText::ConsoleText() = default;
ConsoleText::~ConsoleText() = default;

}  // namespace pictavo
