#include "app/services/memory.h"
#include "platform/win32/casts.h"
#include "settings/property_page.h"
#include "shell/scrolling_page.h"

namespace nira {

namespace {

HWND Control(WindowHandle page, int control) { return GetDlgItem(ToHwnd(page), control); }

}  // namespace

char16_t* ControlText(WindowHandle page, int control) {
    const HWND window = Control(page, control);
    const int length = GetWindowTextLengthW(window);
    auto* text = MemAllocArray<char16_t>(nullptr, static_cast<size_t>(length) + 1);
    GetWindowTextW(window, ToWide(text), length + 1);
    return text;
}

void SetControlText(WindowHandle page, int control, const char16_t* text) {
    SetWindowTextW(Control(page, control), ToWide(text));
}

void SetControlNumber(WindowHandle page, int control, uint32_t value) {
    SetDlgItemInt(ToHwnd(page), control, value, FALSE);
}

bool IsControlChecked(WindowHandle page, int control) {
    return IsDlgButtonChecked(ToHwnd(page), control) == BST_CHECKED;
}

void CheckControl(WindowHandle page, int control, bool checked) {
    CheckDlgButton(ToHwnd(page), control, checked ? BST_CHECKED : BST_UNCHECKED);
}

void WidenControls(WindowHandle page, int width, const int* controls, int count) {
    RECT margin = {6, 0, 0, 0};
    MapDialogRect(ToHwnd(page), &margin);
    for (int i = 0; i < count; ++i) {
        const HWND window = Control(page, controls[i]);
        const RECT place = shell::ControlPlace(window);
        SetWindowPos(window, nullptr, 0, 0, width - margin.left - place.left, place.bottom - place.top,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        InvalidateRect(window, nullptr, TRUE);
    }
}

int DialogHeight(WindowHandle page, int units) {
    RECT area = {0, 0, 0, units};
    MapDialogRect(ToHwnd(page), &area);
    return static_cast<int>(area.bottom);
}

int TakeNumbers(WindowHandle page, NumberFields numbers) {
    for (size_t i = 0; i < numbers.count; ++i) {
        const NumberField& field = numbers.fields[i];
        char16_t* text = ControlText(page, field.control);
        const bool taken = TakeNumber(page, field, text);
        MemFree(nullptr, text);
        if (!taken) return field.control;
    }
    return 0;
}

}  // namespace nira
