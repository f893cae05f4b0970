#include "engine/undo_journal.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"
#include "settings/options.h"

namespace nira {

namespace {

constexpr int32_t kFirstRoom = 16;

bool HoldsText(const UndoEntry& entry) {
    const UndoKind kind = KindOf(entry);
    return kind == UndoKind::kDeleteText || kind == UndoKind::kInsertText;
}

// What an entry has in the account beyond its own 20 bytes. Indentation data that has been turned into its
// repeat stays in the account when it is dropped, and its block stays with the heap until the document
// closes.
int64_t DataBytes(const UndoEntry& entry) {
    if (HoldsText(entry)) return int64_t{2} * entry.size;
    return KindOf(entry) == UndoKind::kRestoreIndent ? entry.size : 0;
}

void FreeData(UndoJournal* journal, UndoEntry* entry) {
    if (HoldsText(*entry)) MemFree(journal->heap, entry->text);
    if (KindOf(*entry) == UndoKind::kRestoreIndent) MemFree(journal->heap, entry->indent);
}

void DropRange(UndoJournal* journal, int32_t first, int32_t end) {
    for (int32_t i = first; i < end; ++i) {
        journal->bytes -= static_cast<int32_t>(kUndoEntryBytes + DataBytes(journal->entries[i]));
        FreeData(journal, &journal->entries[i]);
    }
}

// What appending an entry with `units` of text will do to the entries before it.
struct AppendPlan {
    int32_t dropOldest;
    uint32_t units;  // what of the text fits
};

AppendPlan PlanAppend(const UndoJournal* journal, uint32_t units) {
    const int64_t limit = OptionsUndoLimit();
    int64_t bytes = int64_t{journal->bytes} + kUndoEntryBytes;
    for (int32_t i = journal->position; i < journal->count; ++i) {
        bytes -= kUndoEntryBytes + DataBytes(journal->entries[i]);
    }
    AppendPlan plan = {0, units};
    while (plan.dropOldest < journal->position && bytes + int64_t{2} * units > limit) {
        bytes -= kUndoEntryBytes + DataBytes(journal->entries[plan.dropOldest]);
        ++plan.dropOldest;
    }
    const int64_t excess = int64_t{2} * units - limit + bytes;
    if (excess > 0) plan.units = static_cast<uint32_t>(std::max<int64_t>(0, int64_t{units} - excess / 2));
    return plan;
}

// Carries a plan out and returns the new entry, zeroed. UndoReserve has run, so that nothing here can fail.
UndoEntry* Append(UndoJournal* journal, const AppendPlan& plan) {
    DropRange(journal, journal->position, journal->count);
    DropRange(journal, 0, plan.dropOldest);
    journal->bytes += kUndoEntryBytes;
    journal->entries += plan.dropOldest;
    journal->position += 1 - plan.dropOldest;
    journal->count = journal->position;
    UndoEntry* entry = &journal->entries[journal->count - 1];
    *entry = UndoEntry{};
    return entry;
}

uint32_t PackKind(UndoKind kind, int16_t modified) {
    return static_cast<uint32_t>(kind) | ((modified & 1) != 0 ? kUndoModifiedBit : 0);
}

}  // namespace

UndoJournal* UndoCreate(HeapHandle heap) {
    auto* journal = MemAllocArray<UndoJournal>(heap, 1);
    journal->heap = heap;
    return journal;
}

void UndoReserve(UndoJournal* journal, int32_t count) {
    const auto front = static_cast<int32_t>(journal->entries - journal->block);
    const int32_t needed = std::max(journal->count, journal->position + count);
    if (front + needed <= journal->room) return;
    if (front > journal->room / 2 && needed <= journal->room) {
        std::memmove(journal->block, journal->entries,
                     static_cast<size_t>(journal->count) * sizeof(UndoEntry));
        journal->entries = journal->block;
        return;
    }
    const int32_t room = std::max({kFirstRoom, journal->room + journal->room / 2, front + needed});
    journal->block = MemReAllocArray(journal->heap, journal->block, static_cast<size_t>(room));
    journal->room = room;
    journal->entries = journal->block + front;
}

void UndoAddChar(UndoJournal* journal, bool inserted, int16_t modified, uint32_t line, uint32_t column,
                 char16_t character) {
    UndoReserve(journal, 1);
    UndoEntry* entry = Append(journal, PlanAppend(journal, 0));
    entry->kind = PackKind(inserted ? UndoKind::kDeleteChar : UndoKind::kInsertChar, modified);
    entry->line = line;
    entry->column = column;
    entry->character = character;
}

void UndoAddText(UndoJournal* journal, bool inserted, int16_t modified, uint32_t line, uint32_t column,
                 char16_t* text, uint32_t units) {
    UndoReserve(journal, 1);
    const AppendPlan plan = PlanAppend(journal, units);
    if (plan.units == 0) {
        MemFree(journal->heap, text);
        text = nullptr;
    } else if (plan.units < units) {
        text = static_cast<char16_t*>(MemShrink(journal->heap, text, plan.units * sizeof(char16_t)));
    }
    UndoEntry* entry = Append(journal, plan);
    entry->kind = PackKind(inserted ? UndoKind::kDeleteText : UndoKind::kInsertText, modified);
    entry->line = line;
    entry->column = column;
    entry->text = text;
    entry->size = plan.units;
    journal->bytes += static_cast<int32_t>(2 * plan.units);
}

void UndoAddIndent(UndoJournal* journal, int16_t modified, uint32_t line, uint8_t* data, uint32_t bytes) {
    UndoReserve(journal, 1);
    UndoEntry* entry = Append(journal, PlanAppend(journal, 0));
    entry->kind = PackKind(UndoKind::kRestoreIndent, modified);
    entry->line = line;
    entry->indent = data;
    entry->size = bytes;
    journal->bytes += static_cast<int32_t>(bytes);
}

UndoEntry* UndoPeek(UndoJournal* journal, bool undo) {
    if (undo) return journal->position > 0 ? &journal->entries[journal->position - 1] : nullptr;
    return journal->position < journal->count ? &journal->entries[journal->position] : nullptr;
}

void UndoStep(UndoJournal* journal, bool undo, UndoEntry* entry) {
    journal->position += undo ? -1 : 1;
    entry->kind ^= 1;  // every kind's opposite differs in the lowest bit
}

bool CanUndo(const UndoJournal* journal) { return journal->position != 0; }

bool CanRedo(const UndoJournal* journal) { return journal->position < journal->count; }

void UndoMarkAllModified(UndoJournal* journal) {
    for (int32_t i = 0; i < journal->count; ++i) journal->entries[i].kind |= kUndoModifiedBit;
}

}  // namespace nira
