#pragma once

namespace pictavo {

namespace console_text {

/// From here on the standard streams carry bytes as they are written, and a console of Windows shows them as
/// UTF-8. Elsewhere all that holds anyway. Returns what End needs.
unsigned Begin();

/// The console is as it was before Begin.
void End(unsigned codePageBefore);

}  // namespace console_text

/// Begin, and at its end End.
class ConsoleText {
  public:
    ConsoleText() : codePageBefore_(console_text::Begin()) {}
    ~ConsoleText() { console_text::End(codePageBefore_); }
    ConsoleText(const ConsoleText&) = delete;
    ConsoleText& operator=(const ConsoleText&) = delete;

  private:
    unsigned codePageBefore_;
};

}  // namespace pictavo
