#include "settings/options_pages.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "base/utf16.h"
#include "platform/messages.h"
#include "resources/resource.h"
#include "view/fonts.h"

namespace nira {

namespace {

constexpr NumberField kEditorNumbers[] = {
    {IDC_EDITOR_UNDO_SIZE, 256, IDS_UNDO_SIZE_RANGE, &SheetCopy::undoSize},
    {IDC_EDITOR_HISTORY_SIZE, 100, IDS_HISTORY_SIZE_RANGE, &SheetCopy::histLen},
};

constexpr NumberField kIndentNumbers[] = {
    {IDC_INDENT_TAB_SIZE, 64, IDS_TAB_SIZE_RANGE, &SheetCopy::tabSize},
};

constexpr size_t kFontSizeUnits = 12;  // ", ", three digits, " pt", terminator

bool IsWhiteSpace(char16_t unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r'); }

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

SheetCopy* Copy() { return TheOptions().sheetCopy; }

// The text that *field owns becomes a copy of `text`. Without memory for it the old one stays.
bool ReplaceText(char16_t** field, const char16_t* text) {
    char16_t* fresh = nullptr;
    if (!Guarded([&] { fresh = MemStrDup(nullptr, text); })) return false;
    MemFree(nullptr, *field);
    *field = fresh;
    return true;
}

void ApplyColors(const SheetCopy& copy, Options* options) {
    options->text.fore = copy.colors[kColorsOfText].fore;
    options->text.back = copy.colors[kColorsOfText].back;
    options->selection.fore = copy.colors[kColorsOfSelection].fore;
    options->selection.back = copy.colors[kColorsOfSelection].back;
}

// The new font is acquired before the old one is released: so the same font is not made anew, and running out
// of memory leaves description and font as they were.
void ApplyFont(const SheetCopy& copy, Options* options) {
    FontHandle font = nullptr;
    if (!Guarded([&] { font = AcquireFont(copy.font); })) return;
    if (!ReplaceText(&options->font, copy.font)) {
        ReleaseFont(font);
        return;
    }
    ReleaseFont(options->text.font);
    options->text.font = font;
    options->selection.font = font;
}

}  // namespace

bool MakeSheetCopy() {
    Options& options = TheOptions();
    if (options.sheetCopy != nullptr) return false;
    char16_t* font = nullptr;
    SheetCopy* copy = nullptr;
    const bool made = Guarded([&] {
        font = MemStrDup(nullptr, options.font);
        copy = MemAllocArray<SheetCopy>(nullptr, 1);
    });
    if (!made) {
        MemFree(nullptr, font);
        return false;
    }
    copy->font = font;
    copy->colors[kColorsOfText] = {options.text.fore, options.text.back};
    copy->colors[kColorsOfSelection] = {options.selection.fore, options.selection.back};
    copy->tabSize = options.tabSize;
    copy->undoSize = options.undoSize;
    copy->histLen = options.histLen;
    options.sheetCopy = copy;
    return true;
}

void FreeSheetCopy() {
    SheetCopy* copy = Copy();
    if (copy == nullptr) return;
    TheOptions().sheetCopy = nullptr;
    MemFree(nullptr, copy->font);
    MemFree(nullptr, copy);
}

int32_t ReadNumber(const char16_t* text) {
    while (IsWhiteSpace(*text)) ++text;
    const bool negative = *text == u'-';
    if (*text == u'-' || *text == u'+') ++text;
    constexpr int64_t kEnough = int64_t{std::numeric_limits<int32_t>::max()} + 1;
    int64_t value = 0;
    for (; IsDigit(*text); ++text) value = std::min(value * 10 + (*text - u'0'), kEnough);
    return static_cast<int32_t>(negative ? -value : std::min(value, kEnough - 1));
}

NumberFields EditorPageNumbers() { return {kEditorNumbers, std::size(kEditorNumbers)}; }

NumberFields IndentPageNumbers() { return {kIndentNumbers, std::size(kIndentNumbers)}; }

bool TakeNumber(WindowHandle page, const NumberField& field, const char16_t* text) {
    const int32_t value = ReadNumber(text);
    if (value < 1 || value > field.most) {
        ShowMessage(page, LoadResString(field.message), LoadResString(IDS_ERROR), MessageKind::kError);
        return false;
    }
    Copy()->*field.field = static_cast<uint32_t>(value);
    return true;
}

size_t FontTextRoom(const char16_t* description) { return Utf16Length(description) + kFontSizeUnits; }

size_t FontText(char16_t* target, size_t room, const char16_t* description) {
    const size_t length = Utf16Length(description);
    const size_t face = length > 0 ? length - 1 : 0;
    const int size = length > 0 ? description[face] & kFontSizeMask : 0;
    char16_t tail[kFontSizeUnits] = u", ";
    const size_t digits = Utf16FromInt(tail + 2, kFontSizeUnits - 2, size);
    Utf16Copy(tail + 2 + digits, kFontSizeUnits - 2 - digits, u" pt");
    // A face that is too long loses its end rather than the size.
    const size_t tailUnits = Utf16Length(tail);
    const size_t kept = room > tailUnits ? std::min(face, room - tailUnits - 1) : 0;
    std::copy_n(description, kept, target);
    return kept + Utf16Copy(target + kept, room - kept, tail);
}

void TakeFont(char16_t* description) {
    if (description == nullptr) return;
    MemFree(nullptr, Copy()->font);
    Copy()->font = description;
}

bool ShowColorSet(uint32_t set) {
    if (set >= kColorSets || set == Copy()->colorSet) return false;
    Copy()->colorSet = set;
    return true;
}

ColorRef* ShownColor(bool fore) {
    ColorPair& pair = Copy()->colors[Copy()->colorSet];
    return fore ? &pair.fore : &pair.back;
}

void ApplyFormatPage() {
    ApplyColors(*Copy(), &TheOptions());
    ApplyFont(*Copy(), &TheOptions());
}

void ApplyEditorPage(const EditorPageChoice& choice) {
    Options& options = TheOptions();
    ReplaceText(&options.defaultEncoding, choice.encoding);
    options.undoSize = Copy()->undoSize;
    options.histLen = Copy()->histLen;
    options.safeSave = choice.safeSave ? 1 : 0;
    options.bomSave = choice.bomSave ? 1 : 0;
    options.wordWrapDefault = choice.wordWrap ? 1 : 0;
}

void ApplyWordsPage(const char16_t* separators, bool stopAtEnd) {
    ReplaceText(&TheOptions().wordSeparators, separators);
    TheOptions().stopWordEnd = stopAtEnd ? 1 : 0;
}

void ApplyIndentPage(bool keepIndent, bool smartPaste, bool fromMinimum) {
    Options& options = TheOptions();
    options.tabSize = Copy()->tabSize;
    options.keepIndent = keepIndent ? 1 : 0;
    options.pasteMode = smartPaste ? 1 : 0;
    options.smartBase = fromMinimum ? 1 : 0;
}

}  // namespace nira
