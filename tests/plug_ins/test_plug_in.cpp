// A plug-in library that behaves as the name of its codec says: well, or badly in one certain way.
//
// The tests register copies of it under such names. A byte is one unit of the same value, and back.
#include <windows.h>

#include <string_view>

#include "files/codec.h"

namespace {

using nira::Codec;
using nira::ReallocCallback;

// How the codec behaves; one at a time is enough.
std::u16string_view behaviour;

bool Is(const char16_t* name) { return behaviour == name; }

// Not inlined and with a use of its own after the call, so that every level needs stack.
__attribute__((noinline)) int UseUpTheStack(volatile int* above) {
    volatile int here[200] = {*above};
    return UseUpTheStack(here) + here[0];
}

volatile int sink = 0;
int stranger[100];

struct Thrown {};

void Fault() {
    if (Is(u"divides by zero")) {
        sink = 700 / sink;
    } else if (Is(u"knows no instruction")) {
        __builtin_trap();
    } else if (Is(u"uses up the stack")) {
        volatile int start = 0;
        sink = UseUpTheStack(&start);
    } else if (Is(u"throws")) {
        throw Thrown();
    } else if (Is(u"raises what nobody may continue")) {
        RaiseException(0xE0000001, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    } else if (Is(u"jumps to nowhere")) {
        volatile uintptr_t nowhere = 0x10;
        reinterpret_cast<void (*)()>(nowhere)();
    } else {
        volatile uintptr_t nowhere = 0x10;
        *reinterpret_cast<volatile int*>(nowhere) = 1;
    }
}

bool IsOneOfManyFaults() {
    for (const char16_t* name : {u"divides by zero", u"knows no instruction", u"uses up the stack", u"throws",
                                 u"raises what nobody may continue", u"jumps to nowhere"}) {
        if (Is(name)) return true;
    }
    return false;
}

void* Create(uint32_t, ReallocCallback grow) {
    if (Is(u"faults in create")) Fault();
    return grow(nullptr, 8);
}

uint32_t Decode(void*, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                int32_t chunk, ReallocCallback grow) {
    if (Is(u"faults in decode") || IsOneOfManyFaults()) Fault();
    if (Is(u"faults in the second chunk") && chunk != nira::kFirstChunk) Fault();
    *units = 0;
    if (Is(u"takes nothing")) return 0;
    if (Is(u"grows a foreign block")) *target = static_cast<char16_t*>(grow(stranger, 100));
    *target = static_cast<char16_t*>(grow(*target, (size + 1) * sizeof(char16_t)));
    for (uint32_t i = 0; i < size; ++i) (*target)[i] = source[i];
    *units = size;
    if (Is(u"counts too much")) *units = 10 * size + 1000;
    if (Is(u"gives a foreign buffer")) *target = reinterpret_cast<char16_t*>(stranger);
    return Is(u"takes too much") ? size + 1 : size;
}

uint32_t Encode(void*, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                int32_t chunk, ReallocCallback grow) {
    if (Is(u"faults in encode")) Fault();
    if (Is(u"faults in the last block") && chunk == nira::kLastChunk) Fault();
    *target = static_cast<uint8_t*>(grow(*target, units + 1));
    for (uint32_t i = 0; i < units; ++i) (*target)[i] = static_cast<uint8_t>(source[i]);
    *size = Is(u"encodes too much") ? units + 1000000 : units;
    return units;
}

void Destroy(void* state, ReallocCallback grow) {
    if (Is(u"faults in destroy")) Fault();
    grow(state, 0);
}

uint32_t CurrentIndex(void*, ReallocCallback) {
    if (Is(u"faults in currentIndex")) Fault();
    return Is(u"reports no index") ? 4000 : nira::kBuiltInCodecs;
}

}  // namespace

#ifdef NIRA_TEST_NO_EXPORT
#define NIRA_TEST_ENTRY GetSomethingElse
#else
#define NIRA_TEST_ENTRY GetEncoder
#endif

extern "C" __declspec(dllexport) uint32_t NIRA_TEST_ENTRY(const char16_t* name, Codec* codec) {
    behaviour = name;
    if (Is(u"faults in GetEncoder")) Fault();
    codec->create = Create;
    codec->decode = Is(u"leaves decode out") ? nullptr : Decode;
    codec->encode = Encode;
    codec->destroy = Destroy;
    codec->currentIndex = CurrentIndex;
    if (Is(u"refuses")) return 0x10000;  // the low half counts
    return 1;
}

#ifdef NIRA_TEST_START_FAULTS
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) Fault();
    return TRUE;
}
#endif
