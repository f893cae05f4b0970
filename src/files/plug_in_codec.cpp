#include "files/plug_in_codec.h"

#include <algorithm>
#include <iterator>

#include "app/services/memory.h"
#include "app/services/registry_key.h"
#include "platform/plug_in.h"

namespace nira {

namespace {

struct PlugInCodec {
    Codec codec;  // first: the record that the plug-in fills, and all that the outside knows
    const char16_t* name;
    LibraryHandle library;
    uint32_t index;
    bool faulted;
    bool failed;
    bool memoryRanOut;  // within the last call
    bool tookBytes;     // some decode has consumed something
    void** blocks;      // what the callback handed out and the plug-in still holds
    uint32_t blockCount;
};

PlugInCodec* Of(Codec* codec) { return reinterpret_cast<PlugInCodec*>(codec); }

constexpr const char16_t* kPlugInKey = u"Software\\NIRA\\Encodings";

// A rest of the last chunk that is longer than any character is no cut-off character: the decoder is stuck.
constexpr uint32_t kLongestCharacter = 16;

// Libraries that have faulted. They stay loaded, so that a handle means the same library for ever.
LibraryHandle faultedLibraries[16] = {};
size_t faultedCount = 0;

// When there is no room to note another one, no library is trusted any more.
bool IsTrusted(LibraryHandle library) {
    const LibraryHandle* first = faultedLibraries;
    const LibraryHandle* end = first + faultedCount;
    return faultedCount < std::size(faultedLibraries) && std::find(first, end, library) == end;
}

// ---- the reallocation callback ----

// The codec whose function is running; null outside a call.
PlugInCodec* running = nullptr;

uint32_t FindBlock(const PlugInCodec* codec, const void* block) {
    uint32_t i = 0;
    while (i < codec->blockCount && codec->blocks[i] != block) ++i;
    return i;
}

bool HasBlock(const PlugInCodec* codec, const void* block) {
    return FindBlock(codec, block) < codec->blockCount;
}

void ForgetBlock(PlugInCodec* codec, const void* block) {
    const uint32_t place = FindBlock(codec, block);
    if (place < codec->blockCount) codec->blocks[place] = codec->blocks[--codec->blockCount];
}

// Makes room to note one more block, which must not fail once there is a block to be noted.
void ReserveNote(PlugInCodec* codec) {
    const size_t needed = (size_t{codec->blockCount} + 1) * sizeof(void*);
    if (MemSize(nullptr, codec->blocks) >= needed) return;
    codec->blocks = static_cast<void**>(MemReAlloc(nullptr, codec->blocks, needed * 2));
}

void NoteBlock(PlugInCodec* codec, void* block) {
    if (block != nullptr) codec->blocks[codec->blockCount++] = block;
}

void* ReAllocNoted(PlugInCodec* codec, void* block, uint32_t size) {
    ReserveNote(codec);
    void* resized = MemReAlloc(nullptr, block, size);
    ForgetBlock(codec, block);
    NoteBlock(codec, resized);
    return resized;
}

void NoteFault(PlugInCodec* codec) {
    if (IsTrusted(codec->library)) faultedLibraries[faultedCount++] = codec->library;
    codec->faulted = true;
    codec->failed = true;
}

// Everything that memory running out leaves behind is in the codec, so that the plug-in's function can be
// left from here: its frames may come from any compiler, and an exception might not get through them.
void* Grow(void* block, uint32_t size) {
    PlugInCodec* codec = running;
    void* resized = nullptr;
    SuspendGuard();
    const bool known = codec != nullptr && (block == nullptr || HasBlock(codec, block));
    bool enough = true;
    if (known) enough = Guarded([&] { resized = ReAllocNoted(codec, block, size); });
    ResumeGuard();
    if (known && enough) return resized;
    if (codec == nullptr) return nullptr;  // a thread of the library's own: there is nobody to unwind to
    codec->memoryRanOut = !enough;
    if (!known) NoteFault(codec);
    LeaveGuard();
}

// ---- calls ----

// Runs `call`, one function of the plug-in's. False when it faulted, or did so before, or memory ran out in
// it.
template <typename Call>
bool Run(PlugInCodec* codec, Call call) {
    if (codec->faulted) return false;
    PlugInCodec* outer = running;
    running = codec;
    codec->memoryRanOut = false;
    const GuardedEnd end = RunBehindGuard([](void* context) { (*static_cast<Call*>(context))(); }, &call);
    running = outer;
    if (end == GuardedEnd::kFaulted) NoteFault(codec);
    return end == GuardedEnd::kReturned;
}

// Runs a function that works on the output buffer *target, which is the plug-in's for as long as that takes.
// *target becomes what the plug-in put there, or null when that is no block of its own. When memory runs out,
// *target is null and the buffer stays with the codec.
template <typename Unit, typename Call>
void RunOnOutput(PlugInCodec* codec, Unit** target, Call call) {
    ReserveNote(codec);
    NoteBlock(codec, *target);
    Unit* output = *target;
    *target = nullptr;
    if (!Run(codec, [&] { call(&output); })) codec->failed = true;
    if (codec->memoryRanOut) OutOfMemory(false);
    if (output != nullptr && !HasBlock(codec, output)) {
        codec->failed = true;
        return;
    }
    ForgetBlock(codec, output);
    *target = output;
}

// ---- making and destroying ----

using GetEncoder = uint32_t (*)(const char16_t* name, Codec* codec);

LibraryHandle LoadLibraryOf(const char16_t* name) {
    RegKey* key = RegKeyOpenExisting(RegistryRoot::kLocalMachine, kPlugInKey);
    const char16_t* path = RegKeyQueryText(key, name);
    const LibraryHandle library = path != nullptr ? LibraryLoad(path) : nullptr;
    RegKeyClose(key);
    return library;
}

// Has the plug-in fill the record. Only the low half of its answer counts: it may be of a 16-bit type.
bool FillRecord(PlugInCodec* codec) {
    const auto fill = reinterpret_cast<GetEncoder>(LibraryFind(codec->library, "GetEncoder"));
    if (fill == nullptr) return false;
    uint32_t answer = 0;
    if (!Run(codec, [&] { answer = fill(codec->name, &codec->codec); })) return false;
    const Codec& record = codec->codec;
    const bool whole = record.decode != nullptr && record.encode != nullptr && record.currentIndex != nullptr;
    return (answer & 0xFFFF) != 0 && whole;
}

bool SetUp(PlugInCodec* codec) {
    codec->library = LoadLibraryOf(codec->name);
    codec->codec.library = codec->library;
    if (codec->library == nullptr) return false;
    codec->faulted = !IsTrusted(codec->library);
    if (codec->faulted || !FillRecord(codec)) return false;
    Codec& record = codec->codec;
    record.library = codec->library;
    if (record.create == nullptr) return true;
    const bool created = Run(codec, [&] { record.state = record.create(codec->index, Grow); });
    if (codec->memoryRanOut) OutOfMemory(false);
    return created;
}

// A decoder that is stuck loses the end of a file, or all of it, without anybody being told.
bool IsStuck(const PlugInCodec* codec, uint32_t rest) {
    return rest > kLongestCharacter || (rest > 0 && !codec->tookBytes);
}

}  // namespace

Codec* CreatePlugInCodec(uint32_t index, const char16_t* name) {
    auto* codec = MemAllocArray<PlugInCodec>(nullptr, 1);
    codec->index = index;
    codec->name = name;
    bool made = false;
    const bool enough = Guarded([&] { made = SetUp(codec); });
    if (enough && made) return &codec->codec;
    DestroyPlugInCodec(&codec->codec);
    if (!enough) OutOfMemory(false);
    return nullptr;
}

// Memory that runs out in `destroy` stops nothing but that: there is no operation left to end.
bool DestroyPlugInCodec(Codec* codec) {
    PlugInCodec* plugIn = Of(codec);
    if (codec->destroy != nullptr) Run(plugIn, [&] { codec->destroy(codec->state, Grow); });
    const bool worked = !plugIn->failed;
    for (uint32_t i = 0; i < plugIn->blockCount; ++i) MemFree(nullptr, plugIn->blocks[i]);
    MemFree(nullptr, plugIn->blocks);
    if (!plugIn->faulted) LibraryFree(plugIn->library);
    MemFree(nullptr, plugIn);
    return worked;
}

uint32_t PlugInDecode(Codec* codec, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                      int32_t chunk) {
    *units = 0;
    PlugInCodec* plugIn = Of(codec);
    if (plugIn->failed) return kCodecFailed;
    uint32_t taken = 0;
    uint32_t count = 0;
    RunOnOutput(plugIn, target, [&](char16_t** output) {
        taken = codec->decode(codec->state, source, size, output, &count, chunk, Grow);
    });
    if (taken > 0) plugIn->tookBytes = true;
    if (uint64_t{count} * sizeof(char16_t) > MemSize(nullptr, *target)) plugIn->failed = true;
    if (taken > size) plugIn->failed = true;
    if (chunk == kLastChunk && !plugIn->failed && IsStuck(plugIn, size - taken)) plugIn->failed = true;
    if (plugIn->failed) return kCodecFailed;
    *units = count;
    return taken;
}

bool PlugInEncode(Codec* codec, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                  int32_t chunk) {
    *size = 0;
    PlugInCodec* plugIn = Of(codec);
    if (plugIn->failed) return false;
    uint32_t count = 0;
    RunOnOutput(plugIn, target, [&](uint8_t** output) {
        codec->encode(codec->state, source, units, output, &count, chunk, Grow);
    });
    if (count > MemSize(nullptr, *target)) plugIn->failed = true;
    if (plugIn->failed) return false;
    *size = count;
    return true;
}

uint32_t PlugInCurrentIndex(Codec* codec) {
    PlugInCodec* plugIn = Of(codec);
    if (plugIn->failed) return plugIn->index;
    uint32_t index = 0;
    if (Run(plugIn, [&] { index = codec->currentIndex(codec->state, Grow); })) return index;
    plugIn->failed = true;
    return plugIn->index;
}

void ForgetFaultedLibraries() { faultedCount = 0; }

uint32_t PlugInOwnIndex(const Codec* codec) { return reinterpret_cast<const PlugInCodec*>(codec)->index; }

}  // namespace nira
