#include "core/SystemRights_win32.h"

#include <aclapi.h>
#include <cstddef>
#include <sddl.h>
#include <string>
#include <vector>

namespace pictavo::system_file {

namespace {

/// What the system says of this process's user: a structure of `Kind` and what it points to. Empty when it
/// says nothing.
class UserInformation {
  public:
    explicit UserInformation(TOKEN_INFORMATION_CLASS kind) {
        HANDLE token = nullptr;
        if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0) return;
        DWORD size = 0;
        GetTokenInformation(token, kind, nullptr, 0, &size);
        bytes_.resize(size);
        if (GetTokenInformation(token, kind, bytes_.data(), size, &size) == 0) bytes_.clear();
        CloseHandle(token);
    }

    template <typename Structure>
    const Structure* As() const {
        return bytes_.empty() ? nullptr : reinterpret_cast<const Structure*>(bytes_.data());
    }

  private:
    std::vector<std::byte> bytes_;
};

/// The user's number as the texts of rights name him; empty when the system does not tell it.
std::wstring UserName() {
    const UserInformation information(TokenUser);
    const auto* user = information.As<TOKEN_USER>();
    LPWSTR text = nullptr;
    if (user == nullptr || ConvertSidToStringSidW(user->User.Sid, &text) == 0) return {};
    std::wstring name = text;
    LocalFree(text);
    return name;
}

bool IsUserOrHisGroup(PSID owner) {
    const UserInformation user(TokenUser);
    const UserInformation group(TokenOwner);
    const auto* asUser = user.As<TOKEN_USER>();
    const auto* asGroup = group.As<TOKEN_OWNER>();
    return (asUser != nullptr && EqualSid(owner, asUser->User.Sid) != 0) ||
           (asGroup != nullptr && EqualSid(owner, asGroup->Owner) != 0);
}

bool IsPartOfTheSystem(PSID who) {
    return IsWellKnownSid(who, WinLocalSystemSid) != 0 ||
           IsWellKnownSid(who, WinBuiltinAdministratorsSid) != 0 ||
           IsWellKnownSid(who, WinCreatorOwnerSid) != 0 || IsWellKnownSid(who, WinCreatorOwnerRightsSid) != 0;
}

/// Whether this entry of the rights to a folder lets somebody else create files in it.
bool LetsStrangersCreate(void* entry) {
    constexpr DWORD kCreates = FILE_ADD_FILE | GENERIC_WRITE | GENERIC_ALL;
    auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
    if (allowed->Header.AceType != ACCESS_ALLOWED_ACE_TYPE) return false;
    if ((allowed->Header.AceFlags & INHERIT_ONLY_ACE) != 0 || (allowed->Mask & kCreates) == 0) return false;
    PSID who = &allowed->SidStart;
    return !IsUserOrHisGroup(who) && !IsPartOfTheSystem(who);
}

bool LetsStrangersCreate(PACL rights) {
    if (rights == nullptr) return true;  // a folder without any rights is open to all
    for (DWORD index = 0; index < rights->AceCount; ++index) {
        void* entry = nullptr;
        if (GetAce(rights, index, &entry) != 0 && LetsStrangersCreate(entry)) return true;
    }
    return false;
}

}  // namespace

bool StrangersMayCreateIn(const std::wstring& folder) {
    PACL rights = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(folder.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                              &rights, nullptr, &descriptor) != ERROR_SUCCESS)
        return true;
    const bool mayCreate = LetsStrangersCreate(rights);
    LocalFree(descriptor);
    return mayCreate;
}

bool IsOwn(HANDLE file) {
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetSecurityInfo(file, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner, nullptr, nullptr, nullptr,
                        &descriptor) != ERROR_SUCCESS)
        return false;
    const bool isOwn = owner != nullptr && IsUserOrHisGroup(owner);
    LocalFree(descriptor);
    return isOwn;
}

PrivateRights::PrivateRights() {
    const std::wstring user = UserName();
    if (user.empty()) return;
    // Protected from what is inherited; all rights for the user, also to what is created inside.
    const std::wstring rights = L"D:P(A;OICI;FA;;;" + user + L")";
    if (ConvertStringSecurityDescriptorToSecurityDescriptorW(rights.c_str(), SDDL_REVISION_1, &descriptor_,
                                                             nullptr) == 0)
        descriptor_ = nullptr;
    attributes_ = {sizeof attributes_, descriptor_, FALSE};
}

PrivateRights::~PrivateRights() {
    LocalFree(descriptor_);
}

}  // namespace pictavo::system_file
