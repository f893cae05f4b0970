#include "files/plug_in_codec.h"

#include <string>

#include "app/services/registry_key.h"
#include "files/load.h"
#include "files/save.h"
#include "host/codec_stream.h"
#include "host/plug_in_fixture.h"
#include "platform/host/libraries.h"

namespace nira::plug_in_test {
namespace {

// ---- a plug-in that behaves ----

TEST_F(PlugIn, GetsItsNameItsIndexAndItsState) {
    const Stream stream(5);
    ASSERT_NE(stream.codec, nullptr);
    EXPECT_EQ(fake.name, u"fake");
    EXPECT_EQ(fake.createdFor, 5u);
    EXPECT_NE(stream.codec->state, nullptr);
    EXPECT_NE(stream.codec->library, nullptr);
    EXPECT_TRUE(IsPlugIn(stream.codec));
    EXPECT_FALSE(IsPlugIn(Stream(kCodecUtf8).codec));
}

TEST_F(PlugIn, IsDestroyedAndItsLibraryLetGo) {
    EXPECT_TRUE(DestroyCodec(CreateCodec(5)));
    EXPECT_EQ(CallsOf(Place::kDestroy), 1);
    EXPECT_EQ(HostLibrariesLoaded(), 0);
}

TEST_F(PlugIn, NeedsNeitherCreateNorDestroy) {
    fake.withCreate = false;
    fake.withDestroy = false;
    {
        Stream stream(5);
        EXPECT_EQ(stream.codec->state, nullptr);
        EXPECT_EQ(stream.Decode("abc"), u"abc");
    }
    EXPECT_EQ(CallsOf(Place::kDestroy), 0);
}

TEST_F(PlugIn, MayHaveNoState) {
    fake.grownState = false;
    Stream stream(5);
    EXPECT_EQ(stream.Decode("abc"), u"abc");
}

TEST_F(PlugIn, ConvertsBothWaysInOneReusedBuffer) {
    Stream stream(5);
    EXPECT_EQ(stream.Decode("abc\xE9"), u"abc\u00E9");
    EXPECT_EQ(stream.Decode("de", kMiddleChunk), u"de");
    EXPECT_EQ(stream.Encode(u"abc\u00E9"), "abc\xE9");
    EXPECT_EQ(stream.Encode(u"d", kLastChunk), "d");
    EXPECT_EQ(fake.chunks, (std::vector<int32_t>{1, 0, 1, -1}));
}

TEST_F(PlugIn, LoadsAndSavesAFile) {
    const std::string bytes(50000, 'x');
    ASSERT_EQ(LoadBytes(bytes + "\n\xE9"), 1);
    EXPECT_EQ(Text(editor), Wide(bytes) + u"\n\u00E9");
    EXPECT_EQ(editor->codecId, 5u);
    ASSERT_EQ(Save(editor), 1);
    EXPECT_EQ(folder.Get("f.txt"), bytes + "\n\xE9");
    EXPECT_TRUE(MessageLog().empty());
    EXPECT_EQ(CallsOf(Place::kDestroy), CallsOf(Place::kCreate));
}

TEST_F(PlugIn, AnEmptyFileIsNotOneThatWasNeverTaken) {
    EXPECT_EQ(LoadBytes(""), 1);
    EXPECT_EQ(fake.chunks, (std::vector<int32_t>{-1}));
}

TEST_F(PlugIn, ReportsTheIndexInEffect) {
    fake.currentIndex = kCodecUtf8;
    ASSERT_EQ(LoadBytes("a"), 1);
    EXPECT_EQ(editor->codecId, kCodecUtf8);
}

TEST_F(PlugIn, AnIndexOutsideTheListStandsForTheCodecItself) {
    for (const uint32_t index : {6u, 4000u, 0xFFFFFFFFu}) {
        fake.currentIndex = index;
        ASSERT_EQ(LoadBytes("a"), 1);
        EXPECT_EQ(editor->codecId, 5u);
        EXPECT_EQ(Save(editor), 1);
    }
}

// ---- plug-ins that cannot be made ----

TEST_F(PlugIn, NeedsALibraryThatExportsGetEncoder) {
    Register(u"C:\\missing.dll");
    EXPECT_EQ(CreateCodec(5), nullptr);
    Register(u"");
    EXPECT_EQ(CreateCodec(5), nullptr);
    HostLibraryExport(u"C:\\other.dll", "getencoder", reinterpret_cast<LibraryFunction>(GetEncoder));
    Register(u"C:\\other.dll");
    EXPECT_EQ(CreateCodec(5), nullptr);
    EXPECT_EQ(HostLibrariesLoaded(), 0);
    EXPECT_EQ(HostGuardedRuns(), 0);
}

TEST_F(PlugIn, IsNotMadeWhenItsValueOrKeyHasGone) {
    RegKey* key = RegKeyOpen(RegistryRoot::kLocalMachine, kKey);
    RegKeyDeleteValue(key, u"fake");
    RegKeyClose(key);
    EXPECT_EQ(CreateCodec(5), nullptr);
    RegistryMemoryDeleteKey(RegistryRoot::kLocalMachine, kKey);
    EXPECT_EQ(CreateCodec(5), nullptr);
}

TEST_F(PlugIn, OnlyTheLowHalfOfTheAnswerCounts) {
    for (const uint32_t refusal : {0u, 0x10000u, 0xFFFF0000u}) {
        fake.answer = refusal;
        EXPECT_EQ(CreateCodec(5), nullptr);
    }
    EXPECT_EQ(CallsOf(Place::kCreate), 0);
    EXPECT_EQ(CallsOf(Place::kDestroy), 3) << "what it may have begun is its own to end";
    for (const uint32_t consent : {1u, 0x8000u, 0xABCD0001u}) {
        fake.answer = consent;
        Codec* codec = CreateCodec(5);
        EXPECT_NE(codec, nullptr);
        DestroyCodec(codec);
    }
}

TEST_F(PlugIn, MustFillTheRecord) {
    fake.leavesDecodeOut = true;
    EXPECT_EQ(CreateCodec(5), nullptr);
    EXPECT_EQ(CallsOf(Place::kCreate), 0);
    EXPECT_EQ(HostLibrariesLoaded(), 0);
}

TEST_F(PlugIn, ThatCannotBeMadeIsToldOnLoadingAndSaving) {
    fake.answer = 0;
    EXPECT_EQ(LoadBytes("abc"), 0);
    ExpectMessage(u"Error initializing decoder");
    MakeOverOld(1);
    EXPECT_EQ(Save(editor), 0);
    ExpectMessage(u"Error initializing encoder");
    EXPECT_EQ(folder.Get("f.txt"), "old");
    EXPECT_EQ(editor->saveFailed, 1);
}

// ---- plug-ins that fault ----

TEST_F(PlugIn, ThatFaultsWhileItIsMadeIsToldAndNotCalledAgain) {
    for (const Place place : {Place::kGetEncoder, Place::kCreate}) {
        Break(place);
        EXPECT_EQ(LoadBytes("abc"), 0);
        ExpectMessage(u"Error initializing decoder");
        EXPECT_EQ(CallsOf(Place::kDestroy), 0);
        ExpectDistrust();
        MakeOverOld(0);
        EXPECT_EQ(Save(editor), 0);
        ExpectMessage(u"Error initializing encoder");
        EXPECT_EQ(folder.Get("f.txt"), "old");
        distrusted_ = HostLibrariesLoaded();
    }
}

TEST_F(PlugIn, ThatFaultsOnLoadingIsAReadError) {
    for (const Place place : {Place::kDecode, Place::kCurrentIndex, Place::kDestroy}) {
        Break(place);
        EXPECT_EQ(LoadBytes("abc"), 0);
        ExpectMessage(u"Error reading file");
        EXPECT_EQ(editor->codecId, 5u);
        EXPECT_EQ(editor->flags, 0u);
        EXPECT_EQ(CallsOf(Place::kDestroy), place == Place::kDestroy ? 1 : 0);
        EXPECT_EQ(folder.Get("f.txt"), "abc");
        ExpectDistrust();
    }
}

TEST_F(PlugIn, ThatFaultsLaterKeepsWhatWasRead) {
    Break(Place::kDecode, Wrong::kFault, 2);
    EXPECT_EQ(LoadBytes(std::string(kReadBlock + 100, 'x')), 0);
    ExpectMessage(u"Error reading file");
    EXPECT_EQ(Text(editor), std::u16string(kReadBlock, u'x'));
    ExpectDistrust();
}

TEST_F(PlugIn, ThatFaultsOnSavingLeavesTheOldFile) {
    for (const uint32_t safeSave : {0u, 1u}) {
        for (const Place place : {Place::kEncode, Place::kDestroy}) {
            for (int call = 1; call <= (place == Place::kEncode ? 2 : 1); ++call) {
                Break(place, Wrong::kFault, call);
                MakeOverOld(safeSave);
                EXPECT_EQ(Save(editor), 0);
                ExpectMessage(u"Error writing file");
                EXPECT_EQ(folder.Get("f.txt"), "old") << safeSave << " " << call;
                EXPECT_EQ(folder.Count(), 1u);
                EXPECT_EQ(editor->saveFailed, 1);
                EXPECT_EQ(Text(editor), u"new\ntext");
                ExpectDistrust();
                // The text is not locked in.
                editor->codecId = kCodecUtf8;
                EXPECT_EQ(Save(editor), 1);
                EXPECT_EQ(folder.Get("f.txt"), "new\ntext");
            }
        }
    }
}

TEST_F(PlugIn, IsTriedOutOnlyWhereTheOldFileHasNoBackup) {
    MakeOverOld(0);
    EXPECT_EQ(Save(editor), 1);
    EXPECT_EQ(CallsOf(Place::kCreate), 2);
    EXPECT_EQ(fake.chunks, (std::vector<int32_t>{1, -1, 1, -1}));
    EXPECT_EQ(folder.Get("f.txt"), "new\ntext");
    fake.calls[static_cast<int>(Place::kCreate)] = 0;
    MakeOverOld(1);
    EXPECT_EQ(Save(editor), 1);
    EXPECT_EQ(CallsOf(Place::kCreate), 1);
    EXPECT_EQ(folder.Get("f.txt"), "new\ntext");
}

TEST_F(PlugIn, OtherLibrariesAreStillTrusted) {
    Break(Place::kDecode);
    EXPECT_EQ(LoadBytes("abc"), 0);
    ExpectMessage(u"Error reading file");
    ExpectDistrust();
    Break(Place::kNowhere);
    EXPECT_EQ(LoadBytes("abc"), 1);
    EXPECT_EQ(Text(editor), u"abc");
}

// Sixteen are remembered. A seventeenth could be called again without anybody knowing.
TEST_F(PlugIn, NoLibraryIsTrustedOnceSixteenHaveFaulted) {
    for (int faulted = 0; faulted < 16; ++faulted) {
        fake.place = Place::kNowhere;
        Replace();
        Codec* codec = CreateCodec(5);
        ASSERT_NE(codec, nullptr) << faulted;
        EXPECT_TRUE(DestroyCodec(codec));
        fake.place = Place::kDecode;
        EXPECT_EQ(LoadBytes("abc"), 0);
        ExpectMessage(u"Error reading file");
    }
    fake.place = Place::kNowhere;
    Replace();
    const int runs = HostGuardedRuns();
    EXPECT_EQ(CreateCodec(5), nullptr);
    EXPECT_EQ(HostGuardedRuns(), runs);
    distrusted_ = HostLibrariesLoaded();
}

// ---- plug-ins that break the contract ----

TEST_F(PlugIn, ThatDecodesWronglyIsAReadError) {
    for (const Wrong wrong : {Wrong::kForeignOutput, Wrong::kFreedOutput, Wrong::kTakesTooMuch,
                              Wrong::kTakesNothing, Wrong::kCountsTooMuch, Wrong::kNoOutput}) {
        for (const size_t size : {1u, 5u, kReadBlock, 3 * kReadBlock}) {
            Break(Place::kDecode, wrong);
            EXPECT_EQ(LoadBytes(std::string(size, 'x')), 0) << static_cast<int>(wrong) << " " << size;
            ExpectMessage(u"Error reading file");
            EXPECT_EQ(Text(editor), u"");
            EXPECT_EQ(editor->codecId, 5u);
            EXPECT_EQ(CallsOf(Place::kDestroy), 1) << "it has not faulted";
        }
    }
}

TEST_F(PlugIn, ThatGetsStuckInTheMiddleIsAReadError) {
    for (const size_t more : {17u, 5000u, kReadBlock, 2 * kReadBlock}) {
        Break(Place::kDecode, Wrong::kTakesFirstChunkOnly);
        EXPECT_EQ(LoadBytes(std::string(kReadBlock + more, 'x')), 0) << more;
        ExpectMessage(u"Error reading file");
    }
}

TEST_F(PlugIn, MayDropACharacterThatTheFilesEndCuts) {
    Break(Place::kDecode, Wrong::kTakesFirstChunkOnly);
    EXPECT_EQ(LoadBytes(std::string(kReadBlock + 16, 'x')), 1);
    EXPECT_EQ(editor->lines[0].length, kReadBlock);
}

TEST_F(PlugIn, ThatEncodesWronglyLeavesTheOldFile) {
    for (const Wrong wrong :
         {Wrong::kForeignOutput, Wrong::kFreedOutput, Wrong::kCountsTooMuch, Wrong::kNoOutput}) {
        for (const uint32_t safeSave : {0u, 1u}) {
            Break(Place::kEncode, wrong);
            MakeOverOld(safeSave);
            EXPECT_EQ(Save(editor), 0) << static_cast<int>(wrong);
            ExpectMessage(u"Error writing file");
            EXPECT_EQ(folder.Get("f.txt"), "old");
            EXPECT_EQ(folder.Count(), 1u);
            EXPECT_EQ(editor->saveFailed, 1);
        }
    }
}

TEST_F(PlugIn, ABlockOfSomebodyElseNeverReachesTheHeap) {
    Break(Place::kDecode, Wrong::kForeignBlock);
    EXPECT_EQ(LoadBytes("abc"), 0);
    ExpectMessage(u"Error reading file");
    ExpectDistrust();
}

// A thread of the library's own may call at any time.
TEST_F(PlugIn, GetsNoMemoryOutsideACall) {
    Stream stream(5);
    stream.Decode("abc");
    ASSERT_NE(fake.grow, nullptr);
    EXPECT_EQ(fake.grow(nullptr, 8), nullptr);
    EXPECT_EQ(fake.grow(&stranger, 8), nullptr);
    EXPECT_EQ(stream.Decode("def"), u"def");
}

// A fault of the program's own, while it makes room, must not pass for one of the library.
TEST_F(PlugIn, IsNotGuardedWhileTheProgramMakesRoom) {
    Stream stream(5);
    const int before = HostUnguardedCallbacks();
    stream.Decode("abc");
    EXPECT_EQ(HostUnguardedCallbacks(), before + 1);
    fake.place = Place::kDecode;
    stream.Decode("abc");
    EXPECT_EQ(stream.consumed, kCodecFailed) << "it is guarded again afterwards";
    distrusted_ = 1;
}

TEST_F(PlugIn, DoesNothingMoreOnceItHasFailed) {
    Break(Place::kDecode, Wrong::kCountsTooMuch);
    Stream stream(5);
    stream.Decode("abc");
    EXPECT_EQ(stream.consumed, kCodecFailed);
    fake.place = Place::kNowhere;
    stream.Decode("abc");
    EXPECT_EQ(stream.consumed, kCodecFailed);
    EXPECT_EQ(CallsOf(Place::kDecode), 1);
    EXPECT_EQ(stream.Encode(u"abc"), "");
    EXPECT_EQ(CallsOf(Place::kEncode), 0);
    EXPECT_EQ(stream.Index(), 5u);
    EXPECT_EQ(CallsOf(Place::kCurrentIndex), 0);
}

TEST_F(PlugIn, GetsTheVeryBytesAgainThatItLeft) {
    std::string bytes;
    for (int i = 0; bytes.size() < 100000; ++i) bytes += std::to_string(i) + " ";
    for (const uint32_t leaves : {1u, 3u, 100u}) {
        fake.leaves = leaves;
        ASSERT_EQ(LoadBytes(bytes), 1);
        EXPECT_EQ(Text(editor), Wide(bytes));
    }
}

TEST_F(PlugIn, MeansTheNameThatHasThePositionNow) {
    RegistryMemorySetString(RegistryRoot::kLocalMachine, kKey, u"omega", u"x");
    InitCodecs();
    const Stream stream(5);
    fake.currentIndex = 6;
    EXPECT_EQ(stream.Index(), 6u);
    // Another one has come between the two since the list was made.
    RegistryMemorySetString(RegistryRoot::kLocalMachine, kKey, u"new", u"x");
    EXPECT_EQ(stream.Index(), 5u) << "the new one is not in the list";
    fake.currentIndex = 7;
    EXPECT_EQ(stream.Index(), 6u);
    fake.currentIndex = 8;
    EXPECT_EQ(stream.Index(), 5u);
}

// ---- memory ----

TEST_F(PlugIn, NoFailingAllocationOnLoadingLosesABlock) {
    bool untouched = false;
    int failures = 0;
    for (uint32_t call = 1; !untouched; ++call) {
        HostShellLogReset();
        MessageLogReset();
        fake = {};
        Renew();
        folder.Put("f.txt", "a\nb");
        char16_t* path = folder.OwnName("f.txt");
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const int loaded = Load(editor, path, 5);
        untouched = fault.Hits() == 0;
        // Behind the text only the name of its encoding is looked up; without memory for that it is the own
        // one.
        EXPECT_TRUE(loaded == 0 || (Text(editor) == u"a\nb" && editor->codecId == 5u)) << call;
        EXPECT_TRUE(loaded == 1 || !untouched) << call;
        EXPECT_EQ(HostShellLog().memoryBoxes, fault.Hits());
        if (CallsOf(Place::kCreate) > 0) {
            EXPECT_TRUE(MessageLog().empty()) << "memory is all that was lacking";
        }
        EXPECT_EQ(HostLibrariesLoaded(), 0);
        failures += untouched ? 0 : 1;
    }
    EXPECT_GE(failures, 8) << "codec, key, path, state twice, notes, block, text";
}

TEST_F(PlugIn, NoFailingAllocationOnSavingLosesTheFile) {
    for (const uint32_t safeSave : {0u, 1u}) {
        bool untouched = false;
        for (uint32_t call = 1; !untouched; ++call) {
            HostShellLogReset();
            MessageLogReset();
            fake = {};
            MakeOverOld(safeSave);
            {
                FaultScope fault(FaultPoint::kAllocation, {.first = call});
                const int saved = Save(editor);
                untouched = fault.Hits() == 0;
                EXPECT_EQ(saved, untouched ? 1 : 0);
                EXPECT_EQ(HostShellLog().memoryBoxes, fault.Hits());
            }
            for (const ShownMessage& message : MessageLog()) {
                EXPECT_TRUE(CallsOf(Place::kCreate) == 0 || message.text == u"Error writing file");
            }
            // Without a backup, memory that runs out between trying and the last byte leaves a part.
            const std::string left = folder.Get("f.txt");
            const std::string expected = untouched ? "new\ntext" : "old";
            EXPECT_EQ(safeSave == 1 ? left : expected, expected) << call;
            EXPECT_EQ(folder.Count(), 1u);
            EXPECT_EQ(HostLibrariesLoaded(), 0);
            EXPECT_EQ(Text(editor), u"new\ntext");
        }
    }
    MessageLogReset();
}

TEST_F(PlugIn, EveryFailingRegistryCallIsTold) {
    for (uint32_t call = 1; call <= 3; ++call) {
        FaultScope fault(FaultPoint::kAnyRegistry, {.first = call});
        EXPECT_EQ(LoadBytes("abc"), 0);
        EXPECT_EQ(fault.Hits(), 1u);
        ExpectMessage(u"Error initializing decoder");
    }
    FaultScope fault(FaultPoint::kAnyRegistry, {.first = 4});
    EXPECT_EQ(LoadBytes("abc"), 1);
}

}  // namespace
}  // namespace nira::plug_in_test
