#include "files/codecs.h"

#include <algorithm>

#include "app/services/memory.h"
#include "app/services/registry_key.h"
#include "base/utf16.h"
#include "files/codec_ansi.h"
#include "files/codec_unicode.h"
#include "files/plug_in_codec.h"
#include "settings/options.h"

namespace nira {

namespace {

constexpr const char16_t* kPlugInKey = u"\\Software\\NIRA\\Encodings";

char16_t nameAnsi[] = u"ANSI";
char16_t nameUnicode[] = u"Unicode";
char16_t nameUtf16Le[] = u"Unicode Little Endian";
char16_t nameUtf16Be[] = u"Unicode Big Endian";
char16_t nameUtf8[] = u"UTF-8";
char16_t* const kBuiltInNames[kBuiltInCodecs] = {nameAnsi, nameUnicode, nameUtf16Le, nameUtf16Be, nameUtf8};

CodecList theList = {nullptr, 0};

void* GrowOnLocalHeap(void* block, uint32_t size) { return MemReAlloc(nullptr, block, size); }

// What building the list holds apart from the list; released in every case.
struct PlugInNames {
    RegKey* key;
    uint32_t values;
    char16_t* buffer;  // room for the longest name
    uint32_t room;     // of `buffer`, in units
};

// Copies the value names behind the built-in ones. When the registry gives up half-way, the count becomes one
// more than the names there are: an empty slot ends the list, and every reader steps over it.
void CopyNames(CodecList* list, PlugInNames* names) {
    for (uint32_t i = 0; i < names->values; ++i) {
        uint32_t length = names->room;
        if (!RegKeyEnumValue(names->key, i, names->buffer, &length)) {
            list->count = i + kBuiltInCodecs + 1;
            return;
        }
        list->names[kBuiltInCodecs + i] = MemStrDup(nullptr, names->buffer);
        list->count = kBuiltInCodecs + i + 1;
    }
}

// Empty slots go behind the names, where the count leaves all but one of them out.
bool NameBefore(const char16_t* left, const char16_t* right) {
    if (left == nullptr || right == nullptr) return left != nullptr;
    return Utf16Compare(left, right) < 0;
}

void FillList(CodecList* list, PlugInNames* names) {
    uint32_t longest = 0;
    RegKeyQueryInfo(names->key, &names->values, &longest);
    names->room = longest + 1;
    names->buffer = MemAllocArray<char16_t>(nullptr, names->room);
    list->names = MemAllocArray<char16_t*>(nullptr, size_t{names->values} + kBuiltInCodecs);
    std::copy_n(kBuiltInNames, kBuiltInCodecs, list->names);
    list->count = kBuiltInCodecs;
    CopyNames(list, names);
    char16_t** plugIns = list->names + kBuiltInCodecs;
    std::sort(plugIns, plugIns + names->values, NameBefore);
}

void FreeList(CodecList* list) {
    for (uint32_t i = kBuiltInCodecs; i < list->count; ++i) MemFree(nullptr, list->names[i]);
    MemFree(nullptr, list->names);
    *list = {nullptr, 0};
}

// False, with an empty list, when memory runs out.
bool BuildList(CodecList* list) {
    PlugInNames names = {};
    names.key = RegKeyOpenExisting(RegistryRoot::kLocalMachine, kPlugInKey);
    const bool built = Guarded([&] { FillList(list, &names); });
    MemFree(nullptr, names.buffer);
    RegKeyClose(names.key);
    if (!built) FreeList(list);
    return built;
}

uint32_t FindName(const char16_t* name, uint32_t otherwise) {
    for (uint32_t i = 0; i < theList.count; ++i) {
        if (theList.names[i] != nullptr && Utf16Compare(theList.names[i], name) == 0) return i;
    }
    return otherwise;
}

// The place in the list of what a library reports. It reckons from the names in the registry as they are now,
// where encodings may have come and gone since the list was made; the name is what it means.
uint32_t PlaceOfReported(uint32_t index, uint32_t own) {
    CodecList now = {nullptr, 0};
    uint32_t place = own;
    if (BuildList(&now) && index < now.count && now.names[index] != nullptr)
        place = FindName(now.names[index], own);
    FreeList(&now);
    return place;
}

bool IsListed(uint32_t index) { return index < theList.count && theList.names[index] != nullptr; }

Codec* CreateBuiltIn(uint32_t index) {
    auto* codec = MemAllocArray<Codec>(nullptr, 1);
    const bool enough = Guarded([&] {
        if (index == kCodecAnsi) {
            SetUpAnsiCodec(codec);
        } else {
            SetUpUnicodeCodec(codec, index);
        }
    });
    if (enough) return codec;
    DestroyCodec(codec);
    OutOfMemory(false);
}

}  // namespace

int InitCodecs() {
    FreeCodecs();
    return BuildList(&theList) ? 1 : 0;
}

void FreeCodecs() {
    FreeList(&theList);
    ForgetFaultedLibraries();
}

const CodecList& TheCodecList() { return theList; }

const char16_t* CodecName(uint32_t index) {
    const char16_t* name = index < theList.count ? theList.names[index] : nullptr;
    return name != nullptr ? name : nameAnsi;
}

uint32_t CodecIndex(const char16_t* name) { return FindName(name, kCodecAnsi); }

uint32_t DefaultCodec() { return CodecIndex(TheOptions().defaultEncoding); }

Codec* CreateCodec(uint32_t index) {
    if (index < kBuiltInCodecs) return CreateBuiltIn(index);
    return IsListed(index) ? CreatePlugInCodec(index, theList.names[index]) : nullptr;
}

bool DestroyCodec(Codec* codec) {
    if (codec == nullptr) return true;
    if (IsPlugIn(codec)) return DestroyPlugInCodec(codec);
    if (codec->destroy != nullptr) codec->destroy(codec->state, GrowOnLocalHeap);
    MemFree(nullptr, codec);
    return true;
}

bool IsPlugIn(const Codec* codec) { return codec->library != nullptr; }

uint32_t CodecDecode(Codec* codec, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                     int32_t chunk) {
    if (IsPlugIn(codec)) return PlugInDecode(codec, source, size, target, units, chunk);
    return codec->decode(codec->state, source, size, target, units, chunk, GrowOnLocalHeap);
}

bool CodecEncode(Codec* codec, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                 int32_t chunk) {
    if (IsPlugIn(codec)) return PlugInEncode(codec, source, units, target, size, chunk);
    codec->encode(codec->state, source, units, target, size, chunk, GrowOnLocalHeap);
    return true;
}

uint32_t CodecCurrentIndex(Codec* codec) {
    if (!IsPlugIn(codec)) return codec->currentIndex(codec->state, GrowOnLocalHeap);
    return PlaceOfReported(PlugInCurrentIndex(codec), PlugInOwnIndex(codec));
}

}  // namespace nira
