#include "shell/RegistryStore_win32.h"

#include <array>
#include <functional>
#include <shlobj.h>
#include <windows.h>

#include "core/SystemError_win32.h"
#include "core/WideText_win32.h"

namespace pictavo {

namespace {

/// A root of all file types, and the path from it to them.
struct Root {
    HKEY hive;
    const wchar_t* prefix;

    std::wstring PathOf(const std::string& key) const { return prefix + WideText(key); }
};

const std::array<Root, 2>& Roots() {
    static const std::array<Root, 2> roots{
        {{HKEY_CLASSES_ROOT, L""}, {HKEY_CURRENT_USER, L"Software\\Classes\\"}}};
    return roots;
}

class OpenKey {
  public:
    OpenKey() = default;
    ~OpenKey() {
        if (key_ != nullptr) RegCloseKey(key_);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    HKEY Get() const { return key_; }
    HKEY* Receive() { return &key_; }

  private:
    HKEY key_ = nullptr;
};

LSTATUS Open(OpenKey& opened, const std::string& key) {
    const Root& root = Roots().front();
    return RegOpenKeyExW(root.hive, root.PathOf(key).c_str(), 0, KEY_READ, opened.Receive());
}

LSTATUS Create(OpenKey& created, const Root& root, const std::string& key, REGSAM access) {
    return RegCreateKeyExW(root.hive, root.PathOf(key).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access,
                           nullptr, created.Receive(), nullptr);
}

bool IsText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ;
}

/// A change that is tried in the classes root first, and where rights lack, for the user alone.
Status Change(const std::string& key, const std::function<LSTATUS(const Root&)>& change) {
    LSTATUS status = ERROR_ACCESS_DENIED;
    for (const Root& root : Roots())
        if (status == ERROR_ACCESS_DENIED) status = change(root);
    if (status == ERROR_SUCCESS) return {};
    return Fail(ErrorKind::WriteFailed, {},
                "the registry key " + key + " cannot be changed (" +
                    system_file::Reason(static_cast<DWORD>(status)) + ")");
}

}  // namespace

bool RegistryStore::HasKey(const std::string& key) const {
    OpenKey opened;
    return Open(opened, key) == ERROR_SUCCESS;
}

KeyStore::Value RegistryStore::ReadValue(const std::string& key, const std::string& name) const {
    OpenKey opened;
    DWORD type = REG_NONE;
    DWORD size = 0;
    LSTATUS status = Open(opened, key);
    const std::wstring wideName = WideText(name);
    const auto query = [&](BYTE* into) {
        return RegQueryValueExW(opened.Get(), wideName.c_str(), nullptr, &type, into, &size);
    };
    if (status == ERROR_SUCCESS) status = query(nullptr);
    if (status == ERROR_SUCCESS && !IsText(type)) status = ERROR_INVALID_DATA;
    std::wstring text(size / sizeof(wchar_t) + 1, L'\0');  // an odd byte has its room too
    size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (status == ERROR_SUCCESS) status = query(reinterpret_cast<BYTE*>(text.data()));
    if (status != ERROR_SUCCESS) return tl::unexpected(static_cast<std::uint32_t>(status));
    return Utf8Text({text.data(), size / sizeof(wchar_t)});
}

Status RegistryStore::CreateKey(const std::string& key) {
    return Change(key, [&](const Root& root) {
        OpenKey created;
        return Create(created, root, key, KEY_READ);
    });
}

Status RegistryStore::WriteValue(const std::string& key, const std::string& name, const std::string& value) {
    const std::wstring text = WideText(value);
    const auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    return Change(key, [&](const Root& root) {
        OpenKey created;
        const LSTATUS status = Create(created, root, key, KEY_SET_VALUE);
        if (status != ERROR_SUCCESS) return status;
        return RegSetValueExW(created.Get(), WideText(name).c_str(), 0, REG_SZ,
                              reinterpret_cast<const BYTE*>(text.data()), size);
    });
}

Status RegistryStore::DeleteKey(const std::string& key) {
    if (key.empty()) return Fail(ErrorKind::WriteFailed, {}, "the registry's root cannot be removed");
    bool isDenied = false;
    return Change(key, [&](const Root& root) {
        const LSTATUS status = RegDeleteTreeW(root.hive, root.PathOf(key).c_str());
        if (status == ERROR_FILE_NOT_FOUND)
            return static_cast<LSTATUS>(isDenied ? ERROR_ACCESS_DENIED : ERROR_SUCCESS);
        isDenied = status == ERROR_ACCESS_DENIED;
        return status;
    });
}

Status RegistryStore::Commit() {
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
    return {};
}

}  // namespace pictavo
