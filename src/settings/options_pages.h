// What the pages of the Options sheet decide: which numbers they accept, how a font is described, and what
// each page changes when the sheet is confirmed.
//
// While the sheet is open, Options::sheetCopy holds what must not take effect before the sheet is confirmed.
// The pages' windows (settings/options_sheet.h) only move texts and check marks between their controls and
// the operations here. Pages that were never shown apply nothing. Running out of memory shows its box and
// leaves the field concerned as it was.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/handles.h"
#include "settings/options.h"

namespace nira {

// Makes Options::sheetCopy from the Options; false when there is one already (the sheet is open) or when
// memory ran out.
bool MakeSheetCopy();

// Frees it. Nothing happens when there is none.
void FreeSheetCopy();

// ---- Numbers ----

// A whole number as people type it: white space in front and one sign are allowed, and whatever follows the
// digits is ignored. Without digits 0; beyond 32 bits the nearest number that there is.
int32_t ReadNumber(const char16_t* text);

// A number that a page asks for: 1 up to `most`, and the message when it is something else.
struct NumberField {
    int control;  // the edit control it is typed into
    int32_t most;
    uint32_t message;
    uint32_t SheetCopy::*field;
};

// The fields of a page, in the order in which they are looked at.
struct NumberFields {
    const NumberField* fields;
    size_t count;
};
NumberFields EditorPageNumbers();
NumberFields IndentPageNumbers();

// Stores what was typed in the sheet's copy. When it is out of range the person is told, in a box owned by
// `page`, nothing is stored and the result is false.
bool TakeNumber(WindowHandle page, const NumberField& field, const char16_t* text);

// ---- Format ----

// The units, terminator included, that hold the text below uncut.
size_t FontTextRoom(const char16_t* description);

// "Face, 14 pt", cut to `room` units including the terminator. Returns units without it.
size_t FontText(char16_t* target, size_t room, const char16_t* description);

// The copy's font becomes `description` (local heap), which the copy owns from now on. Null is ignored.
void TakeFont(char16_t* description);

// Chooses the pair that the colour buttons show; false when it was shown already or there is no such pair.
bool ShowColorSet(uint32_t set);

// The foreground or background colour of the pair that is shown. Writable.
ColorRef* ShownColor(bool fore);

// Font and colours of the copy become those of the Options. Every document draws by them from now on and must
// be laid out again.
void ApplyFormatPage();

// ---- The other pages: what their controls say ----

// `encoding` is copied.
struct EditorPageChoice {
    const char16_t* encoding;
    bool safeSave;
    bool bomSave;
    bool wordWrap;
};
void ApplyEditorPage(const EditorPageChoice& choice);

void ApplyWordsPage(const char16_t* separators, bool stopAtEnd);

void ApplyIndentPage(bool keepIndent, bool smartPaste, bool fromMinimum);

}  // namespace nira
