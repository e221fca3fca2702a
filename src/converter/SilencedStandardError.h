#pragma once

namespace pictavo {

/// While one exists, standard error goes nowhere. The PNG library under Qt's reader prints its complaint
/// there itself, past every message handler, where only the program's one error line is to stand.
class SilencedStandardError {
  public:
    SilencedStandardError();
    ~SilencedStandardError();
    SilencedStandardError(const SilencedStandardError&) = delete;
    SilencedStandardError& operator=(const SilencedStandardError&) = delete;

  private:
    int kept_;  // a second handle of standard error; negative when there is none to silence
};

}  // namespace pictavo
