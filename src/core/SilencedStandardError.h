#pragma once

namespace pictavo {

/// While one exists, standard error goes nowhere, in all of the program. Picture libraries under Qt's readers
/// print their complaints there themselves, past every message handler, where only the program's own error
/// lines are to stand.
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
