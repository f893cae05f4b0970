#include "codecs/host/system_host.h"

#include <iconv.h>

#include <string>

#include "codecs/system.h"
#include "platform/registry.h"

namespace codecs {

namespace {

struct HostPage {
    uint32_t page;
    const char* name;
    uint8_t firstLead;  // 0 for pages of single bytes
    uint8_t lastLead;
};

// Enough to have one of every kind.
constexpr HostPage kPages[] = {
    {437, "CP437", 0, 0},           {850, "CP850", 0, 0},        {932, "CP932", 0x81, 0xFC},
    {936, "CP936", 0x81, 0xFE},     {949, "CP949", 0x81, 0xFE},  {950, "BIG5", 0x81, 0xFE},
    {1251, "CP1251", 0, 0},         {1252, "CP1252", 0, 0},      {1253, "CP1253", 0, 0},
    {20866, "KOI8-R", 0, 0},        {28591, "ISO-8859-1", 0, 0}, {51932, "EUC-JP", 0x8E, 0xFE},
    {54936, "GB18030", 0x81, 0xFE},
};

uint32_t ansiPage = 1252;

const HostPage* FindPage(uint32_t page) {
    for (const HostPage& known : kPages) {
        if (known.page == page) return &known;
    }
    return nullptr;
}

// Opens a conversion once in the life of the process; it is never closed.
iconv_t Converter(const HostPage& page, bool toUnits) {
    static iconv_t converters[std::size(kPages)][2] = {};
    iconv_t& converter = converters[&page - kPages][toUnits ? 1 : 0];
    if (converter == nullptr) {
        converter = toUnits ? iconv_open("UTF-16LE", page.name) : iconv_open(page.name, "UTF-16LE");
    }
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    return converter;
}

// Returns the bytes written, 0 when something cannot be converted.
size_t Convert(iconv_t converter, const void* source, size_t size, void* target, size_t room) {
    auto* from = const_cast<char*>(static_cast<const char*>(source));
    auto* to = static_cast<char*>(target);
    const size_t whole = room;
    const size_t result = iconv(converter, &from, &size, &to, &room);
    return result == static_cast<size_t>(-1) || size > 0 ? 0 : whole - room;
}

}  // namespace

void SetHostAnsiPage(uint32_t page) { ansiPage = page; }

bool PageIsValid(uint32_t page) { return FindPage(page) != nullptr; }

uint32_t AnsiPage() { return ansiPage; }

bool PageIsLead(uint32_t page, uint8_t byte) {
    const HostPage* known = FindPage(page);
    if (known == nullptr || known->firstLead == 0) return false;
    if (page == 932 && byte >= 0xA0 && byte <= 0xDF) return false;
    return byte >= known->firstLead && byte <= known->lastLead;
}

uint32_t PageToUnits(uint32_t page, const uint8_t* source, uint32_t size, char16_t* target, uint32_t room) {
    const HostPage* known = FindPage(page);
    return static_cast<uint32_t>(Convert(Converter(*known, true), source, size, target, size_t{room} * 2) /
                                 2);
}

// As the system does it, a character that the page has not becomes a question mark, and each half of a pair
// without the other.
uint32_t PageFromUnits(uint32_t page, const char16_t* source, uint32_t units, uint8_t* target,
                       uint32_t room) {
    const iconv_t converter = Converter(*FindPage(page), false);
    uint32_t bytes = 0;
    for (uint32_t at = 0; at < units;) {
        const bool high = (source[at] & 0xFC00) == 0xD800;
        const bool pair = high && at + 1 < units && (source[at + 1] & 0xFC00) == 0xDC00;
        const uint32_t length = pair ? 2 : 1;
        size_t made = Convert(converter, source + at, size_t{length} * 2, target + bytes, room - bytes);
        if (made == 0) {
            iconv(converter, nullptr, nullptr, nullptr, nullptr);
            if (bytes == room) return 0;
            target[bytes] = '?';
            made = 1;
        }
        bytes += static_cast<uint32_t>(made);
        at += length;
    }
    return bytes;
}

void ForEachRegisteredName(void (*each)(void* context, const char16_t* name), void* context) {
    const nira::RegistryHandle key =
        nira::RegistryOpen(nira::RegistryRoot::kLocalMachine, u"Software\\NIRA\\Encodings");
    if (key == nullptr) return;
    std::u16string name(300, u'\0');
    uint32_t length = 300;
    for (uint32_t i = 0; nira::RegistryEnumValue(key, i, name.data(), &length); ++i, length = 300) {
        each(context, name.c_str());
    }
    nira::RegistryClose(key);
}

}  // namespace codecs
