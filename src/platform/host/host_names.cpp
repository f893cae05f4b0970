#include "platform/host/host_names.h"

#include <sys/stat.h>

#include <cerrno>

#include "base/utf16.h"
#include "platform/host/last_error.h"

namespace nira {

namespace {

void AppendUtf8(std::string* name, uint32_t character) {
    const auto tail = [&](unsigned shift) {
        name->push_back(static_cast<char>(0x80 | (character >> shift & 0x3F)));
    };
    if (character < 0x80) {
        name->push_back(static_cast<char>(character));
    } else if (character < 0x800) {
        name->push_back(static_cast<char>(0xC0 | character >> 6));
        tail(0);
    } else if (character < 0x10000) {
        name->push_back(static_cast<char>(0xE0 | character >> 12));
        tail(6);
        tail(0);
    } else {
        name->push_back(static_cast<char>(0xF0 | character >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

// The character that begins at *at, which moves behind it.
uint32_t TakeUtf8(const char** at) {
    const auto lead = static_cast<unsigned char>(*(*at)++);
    if (lead < 0x80) return lead;
    const int tails = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    uint32_t character = lead & (0x3Fu >> tails);
    for (int i = 0; i < tails; ++i) {
        if ((static_cast<unsigned char>(**at) & 0xC0) != 0x80) return 0xFFFD;
        character = character << 6 | (static_cast<unsigned char>(*(*at)++) & 0x3F);
    }
    return tails > 0 ? character : 0xFFFD;
}

}  // namespace

std::string HostName(const char16_t* path) {
    std::string name;
    for (; path != nullptr && *path != 0; ++path) {
        uint32_t character = *path == u'\\' ? u'/' : *path;
        if ((character & 0xFC00) == 0xD800 && (path[1] & 0xFC00) == 0xDC00) {
            ++path;
            character = 0x10000 + ((character & 0x3FF) << 10) + (*path & 0x3FFu);
        }
        AppendUtf8(&name, character);
    }
    return name;
}

bool Fail(uint32_t error) {
    HostSetLastError(error);
    return false;
}

uint32_t ErrorOf(int number, const std::string& name) {
    switch (number) {
        case ENOENT: {
            const std::string parent = name.substr(0, name.find_last_of('/') + 1);
            struct stat info;
            return parent.empty() || stat(parent.c_str(), &info) == 0 ? kErrorFileNotFound
                                                                      : kErrorPathNotFound;
        }
        case ENOTDIR:
            return kErrorPathNotFound;
        case EEXIST:
            return kErrorAlreadyExists;
        case ENOSPC:
        case EDQUOT:
            return kErrorDiskFull;
        case ENAMETOOLONG:
            return kErrorFileNameTooLong;
        case EIO:
            return kErrorIoDevice;
        default:
            return kErrorAccessDenied;
    }
}

bool NameIsValid(const char16_t* path) {
    if (path == nullptr || *path == 0) return Fail(kErrorPathNotFound);
    for (; *path != 0; ++path) {
        if (*path < 0x20 || Utf16Find(u"\"<>|?*", *path) != nullptr) return Fail(kErrorInvalidName);
    }
    return true;
}

std::u16string ProgramName(const char* name) {
    std::u16string text;
    while (*name != 0) {
        const uint32_t character = TakeUtf8(&name);
        if (character < 0x10000) {
            text.push_back(static_cast<char16_t>(character));
        } else {
            text.push_back(static_cast<char16_t>(0xD7C0 + (character >> 10)));
            text.push_back(static_cast<char16_t>(0xDC00 + (character & 0x3FF)));
        }
    }
    return text;
}

}  // namespace nira
