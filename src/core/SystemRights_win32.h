#pragma once

/// Whose a file is, and rights that shut out everybody else.

#include <string>
#include <windows.h>

namespace pictavo::system_file {

/// Whether the file belongs to this user, or to the group in whose name the user creates files.
bool IsOwn(HANDLE file);

/// Whether the folder lets anyone create files in it but this user, that user's group, the administrators and
/// the system itself. True when that cannot be told.
bool StrangersMayCreateIn(const std::wstring& folder);

/// The rights of a new folder that only this user can enter, and of all in it.
class PrivateRights {
  public:
    PrivateRights();
    ~PrivateRights();
    PrivateRights(const PrivateRights&) = delete;
    PrivateRights& operator=(const PrivateRights&) = delete;

    /// For the calls that create something; owned by this object. Null when the system did not tell who the
    /// user is; its last error says why.
    SECURITY_ATTRIBUTES* Attributes() { return descriptor_ == nullptr ? nullptr : &attributes_; }

  private:
    PSECURITY_DESCRIPTOR descriptor_ = nullptr;
    SECURITY_ATTRIBUTES attributes_{};
};

}  // namespace pictavo::system_file
