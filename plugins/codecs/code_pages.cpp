#include "codecs/code_pages.h"

#include <cstring>

#include "codecs/system.h"
#include "codecs/units.h"

namespace codecs {

namespace {

constexpr uint32_t kBytesOfUnit = 4;
constexpr uint32_t kGb18030 = 54936;
constexpr uint32_t kEucJp = 51932;
constexpr uint8_t kThirdSet = 0x8F;  // begins the three bytes of the third character set of EUC-JP

// The bytes of the character at `at`, by its first one or two; more than `left` when it is cut.
uint32_t CharacterLength(uint32_t page, const uint8_t* at, uint32_t left) {
    if (!PageIsLead(page, at[0])) return 1;
    if (page == kEucJp && at[0] == kThirdSet) return 3;
    if (page == kGb18030 && left >= 2 && at[1] >= '0' && at[1] <= '9') return 4;
    return 2;
}

// The bytes of whole characters up to `enough` or the last that is whole, whichever comes first.
uint32_t WholeCharacters(uint32_t page, const uint8_t* at, uint32_t size, uint32_t enough) {
    uint32_t place = 0;
    while (place < enough) {
        const uint32_t length = CharacterLength(page, at + place, size - place);
        if (length > size - place) break;
        place += length;
    }
    return place;
}

void MakeRoom(uint8_t** block, uint32_t* size, uint32_t needed, NiraRealloc grow) {
    if (*size >= needed) return;
    *block = static_cast<uint8_t*>(grow(*block, needed));
    *size = needed;
}

// Whether what saving writes for the units would be read as the same again. The bytes may be others than
// those that the units come from only where the reader is not strict.
bool ComesBack(PageReader* reader, const uint8_t* at, uint32_t size, const char16_t* units, uint32_t count,
               NiraRealloc grow) {
    MakeRoom(&reader->scratch, &reader->scratchSize, count * kBytesOfUnit, grow);
    uint8_t* end = reader->scratch;
    EncodePage(reader->page, units, count, true, &end);
    const auto written = static_cast<uint32_t>(end - reader->scratch);
    if (written == size && std::memcmp(reader->scratch, at, size) == 0) return true;
    if (reader->strict) return false;
    MakeRoom(&reader->again, &reader->againSize, written * uint32_t{sizeof(char16_t)}, grow);
    auto* again = reinterpret_cast<char16_t*>(reader->again);
    return PageToUnits(reader->page, reader->scratch, written, again, written) == count &&
           std::memcmp(again, units, count * sizeof(char16_t)) == 0;
}

// All of it at once; false when some of it is no character, or one that saving would make another of.
bool DecodeWhole(PageReader* reader, const uint8_t* at, uint32_t size, char16_t** out, NiraRealloc grow) {
    const uint32_t units = PageToUnits(reader->page, at, size, *out, size);
    if (units == 0 || !ComesBack(reader, at, size, *out, units, grow)) return false;
    *out += units;
    return true;
}

// Finds what is no character by halves, so that a file with a few such places costs hardly more than one
// without.
void DecodeRange(PageReader* reader, const uint8_t* at, uint32_t size, char16_t** out, NiraRealloc grow) {
    if (size == 0 || DecodeWhole(reader, at, size, out, grow)) return;
    uint32_t half = WholeCharacters(reader->page, at, size, size / 2);
    if (half == 0) half = WholeCharacters(reader->page, at, size, 1);
    if (half == 0 || half == size) {
        // One character, or the beginning of one: its first byte is none, those behind it may be.
        *(*out)++ = EscapeOf(at[0]);
        DecodeRange(reader, at + 1, size - 1, out, grow);
        return;
    }
    DecodeRange(reader, at, half, out, grow);
    DecodeRange(reader, at + half, size - half, out, grow);
}

void FillSingles(PageReader* reader, NiraRealloc grow) {
    for (uint32_t value = 0; value < 256; ++value) {
        const auto byte = static_cast<uint8_t>(value);
        reader->manyBytes = reader->manyBytes || PageIsLead(reader->page, byte);
        char16_t* out = &reader->single[value];
        if (!DecodeWhole(reader, &byte, 1, &out, grow)) reader->single[value] = EscapeOf(byte);
    }
    reader->ready = true;
}

// The units from `at` on that the system can convert: all up to a half of a pair without its other half.
uint32_t PlainUnits(const char16_t* at, uint32_t left) {
    uint32_t place = 0;
    while (place < left) {
        if (!IsHalf(at[place])) {
            ++place;
        } else if (IsHigh(at[place]) && left - place >= 2 && IsLow(at[place + 1])) {
            place += 2;
        } else {
            break;
        }
    }
    return place;
}

}  // namespace

PageReader* CreatePageReader(uint32_t page, bool strict, NiraRealloc grow) {
    auto* reader = static_cast<PageReader*>(grow(nullptr, sizeof(PageReader)));
    reader->page = page;
    reader->strict = strict;
    return reader;
}

void DestroyPageReader(PageReader* reader, NiraRealloc grow) {
    if (reader == nullptr) return;
    grow(reader->scratch, 0);
    grow(reader->again, 0);
    grow(reader, 0);
}

uint32_t DecodePage(PageReader* reader, const uint8_t* source, uint32_t size, bool last, char16_t** out,
                    NiraRealloc grow) {
    if (!reader->ready) FillSingles(reader, grow);
    if (reader->manyBytes) {
        const uint32_t whole = last ? size : WholeCharacters(reader->page, source, size, size);
        DecodeRange(reader, source, whole, out, grow);
        return whole;
    }
    for (uint32_t i = 0; i < size; ++i) (*out)[i] = reader->single[source[i]];
    *out += size;
    return size;
}

// Text that the system does not convert may not be left out: a fault ends the save and leaves the old file.
uint32_t EncodePlain(uint32_t page, const char16_t* source, uint32_t units, uint8_t* out) {
    if (units == 0) return 0;
    const uint32_t bytes = PageFromUnits(page, source, units, out, units * kBytesOfUnit);
    if (bytes == 0) __builtin_trap();
    return bytes;
}

uint32_t EncodePage(uint32_t page, const char16_t* source, uint32_t units, bool last, uint8_t** out) {
    uint32_t at = 0;
    while (at < units) {
        const uint32_t plain = PlainUnits(source + at, units - at);
        *out += EncodePlain(page, source + at, plain, *out);
        at += plain;
        if (at == units) break;
        const bool cut = IsHigh(source[at]) && at + 1 == units;
        if (cut && !last) break;
        if (IsEscape(source[at])) {
            *(*out)++ = static_cast<uint8_t>(source[at]);
        } else {
            *out += EncodePlain(page, source + at, 1, *out);
        }
        ++at;
    }
    return at;
}

}  // namespace codecs
