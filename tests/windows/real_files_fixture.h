// Files on the system's own calls: a folder of the test's, a document, and a registry of its own.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "app/services/memory.h"
#include "engine/text.h"
#include "files/codecs.h"
#include "files/load.h"
#include "files/save.h"
#include "platform/win32/casts.h"
#include "settings/options.h"
#include "settings/options_store.h"
#include "view/fonts.h"
#include "windows/box_closer.h"
#include "windows/registry_sandbox.h"

namespace nira {

class RealFiles : public testing::Test {
  protected:
    RealFiles() {
        wchar_t temp[MAX_PATH];
        GetTempPathW(MAX_PATH, temp);
        folder_ = std::wstring(temp) + L"nira test " + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(folder_.c_str(), nullptr);
        InitFonts(nullptr);
        InitCodecs();
        LoadOptions();
        TheOptions().bomSave = 0;
        editor_ = EditorCreate();
    }
    ~RealFiles() override {
        EditorDestroy(editor_);
        FreeOptions();
        FreeCodecs();
        ShutdownFonts();
        WIN32_FIND_DATAW found;
        const HANDLE search = FindFirstFileW((folder_ + L"\\*").c_str(), &found);
        do {
            SetFileAttributesW(Path(found.cFileName).c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(Path(found.cFileName).c_str());
        } while (FindNextFileW(search, &found));
        FindClose(search);
        RemoveDirectoryW(folder_.c_str());
    }

    std::wstring Path(const std::wstring& name) const { return folder_ + L"\\" + name; }
    char16_t* OwnPath(const std::wstring& name) const {
        return MemStrDup(nullptr, FromWide(Path(name).c_str()));
    }
    void Put(const std::wstring& name, const std::string& bytes) const {
        const HANDLE file =
            CreateFileW(Path(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
        CloseHandle(file);
    }
    std::string Get(const std::wstring& name) const {
        const HANDLE file = CreateFileW(Path(name).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) return "(missing)";
        std::string bytes(GetFileSize(file, nullptr), '\0');
        DWORD read = 0;
        ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
        CloseHandle(file);
        bytes.resize(read);
        return bytes;
    }

    Editor* editor_;

  private:
    RegistrySandbox registry_;
    std::wstring folder_;
};

}  // namespace nira
