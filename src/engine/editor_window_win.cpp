#include "engine/editor_window.h"

#include <algorithm>

#include "app/services/memory.h"
#include "app/services/message_table.h"
#include "app/services/notices.h"
#include "base/utf16.h"
#include "engine/drag_timer.h"
#include "engine/render.h"
#include "platform/win32/casts.h"
#include "shell/desktop_keys.h"
#include "shell/text_window.h"
#include "view/editing.h"
#include "view/navigation.h"
#include "view/scroll.h"

namespace nira {

namespace {

constexpr wchar_t kClassName[] = L"NREDIT";
constexpr UINT kOpenPath = WM_USER;  // the main window opens the path in lParam

Editor* Current() { return TheWindowState().currentEditor; }

void StoreMouse(LPARAM position) {
    TheWindowState().mouseX = static_cast<int16_t>(LOWORD(position));
    TheWindowState().mouseY = static_cast<int16_t>(HIWORD(position));
}

// Without a document the area is validated all the same: an invalid one would be asked to paint for ever.
intptr_t OnPaint(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    if (Current() != nullptr) {
        PaintEditor(Current(), 1);
    } else {
        ValidateRect(ToHwnd(window), nullptr);
    }
    return 0;
}

intptr_t OnSize(WindowHandle, uint32_t, uintptr_t, intptr_t size) {
    TheWindowState().clientWidth = LOWORD(size);
    if (Current() != nullptr) ViewResized(Current());
    return 0;
}

intptr_t OnTimer(WindowHandle, uint32_t, uintptr_t timer, intptr_t) {
    const WindowState& state = TheWindowState();
    if (timer == kDragTimer && Current() != nullptr) DragStep(Current(), state.mouseX, state.mouseY);
    return 0;
}

intptr_t OnChar(WindowHandle, uint32_t, uintptr_t character, intptr_t) {
    if (character == VK_BACK || character == VK_RETURN) return 0;  // WM_KEYDOWN has handled them
    if (Current() != nullptr) TypeChar(Current(), static_cast<char16_t>(character));
    return 0;
}

using Move = void (*)(Editor* editor, bool extend);

// What a key does, without and with Ctrl.
struct KeyEntry {
    WPARAM key;
    Move plain;
    Move withCtrl;
};

void BackspaceKey(Editor* editor, bool) { DeleteBackward(editor); }
void ReturnKey(Editor* editor, bool) { NewLine(editor); }
void DeleteKey(Editor* editor, bool) { DeleteForward(editor); }

constexpr KeyEntry kKeys[] = {
    {VK_BACK, BackspaceKey, BackspaceKey}, {VK_RETURN, ReturnKey, ReturnKey},
    {VK_PRIOR, MovePageUp, MovePageUp},    {VK_NEXT, MovePageDown, MovePageDown},
    {VK_END, MoveEnd, MoveToEnd},          {VK_HOME, MoveHome, MoveToStart},
    {VK_LEFT, MoveLeft, MoveWordLeft},     {VK_UP, MoveRowUp, MoveRowUp},
    {VK_RIGHT, MoveRight, MoveWordRight},  {VK_DOWN, MoveRowDown, MoveRowDown},
    {VK_DELETE, DeleteKey, DeleteKey},
};

intptr_t OnKeyDown(WindowHandle window, uint32_t message, uintptr_t key, intptr_t data) {
    for (const KeyEntry& entry : kKeys) {
        if (entry.key != key) continue;
        const bool extend = (shell::KeyState(VK_SHIFT) >> 1) != 0;
        const bool ctrl = shell::KeyState(VK_CONTROL) != 0;
        if (Current() != nullptr) (ctrl ? entry.withCtrl : entry.plain)(Current(), extend);
        return 0;
    }
    return DefWindowProcW(ToHwnd(window), message, key, data);
}

intptr_t OnButtonDown(WindowHandle, uint32_t, uintptr_t, intptr_t position) {
    StoreMouse(position);
    TheWindowState().mouseDown = 1;
    if (Current() != nullptr) TapAt(Current(), TheWindowState().mouseX, TheWindowState().mouseY);
    return 0;
}

intptr_t OnButtonUp(WindowHandle, uint32_t, uintptr_t, intptr_t position) {
    StoreMouse(position);
    StopDragTimer();
    TheWindowState().mouseDown = 0;
    if (Current() != nullptr) Current()->selecting = 0;
    return 0;
}

intptr_t OnMouseMove(WindowHandle, uint32_t, uintptr_t buttons, intptr_t position) {
    if (TheWindowState().mouseDown == 0 || (buttons & MK_LBUTTON) == 0) return 0;
    StoreMouse(position);
    if (Current() != nullptr) {
        Current()->selecting = 1;
        DragTo(Current(), TheWindowState().mouseX, TheWindowState().mouseY);
    }
    return 0;
}

intptr_t OnScroll(WindowHandle, uint32_t message, uintptr_t request, intptr_t) {
    if (Current() == nullptr) return 0;
    const int32_t code = LOWORD(request);
    if (message == WM_HSCROLL) {
        ScrollHorizontal(Current(), code);
    } else {
        ScrollVertical(Current(), code);
    }
    return 0;
}

intptr_t OnSetFocus(WindowHandle window, uint32_t, uintptr_t, intptr_t) {
    if (Current() == nullptr) return 0;
    CreateCaret(ToHwnd(window), nullptr, kCaretWidth, Current()->lineHeight);
    PlaceCaret(Current());
    return 0;
}

intptr_t OnKillFocus(WindowHandle, uint32_t, uintptr_t, intptr_t) {
    DestroyCaret();
    return 0;
}

intptr_t OnSetText(WindowHandle window, uint32_t, uintptr_t, intptr_t text) {
    return SendMessageW(GetParent(ToHwnd(window)), kOpenPath, 0, text);
}

constexpr MessageEntry kEditorMessages[] = {
    {WM_PAINT, OnPaint},        {WM_SIZE, OnSize},           {WM_TIMER, OnTimer},
    {WM_CHAR, OnChar},          {WM_KEYDOWN, OnKeyDown},     {WM_LBUTTONDOWN, OnButtonDown},
    {WM_LBUTTONUP, OnButtonUp}, {WM_MOUSEMOVE, OnMouseMove}, {WM_HSCROLL, OnScroll},
    {WM_VSCROLL, OnScroll},     {WM_SETFOCUS, OnSetFocus},   {WM_KILLFOCUS, OnKillFocus},
    {WM_SETTEXT, OnSetText},
};

constexpr MessageTable kEditorTable = {kEditorMessages, sizeof(kEditorMessages) / sizeof(kEditorMessages[0])};

LRESULT CALLBACK EditorWndProc(HWND window, UINT message, WPARAM first, LPARAM second) {
    const MessageEntry* entry = FindMessage(kEditorTable, message);
    if (entry == nullptr) return DefWindowProcW(window, message, first, second);
    LRESULT result = 0;
    // Operations that can run out of memory guard themselves; this is for the ones that forgot to.
    Guarded([&] { result = entry->handler(FromHwnd(window), message, first, second); });
    return result;
}

}  // namespace

bool RegisterEditorClass() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = EditorWndProc;
    windowClass.lpszClassName = kClassName;
    return RegisterClassW(&windowClass) != 0;
}

int CreateEditorWindow(WindowHandle parent) {
    RECT area = {};
    GetClientRect(ToHwnd(parent), &area);
    const HWND window =
        CreateWindowExW(0, kClassName, L"Edit", WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL, 0, 0,
                        area.right, area.bottom, ToHwnd(parent), nullptr, GetModuleHandleW(nullptr), nullptr);
    if (window == nullptr) {
        ReportLastError();
        return 0;
    }
    TheWindowState().editorWindow = FromHwnd(window);
    RECT client = {};
    GetClientRect(window, &client);
    TheWindowState().clientWidth = client.right;
    if (!shell::AttachTextWindow(window)) ReportLastError();
    return 1;
}

void ResizeEditorWindow(int32_t width, int32_t height) {
    const HWND window = ToHwnd(TheWindowState().editorWindow);
    if (window == nullptr) return;
    SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER);
}

}  // namespace nira
