#include <windows.h>

#include <algorithm>

#include "app/services/memory.h"
#include "app/services/resources.h"
#include "base/utf16.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "shell/full_screen.h"
#include "shell/menu_bar.h"
#include "shell/touch_controls.h"
#include "view/font_choice.h"
#include "view/font_chooser.h"
#include "view/fonts.h"

namespace nira {

namespace {

constexpr UINT kShowPreview = WM_APP + 1;
constexpr int kComboHeight = 16;    // dialog units; 26 pixels where nothing is enlarged
constexpr int kPreviewHeight = 16;  // dialog units, at least
constexpr int kMargin = 6;          // dialog units

struct FontDialog {
    HWND window;
    const char16_t* current;  // the description to begin with
    bool noFaceYet;
    LRESULT faceHandled;  // index of the face whose sizes are listed
    FontHandle preview;
    char16_t* result;
};

struct StyleBox {
    int control;
    char16_t style;
};

constexpr StyleBox kStyleBoxes[] = {
    {IDC_FONT_BOLD, kFontBold},           {IDC_FONT_ITALIC, kFontItalic},
    {IDC_FONT_UNDERLINE, kFontUnderline}, {IDC_FONT_STRIKETHROUGH, kFontStrikeOut},
    {IDC_FONT_CLEARTYPE, kFontClearType},
};

FontDialog& DialogOf(HWND dialog) {
    return *reinterpret_cast<FontDialog*>(GetWindowLongPtrW(dialog, GWLP_USERDATA));
}

LRESULT Ask(const FontDialog& dialog, int control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendDlgItemMessageW(dialog.window, control, message, wParam, lParam);
}

// ---- Layout ----

RECT PlaceOf(const FontDialog& dialog, int control) {
    RECT place = {};
    GetWindowRect(GetDlgItem(dialog.window, control), &place);
    MapWindowPoints(nullptr, dialog.window, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

void Place(const FontDialog& dialog, int control, const RECT& place) {
    SetWindowPos(GetDlgItem(dialog.window, control), nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void SpreadOverContent(const FontDialog& dialog) {
    RECT units = {kMargin, kMargin, 0, kPreviewHeight};
    MapDialogRect(dialog.window, &units);
    const RECT content = shell::ContentRect(dialog.window);
    const LONG gained = content.right - units.left - PlaceOf(dialog, IDC_FONT_SIZE).right;
    RECT face = PlaceOf(dialog, IDC_FONT_FACE);
    face.right += gained;
    Place(dialog, IDC_FONT_FACE, face);
    for (const int control : {IDC_FONT_SIZE_LABEL, IDC_FONT_SIZE, IDOK, IDCANCEL}) {
        RECT place = PlaceOf(dialog, control);
        OffsetRect(&place, gained, 0);
        Place(dialog, control, place);
    }
    RECT preview = PlaceOf(dialog, IDC_FONT_PREVIEW);
    preview.right += gained;
    preview.bottom = std::max(content.bottom - units.top, preview.top + units.bottom);
    Place(dialog, IDC_FONT_PREVIEW, preview);
}

void EnlargeFields(const FontDialog& dialog) {
    RECT units = {0, 0, 0, kComboHeight};
    MapDialogRect(dialog.window, &units);
    for (const int control : {IDC_FONT_FACE, IDC_FONT_SIZE}) {
        shell::EnlargeComboBox(GetDlgItem(dialog.window, control), units.bottom);
    }
}

// ---- Faces and sizes ----

// A family is listed once, whatever the scripts and styles it comes in. Those turned on their side, whose
// names begin with @, are listed too: a description may name one, and must come out as it went in.
int CALLBACK AddFace(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM parameter) {
    auto& dialog = *reinterpret_cast<FontDialog*>(parameter);
    const auto name = reinterpret_cast<LPARAM>(font->lfFaceName);
    if (Ask(dialog, IDC_FONT_FACE, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), name) != CB_ERR) return TRUE;
    Ask(dialog, IDC_FONT_FACE, CB_ADDSTRING, 0, name);
    if (dialog.noFaceYet) Ask(dialog, IDC_FONT_FACE, CB_SETCURSEL);
    dialog.noFaceYet = false;
    return TRUE;
}

int CALLBACK AddSizes(const LOGFONTW*, const TEXTMETRICW* metrics, DWORD kind, LPARAM parameter) {
    const LONG height = metrics->tmHeight - metrics->tmInternalLeading;
    return AddFontSizes(reinterpret_cast<FontSizes*>(parameter), (kind & RASTER_FONTTYPE) == 0, height,
                        FontScale());
}

void Enumerate(const char16_t* face, FONTENUMPROCW each, LPARAM parameter) {
    const HDC screen = GetDC(nullptr);
    EnumFontFamiliesW(screen, ToWide(face), each, parameter);
    ReleaseDC(nullptr, screen);
}

// The name of the face that is selected, cut to what a description holds; empty when none is.
void ReadFace(const FontDialog& dialog, char16_t* face) {
    face[0] = 0;
    const LRESULT index = Ask(dialog, IDC_FONT_FACE, CB_GETCURSEL);
    if (index < 0) return;
    const LRESULT length = Ask(dialog, IDC_FONT_FACE, CB_GETLBTEXTLEN, static_cast<WPARAM>(index));
    if (length < 0) return;
    auto* name = MemAllocArray<char16_t>(nullptr, static_cast<size_t>(length) + 1);
    Ask(dialog, IDC_FONT_FACE, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(name));
    Utf16Copy(face, kFaceUnits + 1, name);
    MemFree(nullptr, name);
}

uint32_t ReadSize(const FontDialog& dialog) {
    char16_t text[16] = {};
    GetDlgItemTextW(dialog.window, IDC_FONT_SIZE, ToWide(text), 16);
    return ReadFontSize(text);
}

void ShowSizes(const FontDialog& dialog, const FontSizes& sizes, uint32_t carried) {
    for (uint32_t i = 0; i < sizes.count; ++i) {
        char16_t text[12];
        Utf16FromInt(text, 12, static_cast<int>(sizes.sizes[i]));
        Ask(dialog, IDC_FONT_SIZE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
    }
    if (sizes.selected >= 0) {
        Ask(dialog, IDC_FONT_SIZE, CB_SETCURSEL, static_cast<WPARAM>(sizes.selected));
    } else {
        SetDlgItemInt(dialog.window, IDC_FONT_SIZE, carried, FALSE);
    }
}

void FaceChanged(FontDialog* dialog) {
    const LRESULT index = Ask(*dialog, IDC_FONT_FACE, CB_GETCURSEL);
    if (index == dialog->faceHandled) return;
    dialog->faceHandled = index;
    char16_t face[kFaceUnits + 1];
    ReadFace(*dialog, face);
    const uint32_t carried = ReadSize(*dialog) & INT32_MAX;
    Ask(*dialog, IDC_FONT_SIZE, CB_RESETCONTENT);
    FontSizes sizes;
    StartFontSizes(&sizes, static_cast<int32_t>(carried));
    Enumerate(face, AddSizes, reinterpret_cast<LPARAM>(&sizes));
    ShowSizes(*dialog, sizes, carried);
}

// ---- The choice ----

FontChoice ReadChoice(const FontDialog& dialog) {
    FontChoice choice = {};
    ReadFace(dialog, choice.face);
    choice.size = ReadSize(dialog);
    for (const StyleBox& box : kStyleBoxes) {
        if (IsDlgButtonChecked(dialog.window, box.control) == BST_CHECKED) choice.styles |= box.style;
    }
    return choice;
}

void ShowChoice(const FontDialog& dialog, const FontChoice& choice) {
    const LRESULT face = Ask(dialog, IDC_FONT_FACE, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                             reinterpret_cast<LPARAM>(choice.face));
    if (face != CB_ERR) Ask(dialog, IDC_FONT_FACE, CB_SETCURSEL, static_cast<WPARAM>(face));
    SetDlgItemInt(dialog.window, IDC_FONT_SIZE, choice.size, FALSE);
    for (const StyleBox& box : kStyleBoxes) {
        const bool checked = (choice.styles & box.style) != 0;
        CheckDlgButton(dialog.window, box.control, checked ? BST_CHECKED : BST_UNCHECKED);
    }
}

void ShowPreview(FontDialog* dialog) {
    char16_t* description = WriteFontChoice(ReadChoice(*dialog));
    const FontHandle before = dialog->preview;
    const bool enough = Guarded([&] { dialog->preview = AcquireFont(description); });
    MemFree(nullptr, description);
    if (!enough) OutOfMemory(false);
    Ask(*dialog, IDC_FONT_PREVIEW, WM_SETFONT, reinterpret_cast<WPARAM>(ToHfont(dialog->preview)), TRUE);
    ReleaseFont(before);
}

void OnInit(FontDialog* dialog) {
    CreateMenuBar(FromHwnd(dialog->window), IDR_BAR_OK_CANCEL);
    shell::SHInitDialog(dialog->window, shell::kDoneButton | shell::kSizeFullScreen | shell::kInputPanelDown);
    SpreadOverContent(*dialog);
    EnlargeFields(*dialog);
    Ask(*dialog, IDC_FONT_SIZE, CB_LIMITTEXT, 9);
    Enumerate(nullptr, AddFace, reinterpret_cast<LPARAM>(dialog));
    ShowChoice(*dialog, ReadFontChoice(dialog->current));
    FaceChanged(dialog);
    ShowPreview(dialog);
}

void OnDialogCommand(FontDialog* dialog, int control) {
    if (control == IDOK) {
        dialog->result = WriteFontChoice(ReadChoice(*dialog));
        EndDialog(dialog->window, 1);
    } else if (control == IDCANCEL) {
        EndDialog(dialog->window, 0);
    } else {
        if (control == IDC_FONT_FACE) FaceChanged(dialog);
        // Later: the size field takes the text of a row only after it has told of the choice.
        PostMessageW(dialog->window, kShowPreview, 0, 0);
    }
}

intptr_t FontHandler(WindowHandle window, uint32_t message, uintptr_t first, intptr_t second) {
    const HWND dialog = ToHwnd(window);
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrW(dialog, GWLP_USERDATA, second);
        DialogOf(dialog).window = dialog;
        OnInit(&DialogOf(dialog));
        return TRUE;
    }
    if (GetWindowLongPtrW(dialog, GWLP_USERDATA) == 0) return FALSE;
    if (message == WM_COMMAND) OnDialogCommand(&DialogOf(dialog), LOWORD(first));
    if (message == WM_SIZE) SpreadOverContent(DialogOf(dialog));
    if (message == kShowPreview) ShowPreview(&DialogOf(dialog));
    return FALSE;
}

}  // namespace

char16_t* ChooseFontSpec(WindowHandle owner, const char16_t* current) {
    FontDialog dialog = {nullptr, current, true, -1, nullptr, nullptr};
    RunDialog(IDD_CHOOSE_FONT, owner, FontHandler, reinterpret_cast<intptr_t>(&dialog));
    ReleaseFont(dialog.preview);
    return dialog.result;
}

}  // namespace nira
