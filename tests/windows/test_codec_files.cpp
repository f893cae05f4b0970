// The library that ships, as a DLL in the registry, under the program's own loading and saving: the same
// bytes again.
#include <random>
#include <vector>

#include "codecs/catalog.h"
#include "codecs/units.h"
#include "windows/real_files_fixture.h"

namespace nira {
namespace {

using RunFunction = void(CALLBACK*)(HWND, HINSTANCE, wchar_t*, int);

// The DLL lies one folder above the tests.
std::wstring LibraryPath() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), 32768));
    path.resize(path.rfind(L'\\'));
    return path.substr(0, path.rfind(L'\\') + 1) + L"nira-codecs.dll";
}

class CodecFiles : public RealFiles {
  protected:
    CodecFiles() {
        const HMODULE library = LoadLibraryW(LibraryPath().c_str());
        const auto enter =
            reinterpret_cast<RunFunction>(reinterpret_cast<void (*)()>(GetProcAddress(library, "RegisterW")));
        enter(nullptr, nullptr, nullptr, 0);
        FreeLibrary(library);
        InitCodecs();
        EditorDestroy(editor_);
        editor_ = nullptr;
    }
    ~CodecFiles() override { editor_ = EditorCreate(); }

    // Loads and saves; true when the file is the same again, but for half a unit at the end of UTF-16.
    bool StaysTheSame(const char16_t* name, const std::string& bytes) {
        Put(L"f", bytes);
        Editor* editor = EditorCreate();
        const uint32_t index = CodecIndex(name);
        const bool done = index >= kBuiltInCodecs && Load(editor, OwnPath(L"f"), index) == 1;
        const std::u16string found = CodecName(editor->codecId);
        const bool half = found.compare(0, 6, u"UTF-16") == 0 && bytes.size() % 2 != 0;
        const bool same = done && Save(editor) == 1 && Get(L"f") == (half ? bytes + '\0' : bytes);
        EditorDestroy(editor);
        EXPECT_TRUE(same) << testing::PrintToString(name) << " " << bytes.size() << " bytes, which end in "
                          << testing::PrintToString(bytes.substr(bytes.size() > 40 ? bytes.size() - 40 : 0));
        return same;
    }
};

// The encodings that lose nothing, of each kind.
constexpr const char16_t* kExact[] = {u"Auto",
                                      u"UTF-8 exact",
                                      u"UTF-8 exact with mark",
                                      u"UTF-16 LE exact",
                                      u"UTF-16 BE exact",
                                      u"UTF-32 LE exact",
                                      u"UTF-32 BE exact"};

TEST_F(CodecFiles, FilesOfUpToFiveBytesStayTheSame) {
    const std::string pieces[] = {"a",        "\n",  std::string("\0", 1), "\xC3", "\xEF\xBB\xBF",
                                  "\xFF\xFE", "\xD8"};
    std::vector<std::string> files = {""};
    for (size_t i = 0; i < files.size() && files[i].size() < 3; ++i) {
        for (const std::string& piece : pieces) {
            if (files[i].size() + piece.size() <= 5) files.push_back(files[i] + piece);
        }
    }
    for (const char16_t* name : kExact) {
        for (const std::string& file : files) {
            if (!StaysTheSame(name, file)) return;
        }
    }
}

TEST_F(CodecFiles, WhateverABlocksEndCutsStaysTheSame) {
    const std::string cut[] = {"\r\n",         "\xF0\x9F\x98\x80", "\xC3\xA9",
                               "\xE4\xB8\xAD", "\xFF\xFE\xFF",     std::string("\0\xD8\0\xDC", 4)};
    for (const char16_t* name : {u"Auto", u"UTF-8 exact", u"UTF-16 BE exact", u"UTF-32 LE exact"}) {
        for (size_t place = 20470; place <= 20490; ++place) {
            for (const std::string& piece : cut) {
                const std::string more = piece + "yyyy" + piece;
                if (!StaysTheSame(name, std::string(place, 'x') + more)) return;
            }
        }
    }
}

TEST_F(CodecFiles, RandomBytesWithLineEndsOfOneKindStayTheSame) {
    std::mt19937 random(61);
    for (const char16_t* name : kExact) {
        for (const char absent : {'\r', '\n'}) {
            std::string bytes(90002, ' ');
            for (char& byte : bytes) {
                do byte = static_cast<char>(random());
                while (byte == absent);
            }
            if (!StaysTheSame(name, bytes)) return;
        }
    }
}

void PutUtf8(uint32_t point, std::string* bytes) {
    const int tails = point < 0x80 ? 0 : point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
    constexpr uint32_t kLeads[] = {0, 0xC0, 0xE0, 0xF0};
    *bytes += static_cast<char>(kLeads[tails] | point >> 6 * tails);
    for (int i = tails - 1; i >= 0; --i) *bytes += static_cast<char>(0x80 | (point >> 6 * i & 0x3F));
}

// In lines of 64, as text has lines.
TEST_F(CodecFiles, EveryCodePointStaysTheSame) {
    std::string utf8;
    std::u16string utf16;
    std::u32string utf32;
    const auto put = [&](uint32_t point) {
        PutUtf8(point, &utf8);
        utf32 += static_cast<char32_t>(point);
        char16_t pair[2] = {static_cast<char16_t>(point), 0};
        if (point > 0xFFFF) codecs::PutPair(point, pair);
        utf16.append(pair, point > 0xFFFF ? 2 : 1);
    };
    for (uint32_t point = 0; point <= 0x10FFFF; ++point) {
        const bool surrogate = point >= 0xD800 && point <= 0xDFFF;
        if (!surrogate && point != '\r') put(point);
        if (point % 64 == 63) put('\n');
    }
    StaysTheSame(u"Auto", utf8);
    StaysTheSame(u"UTF-8 exact", utf8);
    StaysTheSame(u"UTF-16 LE exact", {reinterpret_cast<const char*>(utf16.data()), utf16.size() * 2});
    StaysTheSame(u"UTF-32 LE exact", {reinterpret_cast<const char*>(utf32.data()), utf32.size() * 4});
}

}  // namespace
}  // namespace nira
