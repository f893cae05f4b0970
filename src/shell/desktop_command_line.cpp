#include "shell/desktop_command_line.h"

#include <wchar.h>

#include "shell/exact_path.h"
#include "shell/shell_text.h"

namespace shell {

namespace {

bool IsBlank(wchar_t unit) { return unit == L' ' || unit == L'\t'; }

size_t CountBackslashes(const wchar_t* text) {
    size_t count = 0;
    while (text[count] == L'\\') {
        ++count;
    }
    return count;
}

wchar_t* PutBackslashes(wchar_t* target, size_t count) {
    wmemset(target, L'\\', count);
    return target + count;
}

// A run of backslashes before a quote stands for half as many; an odd one makes the quote a plain character.
// Returns where reading goes on. The quote that ends an argument ends it even after a backslash: no path has
// a quote in it, while folders do end in a backslash.
const wchar_t* TakeBackslashes(const wchar_t* source, wchar_t** target, bool inQuotes) {
    const size_t count = CountBackslashes(source);
    const wchar_t* next = source + count;
    if (*next != L'"' || (inQuotes && next[1] == 0)) {
        *target = PutBackslashes(*target, count);
        return next;
    }
    *target = PutBackslashes(*target, count / 2);
    if (count % 2 == 1) {
        *(*target)++ = *next++;
    }
    return next;
}

wchar_t* TrimEnd(wchar_t* begin, wchar_t* end) {
    while (end > begin && IsBlank(end[-1])) {
        --end;
    }
    return end;
}

}  // namespace

void UnquoteCommandLine(const wchar_t* commandLine, wchar_t* path) {
    const wchar_t* source = commandLine;
    while (IsBlank(*source)) {
        ++source;
    }
    const bool firstArgumentOnly = *source == L'"';
    bool inQuotes = false;
    wchar_t* target = path;
    while (*source) {
        if (*source == L'\\') {
            source = TakeBackslashes(source, &target, inQuotes);
        } else if (*source == L'"') {
            inQuotes = !inQuotes;
            ++source;
        } else if (firstArgumentOnly && !inQuotes && IsBlank(*source)) {
            break;
        } else {
            *target++ = *source++;
        }
    }
    *TrimEnd(path, target) = 0;
}

namespace {

wchar_t* AbsolutePath(const wchar_t* path) {
    const DWORD room = GetFullPathNameW(path, 0, nullptr, nullptr);
    if (room == 0) {
        return nullptr;
    }
    wchar_t* result = AllocShellText(room);
    if (!result) {
        return nullptr;
    }
    const DWORD length = GetFullPathNameW(path, room, result, nullptr);
    if (length == 0 || length >= room) {
        FreeShellText(result);
        return nullptr;
    }
    wchar_t* exact = ExactPath(path);
    if (!exact) {
        return result;
    }
    FreeShellText(result);
    return exact;
}

}  // namespace

bool CommandLinePath(const wchar_t* commandLine, wchar_t** path) {
    *path = nullptr;
    const wchar_t* line = commandLine ? commandLine : L"";
    wchar_t* written = AllocShellText(wcslen(line));
    if (!written) {
        return false;
    }
    UnquoteCommandLine(line, written);
    if (written[0] == 0) {
        *path = written;
        return true;
    }
    *path = AbsolutePath(written);
    FreeShellText(written);
    return *path != nullptr;
}

}  // namespace shell
