// A registry of a test's own: both roots lead into a throw-away key, so that no test touches a person's
// settings.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

namespace nira {

class RegistrySandbox {
  public:
    RegistrySandbox() {
        RegDeleteTreeW(HKEY_CURRENT_USER, kPath);
        Redirect(HKEY_LOCAL_MACHINE, L"Software\\NIRA tests\\machine");
        Redirect(HKEY_CURRENT_USER, L"Software\\NIRA tests\\user");
    }
    ~RegistrySandbox() {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
        RegDeleteTreeW(HKEY_CURRENT_USER, kPath);
    }
    RegistrySandbox(const RegistrySandbox&) = delete;
    RegistrySandbox& operator=(const RegistrySandbox&) = delete;

  private:
    static constexpr const wchar_t* kPath = L"Software\\NIRA tests";

    static void Redirect(HKEY root, const wchar_t* path) {
        HKEY key = nullptr;
        EXPECT_EQ(
            RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
            ERROR_SUCCESS);
        EXPECT_EQ(RegOverridePredefKey(root, key), ERROR_SUCCESS);
        RegCloseKey(key);
    }
};

}  // namespace nira
