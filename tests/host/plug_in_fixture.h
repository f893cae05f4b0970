// A plug-in that does what a test wants of it, wrong things among them.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "app/services/registry_key.h"
#include "files/load.h"
#include "files/plug_in_codec.h"
#include "host/document_support.h"
#include "platform/host/libraries.h"

namespace nira::plug_in_test {

inline constexpr const char16_t* kKey = u"Software\\NIRA\\Encodings";

// Where the fake codec goes wrong, and how.
enum class Place { kNowhere, kGetEncoder, kCreate, kDecode, kEncode, kDestroy, kCurrentIndex };
enum class Wrong {
    kFault,
    kForeignBlock,
    kForeignOutput,
    kFreedOutput,
    kTakesTooMuch,
    kTakesNothing,
    kTakesFirstChunkOnly,
    kCountsTooMuch,
    kNoOutput,
};

struct Fake {
    Place place = Place::kNowhere;
    Wrong wrong = Wrong::kFault;
    int call = 1;  // of that function, from 1, from where on it goes wrong
    uint32_t answer = 1;
    uint32_t currentIndex = kBuiltInCodecs;
    uint32_t leaves = 0;  // bytes of each chunk but the last
    bool withCreate = true;
    bool withDestroy = true;
    bool leavesDecodeOut = false;
    bool grownState = true;
    int calls[7] = {};
    std::u16string name;
    uint32_t createdFor = 0;
    std::vector<int32_t> chunks;
    ReallocCallback grow = nullptr;  // as the last decode got it
};

inline Fake fake;
inline int stranger;

// Counts a call. True when it is to go wrong.
inline bool Counted(Place place) {
    const int number = ++fake.calls[static_cast<int>(place)];
    const bool wrong = place == fake.place && number >= fake.call;
    if (wrong && fake.wrong == Wrong::kFault) HostFaultInPlugIn();
    return wrong;
}

inline bool Goes(bool wrong, Wrong way) { return wrong && fake.wrong == way; }

// The state is a second block besides the output.
inline void* Create(uint32_t index, ReallocCallback grow) {
    Counted(Place::kCreate);
    fake.createdFor = index;
    return fake.grownState ? grow(grow(nullptr, 8), 64) : nullptr;
}

template <typename Unit>
inline void Fill(bool wrong, Unit** target, uint32_t* count, uint32_t wanted, ReallocCallback grow) {
    if (Goes(wrong, Wrong::kForeignBlock)) grow(&stranger, 100);
    *count = wanted;
    if (Goes(wrong, Wrong::kNoOutput)) return;
    *target = static_cast<Unit*>(grow(*target, (wanted + 1) * static_cast<uint32_t>(sizeof(Unit))));
    if (Goes(wrong, Wrong::kFreedOutput)) grow(*target, 0);
    if (Goes(wrong, Wrong::kForeignOutput)) *target = reinterpret_cast<Unit*>(&stranger);
    if (Goes(wrong, Wrong::kCountsTooMuch)) *count = wanted + 2;
}

inline uint32_t Decode(void* state, const uint8_t* source, uint32_t size, char16_t** target, uint32_t* units,
                       int32_t chunk, ReallocCallback grow) {
    const bool wrong = Counted(Place::kDecode);
    fake.chunks.push_back(chunk);
    fake.grow = grow;
    EXPECT_EQ(state != nullptr, fake.withCreate && fake.grownState);
    if (Goes(wrong, Wrong::kTakesNothing)) return 0;
    if (Goes(wrong, Wrong::kTakesFirstChunkOnly) && chunk != kFirstChunk) return 0;
    const uint32_t taken = chunk != kLastChunk ? size - std::min(size, fake.leaves) : size;
    Fill(wrong, target, units, taken, grow);
    if (*target != nullptr && !wrong) std::copy(source, source + taken, *target);
    return Goes(wrong, Wrong::kTakesTooMuch) ? size + 1 : taken;
}

inline uint32_t Encode(void*, const char16_t* source, uint32_t units, uint8_t** target, uint32_t* size,
                       int32_t chunk, ReallocCallback grow) {
    const bool wrong = Counted(Place::kEncode);
    fake.chunks.push_back(chunk);
    Fill(wrong, target, size, units, grow);
    for (uint32_t i = 0; i < units && !wrong; ++i) (*target)[i] = static_cast<uint8_t>(source[i]);
    return 0;
}

inline void Destroy(void* state, ReallocCallback grow) {
    Counted(Place::kDestroy);
    grow(state, 0);
}

inline uint32_t CurrentIndex(void*, ReallocCallback) {
    Counted(Place::kCurrentIndex);
    return fake.currentIndex;
}

inline uint32_t GetEncoder(const char16_t* name, Codec* codec) {
    fake.name = name;
    codec->library = nullptr;  // not the plug-in's to change
    if (fake.withDestroy) codec->destroy = Destroy;
    Counted(Place::kGetEncoder);
    if (fake.withCreate) codec->create = Create;
    if (!fake.leavesDecodeOut) codec->decode = Decode;
    codec->encode = Encode;
    codec->currentIndex = CurrentIndex;
    return fake.answer;
}

// The codec "fake" of a fake library, at index 5.
class PlugIn : public DocumentTest {
  protected:
    PlugIn() {
        HostLibrariesReset();
        fake = {};
        fake.chunks.clear();
        InstallNew();
    }
    ~PlugIn() override {
        EXPECT_EQ(HostLibrariesLoaded(), distrusted_) << "libraries that are not let go";
        HostLibrariesReset();
    }

    // A library that no test has spoiled.
    void InstallNew() {
        Replace();
        InitCodecs();
    }
    // Another library behind the same name, in a list that stays.
    void Replace() {
        static int number = 0;
        path_ = u"C:\\plug-in " + Wide(std::to_string(++number)) + u".dll";
        HostLibraryExport(path_.c_str(), "GetEncoder", reinterpret_cast<LibraryFunction>(GetEncoder));
        RegistryMemorySetString(RegistryRoot::kLocalMachine, kKey, u"fake", path_.c_str());
    }
    static void Register(const std::u16string& path) {
        RegistryMemorySetString(RegistryRoot::kLocalMachine, kKey, u"fake", path.c_str());
        InitCodecs();
    }

    void Break(Place place, Wrong wrong = Wrong::kFault, int call = 1) {
        const int32_t spoiled = HostLibrariesLoaded();
        fake = {};
        fake.chunks.clear();
        fake.place = place;
        fake.wrong = wrong;
        fake.call = call;
        distrusted_ = spoiled;
        InstallNew();
    }
    // The library has faulted, and stays loaded.
    void ExpectDistrust() {
        EXPECT_EQ(HostLibrariesLoaded(), distrusted_ + 1);
        distrusted_ = HostLibrariesLoaded();
        const int runs = HostGuardedRuns();
        EXPECT_EQ(CreateCodec(5), nullptr);
        EXPECT_EQ(HostGuardedRuns(), runs) << "it was called again";
        EXPECT_EQ(HostLibrariesLoaded(), distrusted_ + 1) << "it was freed";
        distrusted_ = HostLibrariesLoaded();
    }

    int LoadBytes(const std::string& bytes) {
        Renew();
        folder.Put("f.txt", bytes);
        return Load(editor, folder.OwnName("f.txt"), 5);
    }
    void MakeOverOld(uint32_t safeSave) {
        folder.Put("f.txt", "old");
        Renew();
        SetEditorPath(editor, folder.OwnName("f.txt"));
        editor->codecId = 5;
        editor->lineEnd = kLineEndLf;
        TextInsert(editor, 0, 0, u"new\r\ntext", 9);
        TheOptions().safeSave = safeSave;
    }

    std::u16string path_;
    int distrusted_ = 0;
};

inline int CallsOf(Place place) { return fake.calls[static_cast<int>(place)]; }

}  // namespace nira::plug_in_test
