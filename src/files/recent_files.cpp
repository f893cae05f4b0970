#include "files/recent_files.h"

#include <algorithm>
#include <iterator>

#include "app/services/memory.h"
#include "app/services/notices.h"
#include "app/services/registry_key.h"
#include "base/menu_text.h"
#include "base/utf16.h"
#include "files/codecs.h"
#include "platform/menus.h"
#include "resources/resource.h"

namespace nira {

namespace {

constexpr const char16_t* kRecentKey = u"\\Software\\NIRA\\MRU";
constexpr const char16_t* kSeparator = u"\\\\";
constexpr size_t kSeparatorUnits = 2;
constexpr size_t kLongestShownPath = 260;

MenuHandle recentMenu = nullptr;
RecentFileOpener opener = nullptr;

// A value's name: its number in decimal.
struct ValueName {
    explicit ValueName(uint32_t number) { Utf16FromInt(text, std::size(text), static_cast<int>(number)); }
    char16_t text[12];
};

RegKey* OpenKey() { return RegKeyOpen(RegistryRoot::kCurrentUser, kRecentKey); }

const char16_t* QueryEntry(RegKey* key, uint32_t number) {
    return RegKeyQueryText(key, ValueName(number).text);
}

void SetEntry(RegKey* key, uint32_t number, const char16_t* entry) {
    RegKeySetString(key, ValueName(number).text, entry);
}

// Where the path ends: at the first two backslashes from the third unit on, because a path may begin with two
// of them; at the entry's end when there are none.
size_t PathLength(const char16_t* entry) {
    const size_t length = Utf16Length(entry);
    for (size_t i = 2; i + 1 < length; ++i) {
        if (entry[i] == u'\\' && entry[i + 1] == u'\\') return i;
    }
    return length;
}

bool HasPath(const char16_t* entry, const char16_t* path) {
    const size_t length = PathLength(entry);
    return length == Utf16Length(path) && std::equal(entry, entry + length, path);
}

void AppendMenuEntry(uint32_t number, const char16_t* entry) {
    char16_t label[3 + MenuTextUnits(kLongestShownPath)] = {u'&', static_cast<char16_t>(u'0' + number), u' '};
    CopyToMenuText(label + 3, entry, std::min(PathLength(entry), kLongestShownPath));
    MenuAppendItem(recentMenu, CMD_RECENT_FIRST + number, label);
}

// Moves entries 0 to 8 one place down and puts `entry` in front.
void PutOnTop(const char16_t* entry) {
    RegKey* key = OpenKey();
    for (uint32_t i = kRecentFiles - 1; i-- > 0;) {
        const char16_t* moved = QueryEntry(key, i);
        if (moved != nullptr) SetEntry(key, i + 1, moved);
    }
    SetEntry(key, 0, entry);
    RegKeyClose(key);
}

// The number of the first entry with this path; kRecentFiles + 1 when there is none.
uint32_t FindEntry(RegKey* key, const char16_t* path) {
    for (uint32_t i = 0; i <= kRecentFiles; ++i) {
        const char16_t* entry = QueryEntry(key, i);
        if (entry == nullptr) break;
        if (HasPath(entry, path)) return i;
    }
    return kRecentFiles + 1;
}

// Moves what stands behind entry `number` one place up and deletes the last.
void CloseGap(RegKey* key, uint32_t number) {
    for (uint32_t i = number + 1; i <= kRecentFiles; ++i) {
        const char16_t* entry = QueryEntry(key, i);
        if (entry == nullptr) {
            RegKeyDeleteValue(key, ValueName(i - 1).text);
            return;
        }
        SetEntry(key, i - 1, entry);
    }
}

// Splits an entry into an owned copy of its path and the codec that its name stands for; ANSI without a name.
char16_t* SplitEntry(const char16_t* entry, uint32_t* codec) {
    char16_t* path = MemStrDup(nullptr, entry);
    const size_t length = PathLength(entry);
    *codec = entry[length] != 0 ? CodecIndex(entry + length + kSeparatorUnits) : kCodecAnsi;
    path[length] = 0;
    return path;
}

}  // namespace

void InitRecentFiles(MenuHandle menu) {
    recentMenu = menu;
    BuildRecentMenu();
}

void SetRecentFileOpener(RecentFileOpener open) { opener = open; }

void BuildRecentMenu() {
    if (recentMenu == nullptr) return;
    while (MenuDeletePosition(recentMenu, 0)) continue;
    RegKey* key = OpenKey();
    bool empty = true;
    for (uint32_t i = 0; i < kRecentFiles; ++i) {
        const char16_t* entry = QueryEntry(key, i);
        if (entry == nullptr) continue;
        AppendMenuEntry(i, entry);
        empty = false;
    }
    RegKeyClose(key);
    if (empty) MenuAppendGrayed(recentMenu, LoadResString(IDS_EMPTY_LIST));
}

void AddRecentFile(const char16_t* path, uint32_t codecIndex) {
    char16_t* entry = nullptr;
    const bool made = Guarded([&] {
        entry = MemStrDup(nullptr, path);
        entry = MemStrCat(entry, kSeparator);
        entry = MemStrCat(entry, CodecName(codecIndex));
    });
    if (made) PutOnTop(entry);
    MemFree(nullptr, entry);
    BuildRecentMenu();
}

void RemoveRecentFile(const char16_t* path) {
    RegKey* key = OpenKey();
    const uint32_t number = FindEntry(key, path);
    if (number <= kRecentFiles) CloseGap(key, number);
    RegKeyClose(key);
    BuildRecentMenu();
}

void OpenRecentFile(uint32_t command) {
    RegKey* key = OpenKey();
    char16_t* path = nullptr;
    uint32_t codec = kCodecAnsi;
    const bool enough = Guarded([&] {
        const char16_t* entry = QueryEntry(key, command - CMD_RECENT_FIRST);
        if (entry != nullptr) path = SplitEntry(entry, &codec);
    });
    RegKeyClose(key);
    if (!enough || path == nullptr) return;
    if (opener != nullptr) {
        opener(path, codec);
    } else {
        MemFree(nullptr, path);
    }
}

}  // namespace nira
