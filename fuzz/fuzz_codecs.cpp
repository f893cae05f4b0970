// Bytes as a file in an encoding of the codec library, cut where the input says. However it is cut the text
// is the same, and the encoding that was found writes the same bytes again, however the text is cut.
#include <fuzzer/FuzzedDataProvider.h>

#include "codecs/host/system_host.h"
#include "fuzz_fixture.h"
#include "host/library_codec.h"

namespace nira {

namespace {

std::vector<size_t> Cuts(FuzzedDataProvider* input, size_t size) {
    std::vector<size_t> places;
    for (int i = input->ConsumeIntegralInRange(0, 5); i > 0; --i) {
        places.push_back(input->ConsumeIntegralInRange<size_t>(0, size));
    }
    std::sort(places.begin(), places.end());
    return places;
}

// The forms of Unicode and "Auto"; they are the first in the catalog.
uint32_t ExactCount() {
    uint32_t count = 0;
    while (codecs::kEntries[count].form != codecs::Form::kPage) ++count;
    return count;
}

}  // namespace

void FuzzCodecs(const uint8_t* data, size_t size) {
    FuzzedDataProvider input(data, size);
    constexpr uint32_t kPages[] = {1252, 932, 54936, 51932, 949, 1253};
    codecs::SetHostAnsiPage(input.PickValueInArray(kPages));
    const std::u16string name =
        codecs::kEntries[input.ConsumeIntegralInRange<uint32_t>(0, ExactCount() - 1)].name;
    const size_t seed = input.ConsumeIntegral<uint16_t>();
    const std::vector<size_t> cuts = Cuts(&input, 2000);
    const std::string file = input.ConsumeRemainingBytesAsString();
    std::vector<size_t> places;
    for (const size_t place : cuts) places.push_back(std::min(place, file.size()));

    const Read whole = ReadAs(name, file);
    const Read cut = ReadAs(name, file, places);
    Must(whole.allTaken && cut.allTaken, "all bytes are taken");
    Must(cut.text == whole.text && cut.index == whole.index, "cuts make no difference");
    const std::u16string found = LibraryNameAt(whole.index);
    const bool odd = found.compare(0, 6, u"UTF-16") == 0 && file.size() % 2 != 0;
    const std::string expected = odd ? file + '\0' : file;
    Must(WrittenAs(found, whole.text) == expected, "the bytes come back");
    const std::vector<size_t> textCut = {seed % (whole.text.size() + 1)};
    Must(WrittenAs(found, whole.text, textCut) == expected, "the bytes come back from text in pieces");
}

}  // namespace nira

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    nira::SetUpFuzz();
    nira::ListEncodings(nira::LibraryNames());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    nira::FuzzCodecs(data, size);
    return 0;
}
