// The record of one open document: its lines, caret, selection, view, bookmarks, undo journal and file.
//
// A position is a line (from 0) and a column in UTF-16 units, which may equal the line's length. Line ends
// are not stored: the break between line i and i+1 is implicit and counts as one character. A display row is
// one line of the screen; a logical line has ExtraRows + 1 of them.
#pragma once

#include <cstdint>

#include "engine/line_index.h"
#include "engine/line_record.h"
#include "engine/undo_journal.h"
#include "platform/handles.h"
#include "settings/options.h"

namespace nira {

struct RowPos {
    int32_t line;    // logical line
    int32_t subRow;  // row within that line
    int32_t row;     // display row counted from the top of the document
};

// Values of Editor::lineEnd. The menu items of the line-end menu have the same order.
constexpr uint32_t kLineEndLf = 0;
constexpr uint32_t kLineEndCr = 1;
constexpr uint32_t kLineEndCrLf = 2;

// Bits of Editor::flags.
constexpr uint32_t kFlagNoUndo = 1;          // insertions and deletions are not recorded
constexpr uint32_t kFlagDetectLineEnd = 2;   // the next inserted break decides lineEnd
constexpr uint32_t kFlagSmartPaste = 4;      // the running paste is a smart one
constexpr uint32_t kFlagCaretElsewhere = 8;  // the system caret is not where caretX and caretY say
constexpr uint32_t kFlagPaintDeferred = 16;  // repaints only set the next bit
constexpr uint32_t kFlagRepaintPending = 32;

constexpr int kBookmarks = 10;
constexpr int32_t kNoSelection = -1;

struct Editor {
    LineRecord* lines;
    uint32_t lineCount;    // at least 1
    int32_t lineCapacity;  // records reported as allocated; the block behind `lines` may hold more, all zero
    HeapHandle heap;       // lines, texts, breaks, journal, index
    RowPos top;            // first display row shown
    RowPos caret;
    RowPos anchor;      // fixed end of the selection; meaningful while anchorColumn is not -1
    int32_t bottomRow;  // last display row that fits in the window, at most the document's last
    int32_t caretColumn;
    int32_t anchorColumn;  // -1: no selection
    uint16_t layoutStale;  // font or tab size changed: the next activation re-applies the Options
    int16_t modified;      // 1: differs from its file; change it by SetModified
    int16_t lineHeight;    // pixels of a display row, at least 1
    int16_t wordWrap;
    uint16_t selecting;    // a mouse selection is being dragged
    uint16_t markMode;     // every move extends the selection
    uint16_t saveFailed;   // the last save failed: closing asks although `modified` is clear
    int32_t scrollX;       // pixels
    int32_t scrollY;       // pixels, top.row * lineHeight
    int32_t caretX;        // pixels in the document
    int32_t caretY;        // caret.row * lineHeight
    int32_t widestLine;    // largest width of all lines
    int32_t wrapRows;      // sum of all extra rows
    int32_t hiddenRows;    // always 0
    TextStyle* textStyle;  // the Options' own records
    TextStyle* selStyle;
    char16_t* path;  // full file name, local heap; null for an untitled document
    union {
        const char16_t* displayName;  // into `path`, behind its last backslash (all of it when there is none)
        uintptr_t untitledNumber;     // while path is null
    };
    uint32_t codecId;  // position in the codec list
    uint32_t lineEnd;  // kLineEnd...
    uint32_t flags;
    UndoJournal* undo;
    int32_t bookmarks[kBookmarks];  // line + 1; 0 = not set
    LineIndex* index;               // sums over the lines; see engine/line_index.h
    int32_t layoutLimit;   // the row width limit that lines were last broken with; 0 before the first
    uint16_t layoutMixed;  // 1 after a resize: lines may be broken for several limits, so that an edited
                           // line is broken anew from its start
};

// News that goes up to the application. Start-up fills it in; an empty entry is not called.
struct EditorEvents {
    void (*titleChanged)();             // the modified flag of a document has changed
    void (*undoStateChanged)(Editor*);  // what can be undone or redone may have changed
    void (*selectionChanged)(Editor*);  // whether there is a selection may have changed
    void (*repaint)(Editor*);           // the document must be painted now
};
EditorEvents& TheEditorEvents();

void NotifyUndoState(Editor* editor);
void NotifySelection(Editor* editor);
// Paints now, or notes a pending repaint while painting is deferred.
void NotifyRepaint(Editor* editor);

// Total display rows, and the display row at which a line starts.
int32_t EditorRows(const Editor* editor);
int32_t EditorRowOfLine(Editor* editor, uint32_t line);

// The place of display row `row`, clamped to the document.
RowPos EditorRowPosition(Editor* editor, int32_t row);

// The place of a column: its line, the row within it, the display row. The line must exist.
RowPos EditorPositionOf(Editor* editor, uint32_t line, uint32_t column);

// Stores the flag; when the value changed the application rebuilds the main window's title.
void SetModified(Editor* editor, int16_t modified);

// Takes ownership of `path` (local heap) as the document's file name; the former one is not freed.
void SetEditorPath(Editor* editor, char16_t* path);

}  // namespace nira
