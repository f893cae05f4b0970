#include "app/hand_over.h"

#include <cwchar>
#include <iterator>

#include "app/main_window.h"
#include "platform/win32/casts.h"

namespace nira {

namespace {

constexpr DWORD kPause = 50;  // milliseconds between two questions for the editor window

// False when no answer came in time.
bool Ask(HWND window, UINT message, LPARAM text, uint32_t patience, DWORD_PTR* answer) {
    return SendMessageTimeoutW(window, message, 0, text, SMTO_NORMAL, patience, answer) != 0;
}

// Null when the instance has ended or hangs. One that is just starting has none yet.
HWND EditorWindowOf(HWND other, uint32_t patience) {
    const ULONGLONG end = GetTickCount64() + patience;
    while (IsWindow(other)) {
        DWORD_PTR editor = 0;
        if (!Ask(other, kMessageEditorWindow, 0, patience, &editor)) return nullptr;
        if (editor != 0) return reinterpret_cast<HWND>(editor);
        if (GetTickCount64() > end) return nullptr;
        Sleep(kPause);
    }
    return nullptr;
}

struct Instances {
    HWND windows[16];
    size_t count;
};

BOOL CALLBACK NoteInstance(HWND window, LPARAM parameter) {
    auto* instances = reinterpret_cast<Instances*>(parameter);
    wchar_t name[8] = {};
    GetClassNameW(window, name, 8);
    if (wcscmp(name, L"NIRA") == 0) instances->windows[instances->count++] = window;
    return instances->count < std::size(instances->windows);
}

void BringToFront(HWND other) {
    if (IsIconic(other)) ShowWindow(other, SW_RESTORE);
    SetForegroundWindow(GetLastActivePopup(other));
}

bool HandOverTo(HWND other, const char16_t* path, uint32_t patience) {
    DWORD_PTR answer = 0;
    // Before anything else: to show or activate a window that hangs would wait for it without an end.
    if (!Ask(other, WM_NULL, 0, patience, &answer)) return false;
    if (path[0] == 0) return IsWindow(other) != FALSE;
    // The main window cannot be given a text of another process's memory; the editor window's WM_SETTEXT can.
    const HWND editor = EditorWindowOf(other, patience);
    if (editor == nullptr) return false;
    return Ask(editor, WM_SETTEXT, reinterpret_cast<LPARAM>(path), patience, &answer) && answer == kPathTaken;
}

}  // namespace

// Any of them may hang, and the one that was started beside it be well. They are counted first: bringing one
// to the front changes the order in which they are found.
bool HandOver(const char16_t* path, uint32_t patience) {
    Instances others = {{}, 0};
    EnumWindows(NoteInstance, reinterpret_cast<LPARAM>(&others));
    for (size_t i = 0; i < others.count; ++i) {
        if (HandOverTo(others.windows[i], path, patience)) {
            BringToFront(others.windows[i]);
            return true;
        }
    }
    return false;
}

}  // namespace nira
