#include "platform/code_page.h"

#include "platform/host/ansi_page.h"
#include "platform/host/best_fit.h"
#include "platform/host/last_error.h"

namespace nira {

namespace {

AnsiPage currentPage = AnsiPage::kWestern;

// Bytes 80–9F of Windows-1252; the five bytes it leaves open are the control characters of the same number.
constexpr char16_t kWesternHigh[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                       0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char16_t kLoneLead = 0x30FB;
constexpr uint8_t kDefault = '?';

char16_t WesternToUnit(uint8_t byte) {
    return byte >= 0x80 && byte < 0xA0 ? kWesternHigh[byte - 0x80] : byte;
}

uint8_t WesternFromUnit(char16_t unit) {
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<uint8_t>(unit);
    for (uint8_t index = 0; index < 32; ++index) {
        if (kWesternHigh[index] == unit) return static_cast<uint8_t>(0x80 + index);
    }
    const uint8_t nearest = WesternBestFit(unit);
    return nearest != 0 ? nearest : kDefault;
}

bool IsLead(uint8_t byte) { return (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC); }

// Decodes one character from at least one byte; *used = the bytes taken.
char16_t DecodeOne(const uint8_t* source, uint32_t size, uint32_t* used) {
    *used = 1;
    const uint8_t byte = source[0];
    if (currentPage == AnsiPage::kWestern) return WesternToUnit(byte);
    if (byte < 0x80) return byte;
    if (!IsLead(byte)) return static_cast<char16_t>(0xFF00 + byte);
    if (size < 2 || source[1] < 0x40) return kLoneLead;
    *used = 2;
    const unsigned lead = byte < 0xE0 ? byte - 0x81u : byte - 0xE0u + 31u;
    return static_cast<char16_t>(0x4E00u + lead * 192u + (source[1] - 0x40u));
}

// Encodes one unit into at most two bytes; returns how many.
uint32_t EncodeOne(char16_t unit, uint8_t* bytes) {
    if (currentPage == AnsiPage::kWestern) {
        bytes[0] = WesternFromUnit(unit);
        return 1;
    }
    const unsigned wide = unit - 0x4E00u;
    if (unit >= 0x4E00 && wide < 60 * 192) {
        const unsigned lead = wide / 192;
        bytes[0] = static_cast<uint8_t>(lead < 31 ? 0x81 + lead : 0xE0 + lead - 31);
        bytes[1] = static_cast<uint8_t>(0x40 + wide % 192);
        return 2;
    }
    const auto low = static_cast<uint8_t>(unit & 0xFF);
    const bool single = unit < 0x80 || (unit >= 0xFF80 && !IsLead(low));
    bytes[0] = single ? low : kDefault;
    return 1;
}

}  // namespace

bool AnsiIsLeadByte(uint8_t byte) { return currentPage == AnsiPage::kTwoBytes && IsLead(byte); }

uint32_t AnsiToUtf16(const uint8_t* source, uint32_t size, char16_t* target, uint32_t room) {
    uint32_t units = 0;
    for (uint32_t at = 0; at < size;) {
        uint32_t used = 0;
        const char16_t unit = DecodeOne(source + at, size - at, &used);
        at += used;
        if (target != nullptr) {
            if (units == room) {
                HostSetLastError(kErrorInsufficientBuffer);
                return 0;
            }
            target[units] = unit;
        }
        ++units;
    }
    return units;
}

uint32_t AnsiFromUtf16(const char16_t* source, uint32_t units, uint8_t* target, uint32_t room) {
    uint32_t size = 0;
    for (uint32_t at = 0; at < units; ++at) {
        uint8_t bytes[2];
        const uint32_t count = EncodeOne(source[at], bytes);
        if (target != nullptr) {
            if (room - size < count) {
                HostSetLastError(kErrorInsufficientBuffer);
                return 0;
            }
            for (uint32_t index = 0; index < count; ++index) target[size + index] = bytes[index];
        }
        size += count;
    }
    return size;
}

void HostSetAnsiPage(AnsiPage page) { currentPage = page; }

}  // namespace nira
