// Codecs of plug-in libraries: finding the library, calling it, and not believing it.
//
// A plug-in's functions come from people nobody here knows. Each call runs behind the platform's guard, and
// what it answers is checked before anything relies on it. A codec has failed when a call of it faulted or
// broke the contract: it took more than it was given, took nothing at all of a stream, reported more than its
// output buffer holds, or gave back a buffer that did not come from the reallocation callback. A codec that
// has failed is only destroyed; after a fault not even that, and its library is neither called nor freed
// again by any later codec.
//
// The blocks that the callback hands out are noted with the codec while the plug-in holds them. So a block
// that is not one of them is never handed to the heap, and what a plug-in leaves behind is freed with its
// codec.
#pragma once

#include <cstdint>

#include "files/codec.h"

namespace nira {

// A codec of the library that the registry names for `name`, at list index `index`. Null when there is no
// such value, no such library, no "GetEncoder" in it, when that one refuses or leaves a function out, or when
// either of its first calls faults. Unwinds when memory runs out. `name` must stay where it is.
Codec* CreatePlugInCodec(uint32_t index, const char16_t* name);

// Destroys the codec and lets go of its library. False when the codec has failed, now or before.
bool DestroyPlugInCodec(Codec* codec);

// The calls of files/codecs.h. They unwind when memory ran out in the callback; the plug-in's function is
// then left where it stands, and only its `destroy` is called after that.
uint32_t PlugInDecode(Codec* codec, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                      int32_t chunk);
bool PlugInEncode(Codec* codec, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                  int32_t chunk);

// What the plug-in reports, which may be no index of the list; the index it was made for when it fails.
uint32_t PlugInCurrentIndex(Codec* codec);

// Forgets which libraries have faulted. For the program's end: until then they must not be touched.
void ForgetFaultedLibraries();

// The index it was made for.
uint32_t PlugInOwnIndex(const Codec* codec);

}  // namespace nira
