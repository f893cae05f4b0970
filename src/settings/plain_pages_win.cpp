#include <iterator>

#include "app/services/memory.h"
#include "files/codecs.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "settings/plain_pages.h"
#include "shell/touch_controls.h"

namespace nira {

namespace {

template <const auto& controls>
void Widen(WindowHandle page, int width) {
    WidenControls(page, width, controls, static_cast<int>(std::size(controls)));
}

// ---- Editor ----

constexpr int kDropDownHeight = 15;  // dialog units; 24 pixels where nothing is enlarged

constexpr int kWideOfEditor[] = {IDC_EDITOR_ENCODING, IDC_EDITOR_SAFE_SAVE, IDC_EDITOR_BOM_SAVE,
                                 IDC_EDITOR_WRAP};

void FillEncodings(HWND list) {
    const CodecList& codecs = TheCodecList();
    for (uint32_t i = 0; i < codecs.count; ++i) {
        // An empty slot can only be the last one, so that positions in the list stay codec indexes.
        if (codecs.names[i] == nullptr) break;
        SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(codecs.names[i]));
    }
    // An encoding that is no longer there shows as the first one.
    SendMessageW(list, CB_SETCURSEL, DefaultCodec(), 0);
}

void FillEditorPage(WindowHandle page) {
    const Options& options = TheOptions();
    const HWND encodings = GetDlgItem(ToHwnd(page), IDC_EDITOR_ENCODING);
    shell::EnlargeComboBox(encodings, DialogHeight(page, kDropDownHeight));
    FillEncodings(encodings);
    SetControlNumber(page, IDC_EDITOR_UNDO_SIZE, options.undoSize);
    SetControlNumber(page, IDC_EDITOR_HISTORY_SIZE, options.histLen);
    CheckControl(page, IDC_EDITOR_SAFE_SAVE, options.safeSave != 0);
    CheckControl(page, IDC_EDITOR_BOM_SAVE, options.bomSave != 0);
    CheckControl(page, IDC_EDITOR_WRAP, options.wordWrapDefault != 0);
}

void ApplyEditor(WindowHandle page) {
    char16_t* encoding = ControlText(page, IDC_EDITOR_ENCODING);
    ApplyEditorPage({encoding, IsControlChecked(page, IDC_EDITOR_SAFE_SAVE),
                     IsControlChecked(page, IDC_EDITOR_BOM_SAVE), IsControlChecked(page, IDC_EDITOR_WRAP)});
    MemFree(nullptr, encoding);
}

// ---- Words ----

constexpr int kWideOfWords[] = {IDC_WORDS_SEPARATORS, IDC_WORDS_STOP_AT_END};

void FillWordsPage(WindowHandle page) {
    SetControlText(page, IDC_WORDS_SEPARATORS, OptionsWordSeparators());
    CheckControl(page, IDC_WORDS_STOP_AT_END, TheOptions().stopWordEnd != 0);
}

void ApplyWords(WindowHandle page) {
    char16_t* separators = ControlText(page, IDC_WORDS_SEPARATORS);
    ApplyWordsPage(separators, IsControlChecked(page, IDC_WORDS_STOP_AT_END));
    MemFree(nullptr, separators);
}

// ---- Indent ----

constexpr int kWideOfIndent[] = {IDC_INDENT_KEEP, IDC_INDENT_PASTE_GROUP, IDC_INDENT_BASE_GROUP};

void FillIndentPage(WindowHandle page) {
    const Options& options = TheOptions();
    SetControlNumber(page, IDC_INDENT_TAB_SIZE, options.sheetCopy->tabSize);
    CheckControl(page, IDC_INDENT_KEEP, options.keepIndent != 0);
    CheckControl(page, options.pasteMode != 0 ? IDC_INDENT_PASTE_SMART : IDC_INDENT_PASTE_NORMAL, true);
    CheckControl(page, options.smartBase != 0 ? IDC_INDENT_BASE_MINIMUM : IDC_INDENT_BASE_FIRST, true);
}

void ApplyIndent(WindowHandle page) {
    ApplyIndentPage(IsControlChecked(page, IDC_INDENT_KEEP), !IsControlChecked(page, IDC_INDENT_PASTE_NORMAL),
                    !IsControlChecked(page, IDC_INDENT_BASE_FIRST));
}

}  // namespace

const PropertyPage kEditorPage = {
    IDD_OPTIONS_EDITOR, FillEditorPage, ApplyEditor, Widen<kWideOfEditor>, EditorPageNumbers, nullptr,
};

const PropertyPage kWordsPage = {
    IDD_OPTIONS_WORDS, FillWordsPage, ApplyWords, Widen<kWideOfWords>, nullptr, nullptr,
};

const PropertyPage kIndentPage = {
    IDD_OPTIONS_INDENT, FillIndentPage, ApplyIndent, Widen<kWideOfIndent>, IndentPageNumbers, nullptr,
};

}  // namespace nira
