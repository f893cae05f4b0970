// The user's settings: one record for the whole program.
//
// Read from the registry once at start-up (settings/options_store.h), changed only by the Options sheet, read
// everywhere through the accessors below. Values are used exactly as they are stored, without checks: every
// reader copes with a tab size of 0 or of four thousand million.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// How text looks: a document holds the address of two of these, one for plain and one for selected text.
struct TextStyle {
    ColorRef fore;
    ColorRef back;
    FontHandle font;  // owned by the font cache
};

// A colour pair as the Options sheet edits it.
struct ColorPair {
    ColorRef fore;
    ColorRef back;
};

// Whose colours the sheet shows: positions in SheetCopy::colors and in the list that people choose from.
constexpr uint32_t kColorsOfText = 0;
constexpr uint32_t kColorsOfSelection = 1;
constexpr uint32_t kColorSets = 2;

// What the Options sheet has been told but must not yet take effect. It exists only while the sheet is open.
struct SheetCopy {
    char16_t* font;  // a font description; local heap
    ColorPair colors[kColorSets];
    uint32_t tabSize;
    uint32_t undoSize;
    uint32_t histLen;
    WindowHandle sheetWindow;  // null until the sheet has been made
    uint32_t colorSet;         // which pair the page of colours shows
};

struct Options {
    char16_t* font;            // the font description of view/fonts.h; local heap
    char16_t* wordSeparators;  // what ends a word besides tab and space; local heap
    TextStyle text;
    TextStyle selection;
    uint32_t safeSave;          // keep the old file aside while the new one is written
    uint32_t undoSize;          // kilobytes of one document's undo journal
    uint32_t bomSave;           // write a byte-order mark in Unicode encodings
    uint32_t stopWordEnd;       // word moves stop at the end of a word
    uint32_t tabSize;           // columns
    uint32_t keepIndent;        // a new line takes the indentation of the line it leaves
    uint32_t pasteMode;         // 0 normal, 1 smart
    uint32_t smartBase;         // 0 first line, 1 minimum
    uint32_t histLen;           // entries of a search history
    uint32_t wordWrapDefault;   // new documents wrap at the window's width
    char16_t* defaultEncoding;  // name in the codec list; local heap
    SheetCopy* sheetCopy;       // null unless the Options sheet is open; local heap
};

// The live record.
Options& TheOptions();

TextStyle* OptionsTextStyle();
TextStyle* OptionsSelectionStyle();

// The tab size as measuring takes it: columns as a signed number, not above INT32_MAX. A stored 0xFFFFFFFF
// gives -1, which draws tabs as the font's own glyph.
int32_t OptionsTabSize();

// The limit of an undo journal in bytes: kilobytes times 1024, not above INT32_MAX.
int32_t OptionsUndoLimit();

const char16_t* OptionsWordSeparators();

}  // namespace nira
