// The codec library at work without its DLL: streams of chunks through its codecs, and its names in the
// registry of the tests.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "app/services/memory.h"
#include "codecs/catalog.h"
#include "codecs/host/system_host.h"
#include "codecs/library.h"
#include "files/codec.h"
#include "platform/registry.h"

namespace nira {

inline void* GrowForLibrary(void* block, uint32_t size) { return MemReAlloc(nullptr, block, size); }

// Enters these names in the list of encodings.
inline void ListEncodings(const std::vector<std::u16string>& names) {
    const RegistryHandle key = RegistryCreate(RegistryRoot::kLocalMachine, u"Software\\NIRA\\Encodings");
    const std::u16string path = u"C:\\nira-codecs.dll";
    for (const std::u16string& name : names) {
        RegistrySet(key, name.c_str(), RegistryType::kString, path.c_str(),
                    static_cast<uint32_t>((path.size() + 1) * sizeof(char16_t)));
    }
    RegistryClose(key);
}

// The names of all encodings that the host's system has, in the order of the list.
inline std::vector<std::u16string> LibraryNames() {
    std::vector<std::u16string> names;
    for (const codecs::Entry& entry : codecs::kEntries) {
        if (codecs::EntryIsAvailable(entry)) names.emplace_back(entry.name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

inline uint32_t LibraryIndex(const std::u16string& name) {
    const std::vector<std::u16string> names = LibraryNames();
    return kBuiltInCodecs +
           static_cast<uint32_t>(std::find(names.begin(), names.end(), name) - names.begin());
}

// Cuts into pieces that end at these places, which rise and lie within the whole; calls use(piece, chunk
// flag).
template <typename Whole, typename Use>
void ForEachChunk(const Whole& whole, const std::vector<size_t>& places, Use use) {
    size_t begin = 0;
    int32_t chunk = kFirstChunk;
    for (const size_t end : places) {
        // An exact copy, so that a sanitizer sees what is read behind a piece.
        use(std::vector<typename Whole::value_type>(whole.begin() + static_cast<ptrdiff_t>(begin),
                                                    whole.begin() + static_cast<ptrdiff_t>(end)),
            chunk);
        begin = end;
        chunk = kMiddleChunk;
    }
    use(std::vector<typename Whole::value_type>(whole.begin() + static_cast<ptrdiff_t>(begin), whole.end()),
        kLastChunk);
}

// One codec of the library, from GetEncoder to destroy.
class LibraryCodec {
  public:
    explicit LibraryCodec(const std::u16string& name, uint32_t index) {
        if (codecs::FillCodec(name.c_str(), &record)) state = record.create(index, GrowForLibrary);
    }
    explicit LibraryCodec(const std::u16string& name) : LibraryCodec(name, LibraryIndex(name)) {}
    ~LibraryCodec() {
        if (state != nullptr) record.destroy(state, GrowForLibrary);
        MemFree(nullptr, text);
        MemFree(nullptr, bytes);
    }
    LibraryCodec(const LibraryCodec&) = delete;
    LibraryCodec& operator=(const LibraryCodec&) = delete;

    // One chunk. All bytes are always taken.
    std::u16string Decode(const std::string& source, int32_t chunk) {
        const std::vector<uint8_t> exact(source.begin(), source.end());
        uint32_t units = 77;
        taken = record.decode(state, exact.data(), static_cast<uint32_t>(exact.size()), &text, &units, chunk,
                              GrowForLibrary);
        allTaken = allTaken && taken == exact.size();
        return units == 0 ? std::u16string() : std::u16string(text, units);
    }
    std::string Encode(const std::u16string& source, int32_t chunk) {
        const std::vector<char16_t> exact(source.begin(), source.end());
        uint32_t size = 77;
        record.encode(state, exact.data(), static_cast<uint32_t>(exact.size()), &bytes, &size, chunk,
                      GrowForLibrary);
        return size == 0 ? std::string() : std::string(reinterpret_cast<char*>(bytes), size);
    }
    uint32_t Index() const { return record.currentIndex(state, GrowForLibrary); }

    NiraCodec record = {};
    void* state = nullptr;
    uint32_t taken = 0;
    bool allTaken = true;
    char16_t* text = nullptr;
    uint8_t* bytes = nullptr;
};

// A whole file through the codec of this name, cut at these places. An empty file has only a last chunk.
struct Read {
    std::u16string text;
    uint32_t index;
    bool allTaken;
};

inline Read ReadAs(const std::u16string& name, const std::string& file, std::vector<size_t> places) {
    LibraryCodec codec(name);
    Read read = {};
    // As the program does it: what the file's end brings is a chunk of its own, and an empty one.
    if (!file.empty()) places.push_back(file.size());
    ForEachChunk(file, places, [&](const std::vector<char>& piece, int32_t chunk) {
        read.text += codec.Decode(std::string(piece.begin(), piece.end()), chunk);
    });
    read.index = codec.Index();
    read.allTaken = codec.allTaken;
    return read;
}

inline Read ReadAs(const std::u16string& name, const std::string& file) { return ReadAs(name, file, {}); }

inline std::string WrittenAs(const std::u16string& name, const std::u16string& text,
                             const std::vector<size_t>& places) {
    LibraryCodec codec(name);
    std::string file;
    if (places.empty()) file += codec.Encode(u"", kFirstChunk);
    ForEachChunk(text, places, [&](const std::vector<char16_t>& piece, int32_t chunk) {
        file += codec.Encode(std::u16string(piece.begin(), piece.end()), chunk);
    });
    return file;
}

inline std::string WrittenAs(const std::u16string& name, const std::u16string& text) {
    return WrittenAs(name, text, {});
}

// The list name at an index of LibraryNames.
inline std::u16string LibraryNameAt(uint32_t index) { return LibraryNames().at(index - kBuiltInCodecs); }

}  // namespace nira
