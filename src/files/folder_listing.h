// What the file dialog shows of one folder: its entries, their order and their texts.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nira {

constexpr uint8_t kEntryFolder = 0;  // also the image of such an entry
constexpr uint8_t kEntryFile = 1;

struct FolderEntry {
    char16_t* name;     // owned, a block of the local heap
    uint64_t modified;  // last write in local time, in steps of 100 ns since 1601; 0 for a drive
    uint32_t size;      // the low 32 bits of the bytes
    uint8_t kind;       // kEntryFolder or kEntryFile
};

// `capacity` is 10 more whenever `count` has reached it. The block may hold more than that, so that ten
// thousand entries are not copied a thousand times.
struct FolderListing {
    FolderEntry* entries;
    uint32_t count;
    uint32_t capacity;
};

enum class ListResult {
    kListed,
    kFailed,    // for the reason in the last error
    kNoMemory,  // the person knows already
};

// Replaces the listing by what is in `folder`, sorted by name. Hidden entries are listed, the folder itself
// and its parent are not; the root folder (empty text) shows the drives besides. When anything goes wrong
// before the last entry was seen, the old listing stays.
ListResult ListFolder(FolderListing* listing, const char16_t* folder);

// Frees everything and leaves an empty listing.
void FreeListing(FolderListing* listing);

// Folders before files, then by name without regard to case.
void SortByName(FolderListing* listing);

// Folders before files; files by size, the smallest first; what is equal in that by name.
void SortBySize(FolderListing* listing);

// The entry of this name, without regard to case; -1 when there is none.
int FindEntry(const FolderListing& listing, const char16_t* name);

// The first entry from `start` on, and from the top after the last one when `wraps`, whose name begins with
// `text` without regard to case; -1 when there is none.
int FindEntryByStart(const FolderListing& listing, const char16_t* text, int start, bool wraps);

// Writes a size as people read it: "1023B", "1.0K", "1.5M". Returns the units written; `room` 16 is always
// enough.
size_t FormatSize(char16_t* target, size_t room, uint32_t bytes);

// The longest texts of a listing, by units, for columns that fit them: fills `indexes` with up to `room`
// entries whose names are the longest, and returns how many.
size_t LongestNames(const FolderListing& listing, uint32_t* indexes, size_t room);

}  // namespace nira
