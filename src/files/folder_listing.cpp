#include "files/folder_listing.h"

#include <algorithm>
#include <iterator>

#include "app/services/memory.h"
#include "base/utf16.h"
#include "platform/folders.h"
#include "platform/messages.h"

namespace nira {

namespace {

constexpr uint32_t kGrowth = 10;
constexpr uint32_t kKilobyte = 1024;
constexpr uint32_t kMegabyte = 1048576;
constexpr uint32_t kDriveCount = 26;

bool IsSelfOrParent(const char16_t* name) {
    return Utf16Compare(name, u".") == 0 || Utf16Compare(name, u"..") == 0;
}

// Makes the reported capacity ten more, and the block half as large again when it is full.
void Grow(FolderListing* listing) {
    const uint32_t capacity = listing->capacity + kGrowth;
    const size_t held = MemSize(nullptr, listing->entries) / sizeof(FolderEntry);
    if (capacity > held) {
        const size_t wanted = std::max<size_t>(capacity, held + held / 2);
        listing->entries = MemReAllocArray(nullptr, listing->entries, wanted);
    }
    listing->capacity = capacity;
}

void AddEntry(FolderListing* listing, const FolderItem& item) {
    if (listing->count == listing->capacity) Grow(listing);
    FolderEntry& entry = listing->entries[listing->count];
    entry.name = MemStrDup(nullptr, item.name);
    entry.modified = item.modified;
    entry.size = item.size;
    entry.kind = item.isFolder ? kEntryFolder : kEntryFile;
    ++listing->count;
}

// True when the enumeration came to its end, and not to an error.
bool AddAll(FolderListing* listing, FolderSearch search) {
    FolderItem item = {};
    while (FolderSearchNext(search, &item)) {
        if (!IsSelfOrParent(item.name)) AddEntry(listing, item);
    }
    return LastSystemError() == kErrorNoMoreFiles;
}

void AddDrives(FolderListing* listing) {
    const uint32_t letters = DriveLetters();
    for (uint32_t i = 0; i < kDriveCount; ++i) {
        const char16_t name[] = {static_cast<char16_t>(u'A' + i), u':', 0};
        const bool taken = FindEntry(*listing, name) >= 0;
        if ((letters >> i & 1) != 0 && !taken) AddEntry(listing, {name, 0, 0, true});
    }
}

int CompareEntryNames(const FolderEntry& left, const FolderEntry& right) {
    const int order = CompareNames(left.name, Utf16Length(left.name), right.name, Utf16Length(right.name));
    // Some disks hold names that differ in nothing but case: these too keep one order.
    return order != 0 ? order : Utf16Compare(left.name, right.name);
}

bool ComesFirstByName(const FolderEntry& left, const FolderEntry& right) {
    if (left.kind != right.kind) return left.kind < right.kind;
    return CompareEntryNames(left, right) < 0;
}

bool ComesFirstBySize(const FolderEntry& left, const FolderEntry& right) {
    const bool files = left.kind == kEntryFile && right.kind == kEntryFile;
    return files && left.size != right.size ? left.size < right.size : ComesFirstByName(left, right);
}

bool BeginsWith(const char16_t* name, const char16_t* text, size_t units) {
    return Utf16Length(name) >= units && CompareNames(name, units, text, units) == 0;
}

// `tenths` / 10 and the letter of the unit behind it.
size_t FormatTenths(char16_t* target, size_t room, uint32_t bytes, uint32_t unit, char16_t letter) {
    const uint64_t scaled = uint64_t{bytes} * 10;
    uint64_t tenths = scaled / unit;
    const uint64_t rest = scaled % unit * 2;
    // Exactly half goes to the even digit, as printing a floating-point number does.
    if (rest > unit || (rest == unit && tenths % 2 == 1)) ++tenths;
    const size_t whole = Utf16FromInt(target, room, static_cast<int>(tenths / 10));
    const char16_t tail[] = {u'.', static_cast<char16_t>(u'0' + tenths % 10), letter, 0};
    return whole + Utf16Copy(target + whole, room - whole, tail);
}

}  // namespace

ListResult ListFolder(FolderListing* listing, const char16_t* folder) {
    FolderSearch search = FolderSearchOpen(folder);
    if (search == nullptr) return ListResult::kFailed;
    FolderListing found = {};
    bool complete = false;
    const bool enough = Guarded([&] {
        complete = AddAll(&found, search);
        if (complete && *folder == 0) AddDrives(&found);
    });
    FolderSearchClose(search);
    if (!enough || !complete) {
        const ListResult result = enough ? ListResult::kFailed : ListResult::kNoMemory;
        FreeListing(&found);
        return result;
    }
    FreeListing(listing);
    *listing = found;
    SortByName(listing);
    return ListResult::kListed;
}

void FreeListing(FolderListing* listing) {
    for (uint32_t i = 0; i < listing->count; ++i) MemFree(nullptr, listing->entries[i].name);
    MemFree(nullptr, listing->entries);
    *listing = {};
}

void SortByName(FolderListing* listing) {
    std::sort(listing->entries, listing->entries + listing->count, ComesFirstByName);
}

void SortBySize(FolderListing* listing) {
    std::sort(listing->entries, listing->entries + listing->count, ComesFirstBySize);
}

int FindEntry(const FolderListing& listing, const char16_t* name) {
    const size_t units = Utf16Length(name);
    for (uint32_t i = 0; i < listing.count; ++i) {
        const char16_t* other = listing.entries[i].name;
        if (CompareNames(other, Utf16Length(other), name, units) == 0) return static_cast<int>(i);
    }
    return -1;
}

int FindEntryByStart(const FolderListing& listing, const char16_t* text, int start, bool wraps) {
    const size_t units = Utf16Length(text);
    const uint32_t first = start > 0 ? static_cast<uint32_t>(start) : 0;
    for (uint32_t i = first; i < listing.count; ++i) {
        if (BeginsWith(listing.entries[i].name, text, units)) return static_cast<int>(i);
    }
    for (uint32_t i = 0; wraps && i < std::min(first, listing.count); ++i) {
        if (BeginsWith(listing.entries[i].name, text, units)) return static_cast<int>(i);
    }
    return -1;
}

size_t FormatSize(char16_t* target, size_t room, uint32_t bytes) {
    if (bytes >= kMegabyte) return FormatTenths(target, room, bytes, kMegabyte, u'M');
    if (bytes >= kKilobyte) return FormatTenths(target, room, bytes, kKilobyte, u'K');
    const size_t digits = Utf16FromInt(target, room, static_cast<int>(bytes));
    return digits + Utf16Copy(target + digits, room - digits, u"B");
}

size_t LongestNames(const FolderListing& listing, uint32_t* indexes, size_t room) {
    size_t lengths[64] = {};
    room = std::min(room, std::size(lengths));
    size_t count = 0;
    for (uint32_t i = 0; i < listing.count; ++i) {
        const size_t length = Utf16Length(listing.entries[i].name);
        if (count == room && (room == 0 || length <= lengths[count - 1])) continue;
        size_t at = count < room ? count++ : count - 1;
        for (; at > 0 && lengths[at - 1] < length; --at) {
            lengths[at] = lengths[at - 1];
            indexes[at] = indexes[at - 1];
        }
        lengths[at] = length;
        indexes[at] = i;
    }
    return count;
}

}  // namespace nira
