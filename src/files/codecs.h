// Encodings: the list of codecs by name, and turning bytes into UTF-16 and back.
//
// A codec index is a position in the list: five built-in ones, then the plug-ins named in the registry.
// Loading and saving make one Codec each and destroy it at the end.
#pragma once

#include <cstdint>

#include "files/codec.h"

namespace nira {

// The list: `count` names. A slot may be null (an enumeration of the registry that failed leaves one).
struct CodecList {
    char16_t** names;
    uint32_t count;
};

// Reads the plug-ins' names from the registry. Returns 1; 0 when memory ran out.
int InitCodecs();
void FreeCodecs();

const CodecList& TheCodecList();

// The name of an index; that of entry 0 for an index out of range or an empty slot.
const char16_t* CodecName(uint32_t index);

// The first index with exactly this name; 0 when there is none.
uint32_t CodecIndex(const char16_t* name);

// The index of the Options' default encoding.
uint32_t DefaultCodec();

// A codec for one load or save; null when it cannot be made, which is a plug-in's doing. Destroy it with
// DestroyCodec. Unwinds when memory runs out.
Codec* CreateCodec(uint32_t index);

// False when the codec has failed, at any time up to its end: what came through it is not to be trusted. Only
// a plug-in's can (files/plug_in_codec.h). Null is ignored, and true.
bool DestroyCodec(Codec* codec);

bool IsPlugIn(const Codec* codec);

// Calls through the record's slots. *target is null or what an earlier call left; the caller frees it in the
// end with MemFree on the local heap. CodecDecode gives the bytes consumed, or kCodecFailed; CodecEncode
// gives false when the codec has failed. Nothing was produced then.
uint32_t CodecDecode(Codec* codec, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                     int32_t chunk);
bool CodecEncode(Codec* codec, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                 int32_t chunk);

// The list index now in effect. Of a codec that has failed, or reports what is not in the list: the one that
// it was made for.
uint32_t CodecCurrentIndex(Codec* codec);

}  // namespace nira
