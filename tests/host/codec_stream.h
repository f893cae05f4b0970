// A stream of bytes or text through a codec, for the tests of the codecs.
#pragma once

#include <string>
#include <vector>

#include "files/codecs.h"
#include "host/files_support.h"

namespace nira {

// One stream of chunks through one codec.
class Stream {
  public:
    explicit Stream(uint32_t index) : codec(CreateCodec(index)) {}
    ~Stream() {
        DestroyCodec(codec);
        MemFree(nullptr, text);
        MemFree(nullptr, bytes);
    }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    std::u16string Decode(const std::string& source, int32_t chunk = kFirstChunk) {
        uint32_t units = 77;
        // An exact copy, so that a sanitizer sees a byte read behind the chunk.
        const std::vector<uint8_t> exact(source.begin(), source.end());
        consumed =
            CodecDecode(codec, exact.data(), static_cast<uint32_t>(exact.size()), &text, &units, chunk);
        return text == nullptr ? std::u16string(units, u'?') : std::u16string(text, units);
    }
    std::string Encode(const std::u16string& source, int32_t chunk = kFirstChunk) {
        uint32_t size = 77;
        const std::vector<char16_t> exact(source.begin(), source.end());
        CodecEncode(codec, exact.data(), static_cast<uint32_t>(exact.size()), &bytes, &size, chunk);
        return size == 0 ? std::string() : std::string(reinterpret_cast<char*>(bytes), size);
    }
    uint32_t Index() const { return CodecCurrentIndex(codec); }

    Codec* codec;
    uint32_t consumed = 0;
    char16_t* text = nullptr;
    uint8_t* bytes = nullptr;
};

}  // namespace nira
