// A codec library as small as one can be: "Example Latin-1", in which each byte is the character of its
// number. docs/plugins.md walks through it.
#include "nira_codec.h"

namespace {

struct State {
    uint32_t listIndex;
    bool heldCr;  // a CR at the end of a chunk: the LF that may belong to it comes with the next
};

void* Create(uint32_t listIndex, NiraRealloc grow) {
    auto* state = static_cast<State*>(grow(nullptr, sizeof(State)));
    state->listIndex = listIndex;
    return state;
}

uint32_t Decode(void* opaque, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                int32_t chunk, NiraRealloc grow) {
    auto* state = static_cast<State*>(opaque);
    *target = static_cast<char16_t*>(grow(*target, (size + 1) * sizeof(char16_t)));
    char16_t* out = *target;
    if (state->heldCr) *out++ = u'\r';
    for (uint32_t i = 0; i < size; ++i) *out++ = source[i];
    state->heldCr = chunk != kNiraLastChunk && out != *target && out[-1] == u'\r';
    if (state->heldCr) --out;
    *units = static_cast<uint32_t>(out - *target);
    return size;
}

uint32_t Encode(void*, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size, int32_t,
                NiraRealloc grow) {
    if (units > 0) *target = static_cast<uint8_t*>(grow(*target, units));
    for (uint32_t i = 0; i < units; ++i) {
        (*target)[i] = source[i] <= 0xFF ? static_cast<uint8_t>(source[i]) : '?';
    }
    *size = units;
    return units;
}

void Destroy(void* opaque, NiraRealloc grow) { grow(opaque, 0); }

uint32_t CurrentIndex(void* opaque, NiraRealloc) { return static_cast<State*>(opaque)->listIndex; }

bool IsOurs(const char16_t* name) {
    const char16_t* ours = u"Example Latin-1";
    while (*ours != 0 && *ours == *name) {
        ++ours;
        ++name;
    }
    return *ours == *name;
}

}  // namespace

extern "C" __declspec(dllexport) uint32_t GetEncoder(const char16_t* name, NiraCodec* codec) {
    if (!IsOurs(name)) return 0;
    codec->create = Create;
    codec->decode = Decode;
    codec->encode = Encode;
    codec->destroy = Destroy;
    codec->currentIndex = CurrentIndex;
    return 1;
}
