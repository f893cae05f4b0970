#include "codecs/library.h"

#include <utility>

#include "codecs/catalog.h"
#include "codecs/stream.h"

namespace codecs {

namespace {

using Create = void* (*)(uint32_t listIndex, NiraRealloc grow);

// `create` is not told the name, so every encoding has a function of its own.
template <uint32_t kEntry>
void* CreateFor(uint32_t listIndex, NiraRealloc grow) {
    return CreateStream(&kEntries[kEntry], listIndex, grow);
}

template <uint32_t... kEntry>
Create CreateOf(uint32_t entry, std::integer_sequence<uint32_t, kEntry...>) {
    static constexpr Create kFunctions[] = {CreateFor<kEntry>...};
    return kFunctions[entry];
}

uint32_t Decode(void* state, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                int32_t chunk, NiraRealloc grow) {
    return DecodeChunk(static_cast<Stream*>(state), source, size, target, units, chunk, grow);
}

uint32_t Encode(void* state, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                int32_t chunk, NiraRealloc grow) {
    return EncodeChunk(static_cast<Stream*>(state), source, units, target, size, chunk, grow);
}

void Destroy(void* state, NiraRealloc grow) { DestroyStream(static_cast<Stream*>(state), grow); }

uint32_t CurrentIndex(void* state, NiraRealloc) { return static_cast<Stream*>(state)->activeIndex; }

}  // namespace

bool FillCodec(const char16_t* name, NiraCodec* codec) {
    const Entry* entry = FindEntry(name);
    if (entry == nullptr || !EntryIsAvailable(*entry)) return false;
    codec->create = CreateOf(static_cast<uint32_t>(entry - kEntries),
                             std::make_integer_sequence<uint32_t, kEntryCount>());
    codec->decode = Decode;
    codec->encode = Encode;
    codec->destroy = Destroy;
    codec->currentIndex = CurrentIndex;
    return true;
}

}  // namespace codecs
