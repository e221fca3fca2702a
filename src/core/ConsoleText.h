#pragma once

namespace pictavo {

/// While it lives, the standard streams carry bytes as they are written, and a console of Windows shows them
/// as UTF-8; then the console is as it was. Elsewhere all that holds anyway.
class ConsoleText {
  public:
    ConsoleText();
    ~ConsoleText();
    ConsoleText(const ConsoleText&) = delete;
    ConsoleText& operator=(const ConsoleText&) = delete;

  private:
    unsigned codePage_ = 0;
};

}  // namespace pictavo
