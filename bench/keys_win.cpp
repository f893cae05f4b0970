// Loads one file into the real editor window, types 200 characters in the middle of it and prints the median
// time from a key's message until its row is painted, in microseconds.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "app/services/memory.h"
#include "engine/current_editor.h"
#include "engine/editor_window.h"
#include "engine/render.h"
#include "engine/text.h"
#include "files/codecs.h"
#include "files/load.h"
#include "platform/win32/casts.h"
#include "settings/options_store.h"
#include "view/fonts.h"
#include "view/navigation.h"

namespace nira {

namespace {

constexpr int kKeys = 200;

HWND MakeWindows() {
    const HWND frame = CreateWindowExW(0, L"STATIC", L"keys", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 480,
                                       600, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    TheEditorEvents().repaint = [](Editor* editor) { PaintEditor(editor, 0); };
    const bool ready = frame != nullptr && InitCodecs() != 0 && RegisterEditorClass() &&
                       InitFonts(FromHwnd(frame)) != 0 && LoadOptions() != 0 &&
                       CreateEditorWindow(FromHwnd(frame)) != 0;
    return ready ? frame : nullptr;
}

double MicrosecondsOfKey(HWND window, wchar_t key) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER before;
    LARGE_INTEGER after;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&before);
    SendMessageW(window, WM_CHAR, key, 0);
    GdiFlush();
    QueryPerformanceCounter(&after);
    return static_cast<double>(after.QuadPart - before.QuadPart) * 1e6 /
           static_cast<double>(frequency.QuadPart);
}

int MeasureKeys(const wchar_t* path) {
    if (MakeWindows() == nullptr) return 1;
    const HWND window = ToHwnd(TheWindowState().editorWindow);
    Editor* editor = EditorCreate();
    if (editor == nullptr || Load(editor, MemStrDup(nullptr, FromWide(path)), kCodecUtf8) == 0) return 1;
    SetCurrentEditor(editor);
    SetFocus(window);
    GoToLine(editor, editor->lineCount / 2);
    std::vector<double> times;
    for (int i = 0; i < kKeys; ++i) {
        times.push_back(MicrosecondsOfKey(window, static_cast<wchar_t>(L'a' + i % 26)));
        if (i % 50 == 49) SendMessageW(window, WM_KEYDOWN, VK_RETURN, 0);
    }
    std::nth_element(times.begin(), times.begin() + kKeys / 2, times.end());
    std::printf("%.1f\n", times[kKeys / 2]);
    return 0;
}

}  // namespace

}  // namespace nira

int wmain(int argc, wchar_t** argv) { return argc == 2 ? nira::MeasureKeys(argv[1]) : 1; }
