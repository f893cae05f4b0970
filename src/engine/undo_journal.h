// The undo journal of one document: edits in the order they were made, and how far they are undone.
//
// Each entry holds the operation that takes an edit back; applying it turns it into the operation that brings
// the edit again. The journal accounts 20 bytes an entry, 2 a text unit and the bytes of indentation data,
// and forgets its oldest entries when the account would pass the limit of the Options. Memory belongs to the
// document's heap.
#pragma once

#include <cstdint>

#include "platform/handles.h"

namespace nira {

// What applying an entry does.
enum class UndoKind : uint32_t {
    kDeleteChar = 0,
    kInsertChar = 1,
    kDeleteText = 2,  // `size` characters, each line end counting 1
    kInsertText = 3,
    kRestoreIndent = 4,
    kRepeatIndent = 5,
};

constexpr uint32_t kUndoKindMask = 7;
constexpr uint32_t kUndoModifiedBit = 8;
constexpr int32_t kUndoEntryBytes = 20;  // what the account takes for an entry

struct UndoEntry {
    uint32_t kind;    // UndoKind; kUndoModifiedBit = the modified flag to restore when the entry is applied
    uint32_t line;    // where the entry applies
    uint32_t column;  // 0 for indentation
    union {
        char16_t character;  // kinds 0 and 1
        char16_t* text;      // kinds 2 and 3: `size` units with LF alone between lines
        uint8_t* indent;     // kinds 4 and 5: `size` bytes
    };
    uint32_t size;
};

inline UndoKind KindOf(const UndoEntry& entry) { return static_cast<UndoKind>(entry.kind & kUndoKindMask); }

struct UndoJournal {
    UndoEntry* entries;  // `count` entries, oldest first
    int32_t count;
    int32_t position;  // entries before it can be undone, from it on redone
    HeapHandle heap;
    int32_t bytes;  // the account
    UndoEntry*
        block;  // the allocation `entries` points into: it has room behind, and, once the oldest entries have
    int32_t
        room;  // been forgotten, in front, so that appending costs the same to a full journal as to an empty
};             // one; `room` counts its entries

// An empty journal. May run out of memory.
UndoJournal* UndoCreate(HeapHandle heap);

// Makes room so that appending the next `count` entries cannot fail. May run out of memory.
void UndoReserve(UndoJournal* journal, int32_t count);

// Append an entry for an edit that was made, after dropping what could be redone. `modified` is the
// document's flag before the edit. They run out of memory before they change anything.
void UndoAddChar(UndoJournal* journal, bool inserted, int16_t modified, uint32_t line, uint32_t column,
                 char16_t character);

// Takes ownership of `text` (a block of the journal's heap, null when `units` is 0). A text that does not fit
// the whole limit is shortened to what fits; the rest of it cannot be brought back. On running out of memory
// `text` still belongs to the caller.
void UndoAddText(UndoJournal* journal, bool inserted, int16_t modified, uint32_t line, uint32_t column,
                 char16_t* text, uint32_t units);

// Takes ownership of `data`, `bytes` long.
void UndoAddIndent(UndoJournal* journal, int16_t modified, uint32_t line, uint8_t* data, uint32_t bytes);

// The entry that the next undo or redo applies; null when there is none. Valid until the next append.
UndoEntry* UndoPeek(UndoJournal* journal, bool undo);

// The entry has been applied: moves the position and turns the entry into its opposite.
void UndoStep(UndoJournal* journal, bool undo, UndoEntry* entry);

bool CanUndo(const UndoJournal* journal);
bool CanRedo(const UndoJournal* journal);

// The document has been saved: every entry leads to a document that differs from its file.
void UndoMarkAllModified(UndoJournal* journal);

}  // namespace nira
