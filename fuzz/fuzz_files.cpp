// Bytes as a file: the first chooses the codec, the rest is loaded. Whatever it holds, the document is sound,
// and what is saved as UTF-16 loads as the same text.
#include <unistd.h>

#include <cstdio>
#include <string>

#include "app/services/memory.h"
#include "engine/text.h"
#include "files/codecs.h"
#include "files/load.h"
#include "files/save.h"
#include "fuzz_fixture.h"

namespace nira {

namespace {

std::string FileName(const char* kind) { return "/tmp/nira-fuzz-" + std::to_string(getpid()) + "-" + kind; }

char16_t* PathOf(const std::string& name) {
    return MemStrDup(nullptr, std::u16string(name.begin(), name.end()).c_str());
}

void WriteFileOf(const std::string& name, const uint8_t* data, size_t size) {
    std::FILE* file = std::fopen(name.c_str(), "wb");
    Must(file != nullptr && std::fwrite(data, 1, size, file) == size, "the input is written");
    std::fclose(file);
}

Editor* LoadFile(const std::string& name, uint32_t codec) {
    Editor* editor = EditorCreate();
    Must(Load(editor, PathOf(name), codec) == 1, "the file loads");
    MustHold(editor);
    return editor;
}

}  // namespace

void FuzzFiles(const uint8_t* data, size_t size) {
    if (size == 0) return;
    const std::string input = FileName("in");
    const std::string output = FileName("out");
    WriteFileOf(input, data + 1, size - 1);
    Editor* editor = LoadFile(input, data[0] % kBuiltInCodecs);
    const std::u16string text = WholeText(editor);
    const uint32_t lineEnd = data[0] / kBuiltInCodecs % 3;
    Must(SaveAs(editor, PathOf(output), kCodecUtf16Le, lineEnd) == 1, "the text is saved");
    Editor* again = LoadFile(output, kCodecUtf16Le);
    Must(WholeText(again) == text, "the saved text is the text");
    EditorDestroy(again);
    EditorDestroy(editor);
    unlink(input.c_str());
    unlink(output.c_str());
}

}  // namespace nira

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    nira::SetUpFuzz();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    nira::FuzzFiles(data, size);
    return 0;
}
