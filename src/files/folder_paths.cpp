#include "files/folder_paths.h"

#include <algorithm>
#include <iterator>

#include "app/services/memory.h"
#include "base/utf16.h"
#include "platform/folders.h"

namespace nira {

namespace {

constexpr size_t kLongestHome = 1024;
constexpr size_t kExactPrefixUnits = 4;

bool IsSeparator(char16_t unit) { return unit == u'\\' || unit == u'/'; }

bool BeginsWithServer(const char16_t* path) { return path[0] == u'\\' && path[1] == u'\\'; }

// `\\?\` switches off all tidying of the system, `\\.\` names a device.
bool IsVerbatim(const char16_t* path) {
    return BeginsWithServer(path) && (path[2] == u'?' || path[2] == u'.') && path[3] == u'\\';
}

bool IsDrive(const char16_t* part, size_t units) {
    const char16_t letter = static_cast<char16_t>(part[0] | 0x20);
    return units == 2 && part[1] == u':' && letter >= u'a' && letter <= u'z';
}

bool IsDots(const char16_t* part, size_t units, size_t dots) {
    return units == dots && std::all_of(part, part + units, [](char16_t unit) { return unit == u'.'; });
}

// A path being put together, over the one that it is made from: it never gets longer than what was read.
struct TidyState {
    char16_t* path;
    size_t end;     // units written
    size_t parts;   // of them that `..` may take away
    size_t pinned;  // parts to come that it may not: server and share
};

void DropPart(TidyState* state) {
    if (state->parts == 0) return;
    --state->parts;
    while (state->end > 0 && state->path[state->end - 1] != u'\\') --state->end;
    if (state->end > 0) --state->end;
}

void AppendPart(TidyState* state, const char16_t* part, size_t units) {
    if (part != state->path) state->path[state->end++] = u'\\';
    std::copy_n(part, units, state->path + state->end);
    state->end += units;
    if (state->pinned > 0) {
        --state->pinned;
    } else {
        ++state->parts;
    }
}

void TakePart(TidyState* state, const char16_t* part, size_t units) {
    if (IsDrive(part, units)) {
        std::copy_n(part, units, state->path);
        *state = {state->path, units, 0, 0};
    } else if (IsDots(part, units, 2)) {
        DropPart(state);
    } else if (!IsDots(part, units, 1)) {
        AppendPart(state, part, units);
    }
}

// The server's name alone, behind two backslashes.
bool IsServer(const char16_t* path) {
    return BeginsWithServer(path) && Utf16Find(path + 2, u'\\') == nullptr;
}

}  // namespace

char16_t* JoinPath(const char16_t* folder, const char16_t* name) {
    const size_t folderUnits = Utf16Length(folder);
    const size_t units = folderUnits + Utf16Length(name) + 2;
    char16_t* path = MemAllocArray<char16_t>(nullptr, units);
    Utf16Copy(path, units, folder);
    // A backslash more would turn a path of the root folder into that of a server.
    const bool whole = BeginsWithServer(name) || (folderUnits == 0 && name[0] == u'\\');
    if (!whole) path[folderUnits] = u'\\';
    const size_t head = whole ? 0 : folderUnits + 1;
    Utf16Copy(path + head, units - head, name);
    return path;
}

void TidyPath(char16_t* path) {
    if (IsVerbatim(path)) return;
    const bool server = BeginsWithServer(path);
    TidyState state = {path, server ? 1u : 0u, 0, server ? 2u : 0u};
    const char16_t* at = path;
    while (*at != 0) {
        const char16_t* part = at;
        while (*at != 0 && !IsSeparator(*at)) ++at;
        if (at > part) TakePart(&state, part, static_cast<size_t>(at - part));
        if (*at != 0) ++at;
    }
    if (server && state.pinned == 2) state.end = 0;
    path[state.end] = 0;
}

void GoUp(char16_t* folder) {
    const char16_t* mark = Utf16FindLast(folder, u'\\');
    folder[mark != nullptr ? mark - folder : 0] = 0;
    // A server has no folder of its shares that could be listed.
    if (IsServer(folder)) folder[0] = 0;
}

const char16_t* LastPart(const char16_t* path) {
    const char16_t* mark = Utf16FindLast(path, u'\\');
    return mark != nullptr ? mark + 1 : path;
}

char16_t* PathForFile(const char16_t* path) {
    char16_t home[kLongestHome] = {};
    const bool inHome = path[0] == u'\\' && path[1] != u'\\';
    const size_t homeUnits = inHome ? RootFolderPath(home, std::size(home)) : 0;
    const size_t units = homeUnits + Utf16Length(path) + 1;
    char16_t* full = MemAllocArray<char16_t>(nullptr, units + kExactPrefixUnits);
    Utf16Copy(full, units, home);
    Utf16Copy(full + homeUnits, units - homeUnits, path);
    if (NeedsExactPrefix(full)) {
        std::copy_backward(full, full + units, full + units + kExactPrefixUnits);
        std::copy_n(u"\\\\?\\", kExactPrefixUnits, full);
    }
    return full;
}

char16_t* PathForPerson(const char16_t* path) {
    const bool exact = IsVerbatim(path) && path[2] == u'?' && path[4] != 0 && IsDrive(path + 4, 2);
    return MemStrDup(nullptr, exact ? path + kExactPrefixUnits : path);
}

}  // namespace nira
