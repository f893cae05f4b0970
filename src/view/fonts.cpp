#include "view/fonts.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "app/services/memory.h"
#include "base/utf16.h"
#include "view/advance_table.h"

namespace nira {

namespace {

constexpr uint32_t kCacheStep = 10;
constexpr int32_t kPointsPerInch = 72;
constexpr int32_t kNormalWeight = 400;
constexpr int32_t kBoldWeight = 700;

FontCache* cache = nullptr;
int32_t fontScale = -1;  // pixels of a point, negative as font heights are

// The first index whose key is not below the description.
uint32_t LowerBound(const char16_t* description) {
    uint32_t low = 0;
    uint32_t high = cache->count;
    while (low < high) {
        const uint32_t middle = (low + high) / 2;
        if (Utf16Compare(cache->entries[middle].key, description) < 0) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

AdvanceTable* NewAdvances() {
    auto* advances = MemAllocArray<AdvanceTable>(nullptr, 1);
    std::fill(std::begin(advances->widths), std::end(advances->widths), kAdvanceUnknown);
    return advances;
}

// Everything that can run out of memory comes before the array changes.
FontHandle InsertFont(const char16_t* description) {
    if (cache->count == cache->capacity) {
        cache->entries = MemReAllocArray(nullptr, cache->entries, size_t{cache->capacity} + kCacheStep);
        cache->capacity += kCacheStep;
    }
    FontCacheEntry entry = {};
    entry.references = 1;
    entry.key = MemStrDup(nullptr, description);
    if (!Guarded([&] { entry.advances = NewAdvances(); })) {
        MemFree(nullptr, entry.key);
        OutOfMemory(false);
    }
    entry.font = FontCreate(DescribeFont(description));
    const uint32_t position = LowerBound(description);
    FontCacheEntry* place = cache->entries + position;
    std::memmove(place + 1, place, (cache->count - position) * sizeof(FontCacheEntry));
    *place = entry;
    ++cache->count;
    return entry.font;
}

void DeleteEntry(FontCacheEntry* entry) {
    MemFree(nullptr, entry->key);
    MemFree(nullptr, entry->advances);
    if (entry->font != nullptr) FontDelete(entry->font);
}

void RemoveFont(FontCacheEntry* entry) {
    DeleteEntry(entry);
    const auto after = static_cast<size_t>(cache->entries + cache->count - (entry + 1));
    std::memmove(entry, entry + 1, after * sizeof(FontCacheEntry));
    --cache->count;
    if (cache->count + kCacheStep < cache->capacity) {
        cache->capacity -= kCacheStep;
        cache->entries = static_cast<FontCacheEntry*>(
            MemShrink(nullptr, cache->entries, cache->capacity * sizeof(FontCacheEntry)));
    }
}

}  // namespace

int InitFonts(WindowHandle window) {
    if (cache == nullptr) {
        if (!Guarded([] { cache = MemAllocArray<FontCache>(nullptr, 1); })) return 0;
        cache->elementSize = sizeof(FontCacheEntry);
    }
    fontScale = -(ScreenDotsPerInch(window) / kPointsPerInch);
    return 1;
}

void ShutdownFonts() {
    if (cache == nullptr) return;
    for (uint32_t i = 0; i < cache->count; ++i) DeleteEntry(&cache->entries[i]);
    MemFree(nullptr, cache->entries);
    MemFree(nullptr, cache);
    cache = nullptr;
}

int32_t FontScale() { return -fontScale; }

FontHandle AcquireFont(const char16_t* description) {
    if (cache == nullptr) return nullptr;
    FontCacheEntry* entry = FindFontEntry(description);
    if (entry == nullptr) return InsertFont(description);
    ++entry->references;
    return entry->font;
}

void ReleaseFont(FontHandle font) {
    FontCacheEntry* entry = FindFontEntryByHandle(font);
    if (entry == nullptr) return;
    if (entry->references > 1) {
        --entry->references;
    } else {
        RemoveFont(entry);
    }
}

int32_t FindFontIndex(const char16_t* description) {
    if (cache == nullptr) return -1;
    const uint32_t index = LowerBound(description);
    const bool found = index < cache->count && Utf16Compare(cache->entries[index].key, description) == 0;
    return found ? static_cast<int32_t>(index) : -1;
}

FontCacheEntry* FindFontEntry(const char16_t* description) {
    const int32_t index = FindFontIndex(description);
    return index >= 0 ? &cache->entries[index] : nullptr;
}

FontCacheEntry* FindFontEntryByHandle(FontHandle font) {
    if (cache == nullptr) return nullptr;
    for (uint32_t i = 0; i < cache->count; ++i) {
        if (cache->entries[i].font == font) return &cache->entries[i];
    }
    return nullptr;
}

const FontCache* TheFontCache() { return cache; }

FontDescription DescribeFont(const char16_t* description) {
    FontDescription font = {};
    const size_t length = Utf16Length(description);
    const char16_t attributes = length > 0 ? description[length - 1] : char16_t{0};
    font.height = (attributes & kFontSizeMask) * fontScale;
    font.weight = (attributes & kFontBold) != 0 ? kBoldWeight : kNormalWeight;
    font.italic = (attributes & kFontItalic) != 0;
    font.underline = (attributes & kFontUnderline) != 0;
    font.strikeOut = (attributes & kFontStrikeOut) != 0;
    font.clearType = (attributes & kFontClearType) != 0;
    const size_t room = sizeof(font.face) / sizeof(font.face[0]);
    const size_t faceLength = std::min(length > 0 ? length - 1 : 0, room - 1);
    std::copy_n(description, faceLength, font.face);
    return font;
}

}  // namespace nira
