// The codec library against iconv: the same text, the same chunks, one after the other.
#include <benchmark/benchmark.h>
#include <iconv.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "app/services/memory.h"
#include "codecs/library.h"

namespace nira {

namespace {

constexpr size_t kUnits = 4000000;
constexpr size_t kChunk = 20480;

void* Grow(void* block, uint32_t size) { return MemReAlloc(nullptr, block, size); }

// Lines of about 80 units, each with a letter that is not ASCII.
std::u16string MostlyAscii() {
    std::mt19937 random(31);
    std::u16string text;
    while (text.size() < kUnits) {
        for (int word = 0; word < 12; ++word) {
            for (unsigned length = 2 + random() % 8; length > 0; --length) {
                text += static_cast<char16_t>(u'a' + random() % 26);
            }
            if (word == 7) text += u'\u00E9';
            text += u' ';
        }
        text += u'\n';
    }
    return text;
}

// Lines of 40 ideographs with a full stop.
std::u16string Ideographs() {
    std::mt19937 random(32);
    std::u16string text;
    while (text.size() < kUnits) {
        for (int i = 0; i < 40; ++i) text += static_cast<char16_t>(0x4E00 + random() % 0x5000);
        text += u"\u3002\n";
    }
    return text;
}

using Text = std::u16string (*)();

// Through the library, from the first chunk to the last.
struct Library {
    NiraCodec codec = {};
    void* state;
    void* output = nullptr;

    explicit Library(const char16_t* name) {
        if (!codecs::FillCodec(name, &codec)) std::abort();
        state = codec.create(5, Grow);
    }
    ~Library() {
        codec.destroy(state, Grow);
        MemFree(nullptr, output);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
};

template <typename Unit, typename Convert>
void ForEachChunk(const Unit* source, size_t count, size_t chunkUnits, Convert convert) {
    int32_t chunk = kNiraFirstChunk;
    for (size_t at = 0; at < count; at += chunkUnits, chunk = kNiraMiddleChunk) {
        convert(source + at, static_cast<uint32_t>(std::min(count - at, chunkUnits)), chunk);
    }
    convert(source, 0, kNiraLastChunk);
}

size_t DecodeAll(const char16_t* name, const std::vector<uint8_t>& bytes) {
    Library library(name);
    size_t all = 0;
    ForEachChunk(bytes.data(), bytes.size(), kChunk, [&](const uint8_t* at, uint32_t size, int32_t chunk) {
        uint32_t units = 0;
        library.codec.decode(library.state, at, size, reinterpret_cast<char16_t**>(&library.output), &units,
                             chunk, Grow);
        benchmark::DoNotOptimize(library.output);
        all += units;
    });
    return all;
}

std::vector<uint8_t> EncodeAll(const char16_t* name, const std::u16string& text, bool keep) {
    Library library(name);
    std::vector<uint8_t> all;
    ForEachChunk(text.data(), text.size(), kChunk / 2,
                 [&](const char16_t* at, uint32_t units, int32_t chunk) {
                     uint32_t size = 0;
                     library.codec.encode(library.state, at, units,
                                          reinterpret_cast<uint8_t**>(&library.output), &size, chunk, Grow);
                     benchmark::DoNotOptimize(library.output);
                     const auto* bytes = static_cast<const uint8_t*>(library.output);
                     if (keep) all.insert(all.end(), bytes, bytes + size);
                 });
    return all;
}

void Decode(benchmark::State& state, const char16_t* name, Text make) {
    const std::u16string text = make();
    const std::vector<uint8_t> bytes = EncodeAll(name, text, true);
    for (auto _ : state) {
        if (DecodeAll(name, bytes) != text.size()) state.SkipWithError("not the text");
    }
    state.SetBytesProcessed(static_cast<int64_t>(bytes.size()) * state.iterations());
}

void Encode(benchmark::State& state, const char16_t* name, Text make) {
    const std::u16string text = make();
    const size_t bytes = EncodeAll(name, text, true).size();
    for (auto _ : state) EncodeAll(name, text, false);
    state.SetBytesProcessed(static_cast<int64_t>(bytes) * state.iterations());
}

// What the library is held against. A character that a chunk cuts is left to the next chunk, as programs do
// that use iconv.
void RunIconv(benchmark::State& state, const char* to, const char* from, const void* source, size_t size,
              size_t bytesOfFile) {
    std::vector<char> output(kChunk * 4);
    for (auto _ : state) {
        const iconv_t converter = iconv_open(to, from);
        auto* at = const_cast<char*>(static_cast<const char*>(source));
        char* const end = at + size;
        while (at < end) {
            char* const begin = at;
            size_t left = std::min(kChunk, static_cast<size_t>(end - at));
            char* out = output.data();
            size_t room = output.size();
            iconv(converter, &at, &left, &out, &room);
            benchmark::DoNotOptimize(out);
            if (at == begin) state.SkipWithError("iconv stands still");
            if (at == begin) break;
        }
        iconv_close(converter);
    }
    state.SetBytesProcessed(static_cast<int64_t>(bytesOfFile) * state.iterations());
}

void IconvDecode(benchmark::State& state, const char* encoding, const char16_t* name, Text make) {
    const std::vector<uint8_t> bytes = EncodeAll(name, make(), true);
    RunIconv(state, "UTF-16LE", encoding, bytes.data(), bytes.size(), bytes.size());
}

void IconvEncode(benchmark::State& state, const char* encoding, const char16_t* name, Text make) {
    const std::u16string text = make();
    const size_t bytes = EncodeAll(name, text, true).size();
    RunIconv(state, encoding, "UTF-16LE", text.data(), text.size() * sizeof(char16_t), bytes);
}

}  // namespace

#define MEASURE(id, encoding, name, kind, make)                                                       \
    BENCHMARK_CAPTURE(Decode, id##_##kind, name, make)->Unit(benchmark::kMillisecond);                \
    BENCHMARK_CAPTURE(Encode, id##_##kind, name, make)->Unit(benchmark::kMillisecond);                \
    BENCHMARK_CAPTURE(IconvDecode, id##_##kind, encoding, name, make)->Unit(benchmark::kMillisecond); \
    BENCHMARK_CAPTURE(IconvEncode, id##_##kind, encoding, name, make)->Unit(benchmark::kMillisecond)

MEASURE(utf8, "UTF-8", u"UTF-8 exact", ascii, MostlyAscii);
MEASURE(utf8, "UTF-8", u"UTF-8 exact", cjk, Ideographs);
MEASURE(utf16le, "UTF-16LE", u"UTF-16 LE exact", ascii, MostlyAscii);
MEASURE(utf16le, "UTF-16LE", u"UTF-16 LE exact", cjk, Ideographs);
MEASURE(utf16be, "UTF-16BE", u"UTF-16 BE exact", ascii, MostlyAscii);
MEASURE(utf16be, "UTF-16BE", u"UTF-16 BE exact", cjk, Ideographs);

#undef MEASURE

}  // namespace nira
