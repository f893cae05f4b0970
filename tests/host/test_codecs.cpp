#include "files/codecs.h"

#include <vector>

#include "app/services/registry_key.h"
#include "host/codec_stream.h"

namespace nira {
namespace {

constexpr const char16_t* kKey = u"Software\\NIRA\\Encodings";

std::vector<std::u16string> Names() {
    std::vector<std::u16string> names;
    for (uint32_t i = 0; i < TheCodecList().count; ++i) {
        const char16_t* name = TheCodecList().names[i];
        names.push_back(name != nullptr ? name : u"(null)");
    }
    return names;
}

void AddPlugIn(const char16_t* name) {
    RegistryMemorySetString(RegistryRoot::kLocalMachine, kKey, name, u"\\plugin.dll");
}

const std::vector<std::u16string> kBuiltIns = {u"ANSI", u"Unicode", u"Unicode Little Endian",
                                               u"Unicode Big Endian", u"UTF-8"};

std::vector<std::u16string> BuiltInsAnd(std::initializer_list<std::u16string> more) {
    std::vector<std::u16string> names = kBuiltIns;
    names.insert(names.end(), more);
    return names;
}

class CodecList : public ServicesTest {};
class Codecs : public ServicesTest {};

// ---- the list ----

TEST_F(CodecList, HoldsTheBuiltInsWhenThereIsNoKey) {
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(Names(), kBuiltIns);
    EXPECT_FALSE(RegistryMemoryHasKey(RegistryRoot::kLocalMachine, kKey)) << "the key was made";
}

TEST_F(CodecList, HoldsTheBuiltInsWhenTheKeyIsEmpty) {
    AddPlugIn(u"x");
    RegKey* key = RegKeyOpen(RegistryRoot::kLocalMachine, kKey);
    RegKeyDeleteValue(key, u"x");
    RegKeyClose(key);
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(Names(), kBuiltIns);
}

TEST_F(CodecList, SortsPlugInsByUnitBehindTheBuiltIns) {
    for (const char16_t* name : {u"b", u"Zulu", u"a", u"\uFF21", u"a2"}) AddPlugIn(name);
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(Names(), BuiltInsAnd({u"Zulu", u"a", u"a2", u"b", u"\uFF21"}));
}

TEST_F(CodecList, ReadsTheMachinesKeyOnly) {
    RegistryMemorySetString(RegistryRoot::kCurrentUser, kKey, u"mine", u"x");
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(Names(), kBuiltIns);
}

TEST_F(CodecList, EndsWithAnEmptySlotWhereEnumerationFails) {
    for (const char16_t* name : {u"c", u"b", u"a"}) AddPlugIn(name);
    FaultScope fault(FaultPoint::kRegistryEnum, {.first = 3});
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(Names(), BuiltInsAnd({u"b", u"c", u"(null)"}));
}

TEST_F(CodecList, IsOneEmptySlotWhenTheFirstEnumerationFails) {
    for (const char16_t* name : {u"c", u"b", u"a"}) AddPlugIn(name);
    FaultScope fault(FaultPoint::kRegistryEnum, {.first = 1});
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(Names(), BuiltInsAnd({u"(null)"}));
}

TEST_F(CodecList, ReadersStepOverAnEmptySlot) {
    AddPlugIn(u"x");
    FaultScope fault(FaultPoint::kRegistryEnum, {.first = 1});
    ASSERT_EQ(InitCodecs(), 1);
    ASSERT_EQ(TheCodecList().count, 6u);
    EXPECT_EQ(std::u16string(CodecName(5)), u"ANSI");
    EXPECT_EQ(CodecIndex(u"x"), 0u);
    EXPECT_EQ(CodecIndex(u""), 0u);
    EXPECT_EQ(CreateCodec(5), nullptr);
}

TEST_F(CodecList, FallsBackToTheBuiltInsWhenTheRegistryFails) {
    for (const FaultPoint point : {FaultPoint::kRegistryOpen, FaultPoint::kRegistryInfo}) {
        AddPlugIn(u"x");
        FaultScope fault(point, {.first = 1, .howMany = kFaultForever});
        ASSERT_EQ(InitCodecs(), 1);
        EXPECT_EQ(Names(), kBuiltIns);
    }
}

TEST_F(CodecList, FindsNamesExactly) {
    AddPlugIn(u"KOI8-R");
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(CodecIndex(u"UTF-8"), 4u);
    EXPECT_EQ(CodecIndex(u"KOI8-R"), 5u);
    EXPECT_EQ(CodecIndex(u"koi8-r"), 0u);
    EXPECT_EQ(CodecIndex(u"UTF-"), 0u);
    EXPECT_EQ(CodecIndex(u"UTF-8 "), 0u);
    EXPECT_EQ(CodecIndex(nullptr), 0u);
}

TEST_F(CodecList, NamesIndicesAndGivesAnsiForOthers) {
    AddPlugIn(u"KOI8-R");
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(std::u16string(CodecName(3)), u"Unicode Big Endian");
    EXPECT_EQ(std::u16string(CodecName(5)), u"KOI8-R");
    EXPECT_EQ(std::u16string(CodecName(6)), u"ANSI");
    EXPECT_EQ(std::u16string(CodecName(0xFFFFFFFF)), u"ANSI");
}

TEST_F(CodecList, GivesTheDefaultCodecOfTheOptions) {
    ASSERT_EQ(InitCodecs(), 1);
    TheOptions().defaultEncoding = MemStrDup(nullptr, u"UTF-8");
    EXPECT_EQ(DefaultCodec(), 4u);
    MemFree(nullptr, TheOptions().defaultEncoding);
    TheOptions().defaultEncoding = MemStrDup(nullptr, u"not installed");
    EXPECT_EQ(DefaultCodec(), 0u);
    MemFree(nullptr, TheOptions().defaultEncoding);
    TheOptions().defaultEncoding = nullptr;
    EXPECT_EQ(DefaultCodec(), 0u);
}

TEST_F(CodecList, IsEmptyAfterItIsFreed) {
    AddPlugIn(u"x");
    ASSERT_EQ(InitCodecs(), 1);
    FreeCodecs();
    EXPECT_EQ(TheCodecList().count, 0u);
    EXPECT_EQ(std::u16string(CodecName(4)), u"ANSI");
    EXPECT_EQ(CodecIndex(u"UTF-8"), 0u);
}

TEST_F(CodecList, IsNotMadeWhenMemoryRunsOut) {
    for (const char16_t* name : {u"c", u"b", u"a"}) AddPlugIn(name);
    const size_t before = HostHeapLiveBlocks(nullptr);
    uint32_t failures = 0;
    for (uint32_t call = 1; call < 50; ++call) {
        HostShellLogReset();
        uint32_t hits = 0;
        int made = 0;
        {
            FaultScope fault(FaultPoint::kAllocation, {.first = call});
            made = InitCodecs();
            hits = fault.Hits();
        }
        EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
        if (hits == 0) {
            EXPECT_EQ(made, 1);
            EXPECT_EQ(Names(), BuiltInsAnd({u"a", u"b", u"c"}));
            break;
        }
        ++failures;
        EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
        // The very first block is the registry key's: without it the list is the built-ins alone.
        EXPECT_EQ(made, call == 1 ? 1 : 0);
        EXPECT_EQ(TheCodecList().count, made == 0 ? 0u : kBuiltInCodecs);
        FreeCodecs();
        EXPECT_EQ(HostHeapLiveBlocks(nullptr), before);
    }
    EXPECT_EQ(failures, 6u) << "key, name buffer, slots, three names";
}

// ---- making codecs ----

TEST_F(Codecs, CannotBeMadeForPlugInsAndUnknownIndices) {
    AddPlugIn(u"x");
    ASSERT_EQ(InitCodecs(), 1);
    EXPECT_EQ(CreateCodec(5), nullptr);
    EXPECT_EQ(CreateCodec(6), nullptr);
    EXPECT_EQ(CreateCodec(0xFFFFFFFF), nullptr);
    DestroyCodec(nullptr);
}

TEST_F(Codecs, UnwindWithoutALeakWhenMemoryRunsOut) {
    for (uint32_t call = 1; call <= 2; ++call) {
        HostShellLogReset();
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        EXPECT_FALSE(Guarded([] { CreateCodec(kCodecUtf8); }));
        EXPECT_EQ(HostShellLog().memoryBoxes, 1u);
    }
}

TEST_F(Codecs, ReportTheirIndexAtFirst) {
    for (uint32_t index = 0; index < kBuiltInCodecs; ++index) EXPECT_EQ(Stream(index).Index(), index);
}

// ---- output buffers ----

TEST_F(Codecs, KeepAnOutputBufferThatIsLargeEnough) {
    Stream stream(kCodecUtf8);
    stream.Decode("0123456789");
    const char16_t* text = stream.text;
    HostShellLogReset();
    stream.Decode("01234", kMiddleChunk);
    EXPECT_EQ(stream.text, text);
    stream.Encode(u"0123456789");
    stream.Encode(u"01234", kMiddleChunk);
    EXPECT_EQ(HostShellLog().requests, 1u) << "one for the encoder's first buffer";
}

}  // namespace
}  // namespace nira
