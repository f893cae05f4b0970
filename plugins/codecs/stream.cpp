#include "codecs/stream.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "codecs/exact_utf16.h"
#include "codecs/exact_utf32.h"
#include "codecs/exact_utf8.h"
#include "codecs/judge.h"
#include "codecs/registered.h"
#include "codecs/units.h"

namespace codecs {

namespace {

constexpr uint32_t kLongestMark = 4;
constexpr uint32_t kJudged = 20480;   // bytes that tell what a file is; a shorter one is judged with its end
constexpr uint32_t kBytesOfUnit = 4;  // the most that one unit makes, in any encoding
constexpr uint32_t kSlack = kUtf8Slack + kBytesOfUnit;
constexpr uint32_t kSlice = 1 << 16;  // units encoded at a time

bool IsBigEndian(Form form) { return form == Form::kUtf16Be || form == Form::kUtf32Be; }

// ---- buffers ----

// A buffer that has room stays as it is; one that grows does so by half, so that growing step by step stays
// cheap.
void MakeRoom(Buffer* buffer, uint64_t needed, NiraRealloc grow) {
    constexpr uint64_t kMost = std::numeric_limits<uint32_t>::max();
    if (buffer->block != nullptr && buffer->size >= needed) return;
    // Nobody can be told that a text is too long for a buffer. Ending here, as a fault, ends the save with
    // its message and leaves the old file, where a truncated one would pass for a success.
    if (needed > kMost) __builtin_trap();
    const uint64_t size = std::clamp(buffer->size + buffer->size / 2, needed, kMost);
    buffer->block = grow(buffer->block, static_cast<uint32_t>(size));
    buffer->size = size;
}

// The caller's buffer: what it holds is known only while it is the one that was left there. The caller is
// told at once where it is now, because a later request may not come back.
template <typename Unit>
void GrowOutput(Stream* stream, Unit** target, uint64_t needed, NiraRealloc grow) {
    if (stream->output.block != *target) stream->output = {*target, 0};
    MakeRoom(&stream->output, needed, grow);
    *target = static_cast<Unit*>(stream->output.block);
}

// `rest` and `chunk` side by side. Without a rest that is the chunk itself.
const void* Join(Stream* stream, const void* rest, size_t restSize, const void* chunk, size_t size,
                 NiraRealloc grow) {
    if (restSize == 0) return chunk;
    MakeRoom(&stream->joined, restSize + size, grow);
    auto* joined = static_cast<uint8_t*>(stream->joined.block);
    std::memcpy(joined, rest, restSize);
    if (size > 0) std::memcpy(joined + restSize, chunk, size);
    return joined;
}

// ---- decoding ----

bool BeginsWith(const uint8_t* bytes, uint32_t size, const Mark& mark) {
    return size >= mark.size && std::memcmp(bytes, mark.bytes, mark.size) == 0;
}

// A file that is judged must be known to be longer than that, or to its end: where it is cut into chunks must
// make no difference to what it is taken for.
uint32_t OpeningBytes(const Stream& stream) {
    return stream.entry->form == Form::kAuto ? kJudged + 1 : kLongestMark;
}

// What the file is by its first bytes.
const Entry* Recognize(const Entry* entry, const uint8_t* bytes, uint32_t size, bool last) {
    if (entry->form == Form::kAuto) return JudgeFile(bytes, std::min(size, kJudged), last && size <= kJudged);
    if (entry->form == Form::kPage) return entry;
    return EntryOfForm(entry->form, BeginsWith(bytes, size, MarkOfForm(entry->form)));
}

// Decides what the file is. Returns the bytes of its mark, which are no text. A mark that goes with an
// encoding which NIRA does not list stays in the text: nothing else would write it again. In the same way
// "Auto", which writes UTF-8, reads nothing else where it cannot report what it found: the text may be
// illegible then, and the bytes come back all the same.
uint32_t Open(Stream* stream, const uint8_t* bytes, uint32_t size, bool last, NiraRealloc grow) {
    const bool judged = stream->entry->form == Form::kAuto;
    const Entry* found = Recognize(stream->entry, bytes, size, last);
    const bool listed =
        found == stream->entry || FindSister(*stream->entry, stream->index, *found, &stream->activeIndex);
    if (judged && !listed) found = EntryOfForm(Form::kUtf8, false);
    if (found->form == Form::kPage) stream->reader = CreatePageReader(PageOfEntry(*found), judged, grow);
    stream->active = found;
    stream->opened = true;
    return listed && found->mark ? MarkOfForm(found->form).size : 0;
}

// The encoding's own conversion.
uint32_t DecodeForm(Stream* stream, const uint8_t* source, uint32_t size, bool last, char16_t** out,
                    NiraRealloc grow) {
    const Form form = stream->active->form;
    switch (form) {
        case Form::kUtf16Le:
        case Form::kUtf16Be:
            return DecodeUtf16(IsBigEndian(form), source, size, last, out);
        case Form::kUtf32Le:
        case Form::kUtf32Be:
            return DecodeUtf32(IsBigEndian(form), source, size, last, out);
        case Form::kPage:
            return DecodePage(stream->reader, source, size, last, out, grow);
        default:
            return DecodeUtf8(source, size, last, out);
    }
}

void KeepRest(Stream* stream, const uint8_t* rest, uint32_t size, NiraRealloc grow) {
    stream->restSize = 0;
    if (size == 0) return;
    MakeRoom(&stream->restBytes, size, grow);
    std::memcpy(stream->restBytes.block, rest, size);
    stream->restSize = size;
}

// A last unit that what follows may belong to waits, so that the program sees a CR LF whole.
bool MustWait(char16_t unit) { return unit == kCr || IsHigh(unit); }

void ResetDecoding(Stream* stream, NiraRealloc grow) {
    DestroyPageReader(stream->reader, grow);
    stream->reader = nullptr;
    stream->opened = false;
    stream->restSize = 0;
    stream->held = false;
    stream->active = stream->entry;
    stream->activeIndex = stream->index;
}

// ---- encoding ----

// Encodes at most a slice; returns the units taken.
uint32_t EncodeForm(const Stream& stream, const char16_t* source, uint32_t units, bool last, uint8_t** out) {
    const Form form = stream.entry->form;
    switch (form) {
        case Form::kUtf16Le:
        case Form::kUtf16Be:
            EncodeUtf16(IsBigEndian(form), source, units, out);
            return units;
        case Form::kUtf32Le:
        case Form::kUtf32Be:
            return EncodeUtf32(IsBigEndian(form), source, units, last, out);
        case Form::kPage:
            return EncodePage(stream.page, source, units, last, out);
        default:
            return EncodeUtf8(source, units, last, out);
    }
}

// Bytes for the first `count` units and what may follow. Most text takes little more than a byte a unit, and
// a line of many megabytes should not cost four times as much; the rest is grown as it turns out.
uint64_t FirstRoom(uint32_t count) {
    const uint32_t slice = std::min(count, kSlice);
    return uint64_t{slice} * kBytesOfUnit + (count - slice) + kSlack;
}

}  // namespace

Stream* CreateStream(const Entry* entry, uint32_t listIndex, NiraRealloc grow) {
    auto* stream = static_cast<Stream*>(grow(nullptr, sizeof(Stream)));
    stream->entry = entry;
    stream->index = listIndex;
    stream->page = entry->form == Form::kPage ? PageOfEntry(*entry) : 0;
    ResetDecoding(stream, grow);
    return stream;
}

void DestroyStream(Stream* stream, NiraRealloc grow) {
    if (stream == nullptr) return;
    DestroyPageReader(stream->reader, grow);
    grow(stream->restBytes.block, 0);
    grow(stream->joined.block, 0);
    grow(stream, 0);
}

uint32_t DecodeChunk(Stream* stream, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                     int32_t chunk, NiraRealloc grow) {
    const bool last = chunk == kNiraLastChunk;
    *units = 0;
    if (chunk == kNiraFirstChunk) ResetDecoding(stream, grow);
    const auto* bytes = static_cast<const uint8_t*>(
        Join(stream, stream->restBytes.block, stream->restSize, source, size, grow));
    const uint32_t count = stream->restSize + size;
    uint32_t taken = 0;
    const bool ready = stream->opened || count >= OpeningBytes(*stream) || last;
    if (ready) {
        if (!stream->opened) taken = Open(stream, bytes, count, last, grow);
        GrowOutput(stream, target, (uint64_t{count} + kSlack) * sizeof(char16_t), grow);
        char16_t* out = *target;
        if (stream->held) *out++ = stream->heldUnit;
        taken += DecodeForm(stream, bytes + taken, count - taken, last, &out, grow);
        stream->held = !last && out != *target && MustWait(out[-1]);
        if (stream->held) stream->heldUnit = *--out;
        *units = static_cast<uint32_t>(out - *target);
    }
    KeepRest(stream, bytes + taken, count - taken, grow);
    return size;
}

uint32_t EncodeChunk(Stream* stream, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                     int32_t chunk, NiraRealloc grow) {
    const bool last = chunk == kNiraLastChunk;
    *size = 0;
    if (chunk == kNiraFirstChunk) stream->restCount = 0;
    const auto* text = static_cast<const char16_t*>(
        Join(stream, stream->restUnits, size_t{stream->restCount} * 2, source, size_t{units} * 2, grow));
    const uint32_t count = stream->restCount + units;
    GrowOutput(stream, target, FirstRoom(count), grow);
    uint64_t bytes = 0;
    if (chunk == kNiraFirstChunk && stream->entry->mark) {
        const Mark& mark = MarkOfForm(stream->entry->form);
        std::memcpy(*target, mark.bytes, mark.size);
        bytes = mark.size;
    }
    uint32_t at = 0;
    while (at < count) {
        const uint32_t slice = std::min(count - at, kSlice);
        GrowOutput(stream, target, bytes + uint64_t{slice} * kBytesOfUnit + kSlack, grow);
        uint8_t* out = *target + bytes;
        const uint32_t taken = EncodeForm(*stream, text + at, slice, last && at + slice == count, &out);
        bytes = static_cast<uint64_t>(out - *target);
        if (taken == 0) break;
        at += taken;
    }
    *size = static_cast<uint32_t>(bytes);
    stream->restCount = count - at;
    if (stream->restCount > 0)
        std::memmove(stream->restUnits, text + at, stream->restCount * sizeof(char16_t));
    return units;
}

}  // namespace codecs
