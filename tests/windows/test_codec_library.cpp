// The library that ships, and the example of docs/plugins.md, as real DLLs.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "codecs/catalog.h"
#include "codecs/registration.h"
#include "nira_codec.h"
#include "platform/win32/casts.h"
#include "windows/registry_sandbox.h"

namespace nira {
namespace {

void* Grow(void* block, uint32_t size) {
    HANDLE heap = GetProcessHeap();
    if (size == 0) {
        if (block != nullptr) HeapFree(heap, 0, block);
        return nullptr;
    }
    return block == nullptr ? HeapAlloc(heap, HEAP_ZERO_MEMORY, size)
                            : HeapReAlloc(heap, HEAP_ZERO_MEMORY, block, size);
}

// A DLL that lies beside the program, or one folder above the tests.
std::wstring BesideTheProgram(const std::wstring& file) {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), 32768));
    path.resize(path.rfind(L'\\'));
    return path.substr(0, path.rfind(L'\\') + 1) + file;
}

using GetEncoderFunction = uint32_t (*)(const char16_t* name, NiraCodec* codec);
using RunFunction = void(CALLBACK*)(HWND, HINSTANCE, wchar_t*, int);

class CodecDll : public testing::Test {
  protected:
    ~CodecDll() override { FreeLibrary(module_); }

    void Load(const wchar_t* file) {
        path = BesideTheProgram(file);
        module_ = LoadLibraryW(path.c_str());
        ASSERT_NE(module_, nullptr);
    }
    template <typename Function>
    Function Find(const char* name) {
        return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module_, name)));
    }

    // A file through the codec of this name and back again.
    std::u16string Read(const std::u16string& name, const std::string& file) {
        NiraCodec codec = Make(name);
        char16_t* text = nullptr;
        std::u16string all;
        const auto take = [&](const std::string& piece, int32_t chunk) {
            uint32_t units = 0;
            const auto* bytes = reinterpret_cast<const uint8_t*>(piece.data());
            const auto size = static_cast<uint32_t>(piece.size());
            EXPECT_EQ(codec.decode(codec.state, bytes, size, &text, &units, chunk, Grow), size);
            all.append(text != nullptr ? text : u"", units);
        };
        const size_t half = file.size() / 2;
        take(file.substr(0, half), kNiraFirstChunk);
        take(file.substr(half), kNiraMiddleChunk);
        take("", kNiraLastChunk);
        index = codec.currentIndex(codec.state, Grow);
        codec.destroy(codec.state, Grow);
        Grow(text, 0);
        return all;
    }
    std::string Write(const std::u16string& name, const std::u16string& text) {
        NiraCodec codec = Make(name);
        uint8_t* bytes = nullptr;
        uint32_t size = 0;
        std::string all;
        codec.encode(codec.state, text.data(), 0, &bytes, &size, kNiraFirstChunk, Grow);
        all.append(reinterpret_cast<char*>(bytes), size);
        codec.encode(codec.state, text.data(), static_cast<uint32_t>(text.size()), &bytes, &size,
                     kNiraLastChunk, Grow);
        all.append(reinterpret_cast<char*>(bytes), size);
        codec.destroy(codec.state, Grow);
        Grow(bytes, 0);
        return all;
    }
    NiraCodec Make(const std::u16string& name) {
        NiraCodec codec = {};
        EXPECT_NE(Find<GetEncoderFunction>("GetEncoder")(name.c_str(), &codec) & 0xFFFF, 0u);
        codec.state = codec.create(kNiraBuiltInCodecs, Grow);
        return codec;
    }

    // The list of encodings: names and paths.
    std::vector<std::pair<std::wstring, std::wstring>> Listed() {
        std::vector<std::pair<std::wstring, std::wstring>> values;
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, codecs::kEncodingsKey, 0, KEY_READ, &key) != ERROR_SUCCESS)
            return {};
        for (DWORD i = 0;; ++i) {
            wchar_t name[300];
            wchar_t text[1000] = {};
            DWORD length = 300;
            DWORD size = sizeof(text) - sizeof(wchar_t);
            if (RegEnumValueW(key, i, name, &length, nullptr, nullptr, reinterpret_cast<BYTE*>(text),
                              &size) != ERROR_SUCCESS) {
                break;
            }
            values.emplace_back(name, text);
        }
        RegCloseKey(key);
        return values;
    }
    void List(const wchar_t* name, const std::wstring& path) {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, codecs::kEncodingsKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                        &key, nullptr);
        RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(path.c_str()),
                       static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(key);
    }
    void Run(const char* name) { Find<RunFunction>(name)(nullptr, nullptr, nullptr, 0); }

    RegistrySandbox sandbox;
    std::wstring path;
    uint32_t index = 0;

  private:
    HMODULE module_ = nullptr;
};

TEST_F(CodecDll, IsLoadedAndReadsAndWrites) {
    Load(L"nira-codecs.dll");
    EXPECT_EQ(Read(u"UTF-8 exact", "\xF0\x9F\x98\x80\xFF\r\n"), u"\xD83D\xDE00\xDCFF\r\n");
    EXPECT_EQ(index, static_cast<uint32_t>(kNiraBuiltInCodecs));
    EXPECT_EQ(Write(u"UTF-8 exact", u"\xD83D\xDE00\xDCFF\r\n"), "\xF0\x9F\x98\x80\xFF\r\n");
    EXPECT_EQ(Write(u"UTF-16 BE exact with mark", u"a"), std::string("\xFE\xFF\0a", 4));
    NiraCodec codec = {};
    EXPECT_EQ(Find<GetEncoderFunction>("GetEncoder")(u"UTF-9", &codec), 0u);
}

TEST_F(CodecDll, CodePagesAreTheSystems) {
    Load(L"nira-codecs.dll");
    EXPECT_EQ(Read(u"Windows-1251", "\xCF\xF0"), u"\u041F\u0440");
    EXPECT_EQ(Read(u"KOI8-R", "\xF0\xD2"), u"\u041F\u0440");
    EXPECT_EQ(Read(u"Shift_JIS", "a\x93\xFA\xB1z"), u"a\u65E5\uFF71z") << "a character cut by a chunk's end";
    EXPECT_EQ(Read(u"EUC-JP", "\xC6\xFC"), u"\u65E5");
    EXPECT_EQ(Read(u"Big5", "\xA4\xA4"), u"\u4E2D");
    EXPECT_EQ(Write(u"Shift_JIS", u"a\u65E5\xDCFF"), "a\x93\xFA\xFF");
    EXPECT_EQ(Write(u"Windows-1252", u"a\u4E2D"), "a?");
}

TEST_F(CodecDll, EveryByteOfASingleBytePageComesBack) {
    Load(L"nira-codecs.dll");
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
    for (const codecs::Entry& entry : codecs::kEntries) {
        CPINFO info = {};
        if (entry.form != codecs::Form::kPage || !codecs::EntryIsAvailable(entry)) continue;
        if (!GetCPInfo(codecs::PageOfEntry(entry), &info) || info.MaxCharSize != 1) continue;
        EXPECT_EQ(Write(entry.name, Read(entry.name, all)), all) << testing::PrintToString(entry.name);
    }
}

// Chosen by name, a page reads what it knows; what is no character at all is kept.
TEST_F(CodecDll, BytesThatAreNoCharacterOfAPageComeBack) {
    Load(L"nira-codecs.dll");
    for (const char16_t* name : {u"Shift_JIS", u"EUC-JP", u"GBK", u"Big5", u"EUC-KR"}) {
        for (const std::string& bytes : {std::string("a\x81 b"), std::string("a\xFE\xFF\xFF z"),
                                         std::string("a\xC0\x20\xC0\r\n"), std::string("z\x93")}) {
            const std::u16string text = Read(name, bytes);
            EXPECT_EQ(Write(name, text), bytes) << testing::PrintToString(name);
            EXPECT_EQ(text.find(u'\uFFFD'), std::u16string::npos);
        }
    }
}

// All pairs of bytes, most of them no character of any page.
TEST_F(CodecDll, SavingChangesNoTextOfAnyPage) {
    Load(L"nira-codecs.dll");
    std::string pairs;
    for (int first = 0x80; first < 0x100; ++first) {
        for (int second = 0x20; second < 0x100; ++second) {
            pairs += static_cast<char>(first);
            pairs += static_cast<char>(second);
            pairs += '\n';
        }
    }
    for (const codecs::Entry& entry : codecs::kEntries) {
        if (entry.form != codecs::Form::kPage || !codecs::EntryIsAvailable(entry)) continue;
        const std::u16string text = Read(entry.name, pairs);
        EXPECT_TRUE(Read(entry.name, Write(entry.name, text)) == text) << testing::PrintToString(entry.name);
    }
}

TEST_F(CodecDll, AutoKeepsEveryByteUnderTheSystemsPage) {
    Load(L"nira-codecs.dll");
    Run("RegisterW");
    std::string all = "caf\xE9 ";
    for (int byte = 1; byte < 256; ++byte) all += static_cast<char>(byte);
    const codecs::Entry* page = codecs::EntryOfPage(GetACP());
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(Write(page->name, Read(u"Auto", all)), all);
    uint32_t place = kNiraBuiltInCodecs;
    for (const auto& [name, library] : Listed()) {
        if (std::u16string(FromWide(name.c_str())) < page->name) ++place;
    }
    EXPECT_EQ(index, place);
}

TEST_F(CodecDll, EntersWhatTheSystemHasAndTakesItOutAgain) {
    Load(L"nira-codecs.dll");
    List(L"Another", L"C:\\another.dll");
    Run("RegisterW");
    size_t available = 0;
    for (const codecs::Entry& entry : codecs::kEntries) available += codecs::EntryIsAvailable(entry) ? 1 : 0;
    const auto listed = Listed();
    EXPECT_EQ(listed.size(), available + 1);
    for (const auto& [name, library] : listed) {
        EXPECT_EQ(library, name == L"Another" ? L"C:\\another.dll" : path);
    }
    Run("RegisterW");
    EXPECT_EQ(Listed(), listed) << "twice is as good as once";
    Run("UnregisterW");
    const std::vector<std::pair<std::wstring, std::wstring>> left = {{L"Another", L"C:\\another.dll"}};
    EXPECT_EQ(Listed(), left);
    Run("UnregisterW");
    EXPECT_EQ(Listed(), left);
}

TEST_F(CodecDll, LeavesTheValuesOfOtherLibrariesAlone) {
    Load(L"nira-codecs.dll");
    List(L"UTF-8 exact", L"C:\\another.dll");
    List(L"UTF-16 LE exact", L"C:\\an older place\\NIRA-Codecs.dll");
    Run("RegisterW");
    for (const auto& [name, library] : Listed()) {
        EXPECT_EQ(library, name == L"UTF-8 exact" ? L"C:\\another.dll" : path);
    }
    List(L"UTF-16 BE exact", L"C:\\an older place\\nira-codecs.dll");
    Run("UnregisterW");
    EXPECT_EQ(Listed().size(), 2u) << "another library's, and another copy's";
}

TEST_F(CodecDll, TheExampleWorks) {
    Load(L"nira-example-codec.dll");
    EXPECT_EQ(Read(u"Example Latin-1", "caf\xE9\r\n\r"), u"caf\u00E9\r\n\r");
    EXPECT_EQ(Read(u"Example Latin-1", "a\r\nb"), u"a\r\nb") << "cut between CR and LF";
    EXPECT_EQ(index, static_cast<uint32_t>(kNiraBuiltInCodecs));
    EXPECT_EQ(Write(u"Example Latin-1", u"caf\u00E9\u4E2D"), "caf\xE9?");
    EXPECT_EQ(Write(u"Example Latin-1", u""), "");
    NiraCodec codec = {};
    EXPECT_EQ(Find<GetEncoderFunction>("GetEncoder")(u"Example Latin-2", &codec), 0u);
    EXPECT_EQ(Find<GetEncoderFunction>("GetEncoder")(u"Example Latin", &codec), 0u);
}

}  // namespace
}  // namespace nira
