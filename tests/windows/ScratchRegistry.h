#pragma once

#include <aclapi.h>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <windows.h>

#include "core/WideText_win32.h"

namespace pictavo::tests {

/// For as long as it lives, this process has an empty key for its classes root and another for its user's
/// root; both go with it. Other processes see them below HKEY_CURRENT_USER, by their own names.
class ScratchRegistry {
  public:
    ScratchRegistry() {
        RegDeleteTreeW(HKEY_CURRENT_USER, kScratch);
        classes_ = Create(std::wstring(kScratch) + L"\\classes");
        user_ = Create(std::wstring(kScratch) + L"\\user");
        EXPECT_EQ(RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_), ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(HKEY_CURRENT_USER, user_), ERROR_SUCCESS);
    }
    ~ScratchRegistry() {
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegCloseKey(classes_);
        RegCloseKey(user_);
        RegDeleteTreeW(HKEY_CURRENT_USER, kScratch);
    }
    ScratchRegistry(const ScratchRegistry&) = delete;
    ScratchRegistry& operator=(const ScratchRegistry&) = delete;

    /// What reg.exe shows of all keys and values below the classes root, and below the user's.
    static std::string ShownClasses() { return Shown("classes"); }
    static std::string ShownUser() { return Shown("user"); }

    /// A value as some other program might have stored it.
    static void Store(const std::string& key, DWORD type, const void* bytes, DWORD size) {
        EXPECT_EQ(RegSetKeyValueW(HKEY_CLASSES_ROOT, WideText(key).c_str(), L"", type, bytes, size),
                  ERROR_SUCCESS);
    }

    /// A value's bytes as they are stored.
    static std::string Stored(const std::string& key, const std::string& name) {
        std::array<char, 1024> bytes{};
        DWORD size = bytes.size();
        HKEY opened = nullptr;
        RegOpenKeyExW(HKEY_CLASSES_ROOT, WideText(key).c_str(), 0, KEY_READ, &opened);
        EXPECT_EQ(RegQueryValueExW(opened, WideText(name).c_str(), nullptr, nullptr,
                                   reinterpret_cast<BYTE*>(bytes.data()), &size),
                  ERROR_SUCCESS);
        RegCloseKey(opened);
        return {bytes.data(), size};
    }

    /// Takes from everybody the right to change a key of a root, which is made where it is missing. `root` is
    /// HKEY_CLASSES_ROOT or HKEY_CURRENT_USER.
    static void Protect(const std::string& key, HKEY root = HKEY_CLASSES_ROOT) {
        HKEY opened = nullptr;
        ASSERT_EQ(
            RegCreateKeyExW(root, WideText(key).c_str(), 0, nullptr, 0, WRITE_DAC, nullptr, &opened, nullptr),
            ERROR_SUCCESS);
        SetRights(opened, KEY_READ);
        RegCloseKey(opened);
    }

  private:
    static constexpr const wchar_t* kScratch = L"Software\\Pictavo-test";

    static HKEY Create(const std::wstring& path) {
        HKEY created = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                                  &created, nullptr),
                  ERROR_SUCCESS);
        return created;
    }

    static void SetRights(HKEY key, DWORD rights) {
        std::array<BYTE, SECURITY_MAX_SID_SIZE> everybody{};
        DWORD size = everybody.size();
        ASSERT_TRUE(CreateWellKnownSid(WinWorldSid, nullptr, everybody.data(), &size));
        std::array<BYTE, 256> list{};
        auto* acl = reinterpret_cast<ACL*>(list.data());
        ASSERT_TRUE(InitializeAcl(acl, list.size(), ACL_REVISION));
        ASSERT_TRUE(AddAccessAllowedAce(acl, ACL_REVISION, rights | DELETE | WRITE_DAC, everybody.data()));
        SECURITY_DESCRIPTOR descriptor{};
        ASSERT_TRUE(InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION));
        ASSERT_TRUE(SetSecurityDescriptorDacl(&descriptor, TRUE, acl, FALSE));
        ASSERT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &descriptor), ERROR_SUCCESS);
    }

    static std::string Shown(const std::string& part) {
        const std::string command = "reg query HKCU\\Software\\Pictavo-test\\" + part + " /s";
        const std::unique_ptr<FILE, decltype(&_pclose)> output(_popen(command.c_str(), "r"), _pclose);
        std::string text;
        for (int c = std::fgetc(output.get()); c != EOF; c = std::fgetc(output.get()))
            text += static_cast<char>(c);
        return text;
    }

    HKEY classes_ = nullptr;
    HKEY user_ = nullptr;
};

}  // namespace pictavo::tests
