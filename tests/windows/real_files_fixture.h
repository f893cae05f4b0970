// Files on the system's own calls: a folder of the test's, a document, a registry of its own, and somebody
// who closes the error boxes.
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
#include "windows/registry_sandbox.h"

namespace nira {

// What the box said that the closer met; a thread of its own, because the box waits.
class BoxCloser {
  public:
    BoxCloser() { thread_ = CreateThread(nullptr, 0, Run, this, 0, nullptr); }
    // Waits for the box and returns its text; empty when none came within ten seconds.
    std::wstring Text() {
        WaitForSingleObject(thread_, 20000);
        CloseHandle(thread_);
        return text_;
    }

  private:
    static DWORD WINAPI Run(void* self) {
        auto* closer = static_cast<BoxCloser*>(self);
        for (int i = 0; i < 200; ++i, Sleep(50)) {
            const HWND box = FindWindowW(L"#32770", L"Error");
            const HWND label = box != nullptr ? GetDlgItem(box, 0xFFFF) : nullptr;
            DWORD process = 0;
            if (box != nullptr) GetWindowThreadProcessId(box, &process);
            if (label == nullptr || process != GetCurrentProcessId()) continue;
            wchar_t text[200] = {};
            SendMessageW(label, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(text));
            closer->text_ = text;
            PostMessageW(box, WM_COMMAND, IDOK, 0);
            // A box that has just opened may drop its first message.
            for (int j = 0; j < 100 && IsWindow(box); ++j) {
                Sleep(50);
                PostMessageW(box, WM_COMMAND, IDOK, 0);
            }
            break;
        }
        return 0;
    }

    HANDLE thread_;
    std::wstring text_;
};

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
        std::string bytes(100000, '\0');
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
