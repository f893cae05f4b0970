#include "search/search_history.h"

#include <algorithm>
#include <cstring>

#include "app/services/memory.h"
#include "app/services/registry_key.h"
#include "base/lower_case.h"
#include "base/utf16.h"
#include "settings/options.h"

namespace nira {

namespace {

constexpr const char16_t* kHistoryKey = u"\\Software\\NIRA";

bool SameWithoutCase(const char16_t* left, const char16_t* right) {
    while (*left != 0 && LowerUnit(*left) == LowerUnit(*right)) {
        ++left;
        ++right;
    }
    return *left == *right;
}

// The first `limit` texts of a row of them.
struct TextRow {
    size_t units;  // terminators included
    uint32_t count;
};

// Up to the first empty text or the end of the row; a last text without terminator counts with one.
TextRow MeasureTexts(const char16_t* texts, size_t room, uint32_t limit) {
    TextRow row = {0, 0};
    while (row.count < limit && row.units < room && texts[row.units] != 0) {
        const char16_t* end = std::find(texts + row.units, texts + room, u'\0');
        row.units = static_cast<size_t>(end - texts) + 1;
        ++row.count;
    }
    return row;
}

}  // namespace

const char16_t* NextHistoryText(const SearchHistory& history, const char16_t* text) {
    const char16_t* next = text == nullptr ? history.texts : text + Utf16Length(text) + 1;
    return next != nullptr && next < history.texts + history.units ? next : nullptr;
}

bool HistoryHolds(const SearchHistory& history, const char16_t* text) {
    const char16_t* entry = nullptr;
    while ((entry = NextHistoryText(history, entry)) != nullptr) {
        if (SameWithoutCase(entry, text)) return true;
    }
    return false;
}

void HistoryLoad(SearchHistory* history, const char16_t* name) {
    HistoryFree(history);
    RegKey* key = RegKeyOpen(RegistryRoot::kCurrentUser, kHistoryKey);
    uint32_t units = 0;
    const char16_t* texts = RegKeyQueryTexts(key, name, &units);
    const TextRow row = MeasureTexts(texts, units, TheOptions().histLen);
    const bool loaded = Guarded([&] {
        history->texts = MemAllocArray<char16_t>(nullptr, row.units);
        std::copy_n(texts, std::min<size_t>(row.units, units), history->texts);
        history->units = row.units;
        history->count = row.count;
    });
    RegKeyClose(key);
    if (!loaded) OutOfMemory(false);
}

bool HistoryAdd(SearchHistory* history, const char16_t* text) {
    const size_t units = Utf16Length(text) + 1;
    if (units == 1 || HistoryHolds(*history, text)) return false;
    // As a signed number: with a length of 0 nothing is dropped here, since no entry stands before the first.
    const int64_t others = int64_t{TheOptions().histLen} - 1;
    TextRow row = {history->units, history->count};
    if (others >= 0 && row.count > others) {
        row = MeasureTexts(history->texts, history->units, static_cast<uint32_t>(others));
    }
    history->texts = MemReAllocArray(nullptr, history->texts, history->units + units);
    std::memmove(history->texts + units, history->texts, row.units * sizeof(char16_t));
    std::copy_n(text, units, history->texts);
    history->units = row.units + units;
    history->count = row.count + 1;
    return true;
}

bool HistorySave(const SearchHistory& history, const char16_t* name) {
    RegKey* key = RegKeyOpen(RegistryRoot::kCurrentUser, kHistoryKey);
    const TextRow row = MeasureTexts(history.texts, history.units, TheOptions().histLen);
    const bool saved = RegKeySetTexts(key, name, history.texts, row.units);
    RegKeyClose(key);
    return saved;
}

void HistoryFree(SearchHistory* history) {
    MemFree(nullptr, history->texts);
    *history = {};
}

}  // namespace nira
