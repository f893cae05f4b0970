// The codec library's promise by the program's own loading and saving: the same bytes again.
#include <random>

#include "files/load.h"
#include "files/save.h"
#include "host/document_support.h"
#include "host/library_codec.h"
#include "platform/host/libraries.h"

namespace nira {
namespace {

uint32_t GetEncoder(const char16_t* name, NiraCodec* codec) { return codecs::FillCodec(name, codec) ? 1 : 0; }

class LibraryFiles : public DocumentTest {
  protected:
    LibraryFiles() {
        HostLibraryExport(u"C:\\nira-codecs.dll", "GetEncoder",
                          reinterpret_cast<LibraryFunction>(GetEncoder));
        ListEncodings(LibraryNames());
        InitCodecs();
        for (const codecs::Entry& entry : codecs::kEntries) {
            if (entry.form == codecs::Form::kPage) continue;
            exact.emplace_back(entry.name);
            if (!entry.mark) unmarked.emplace_back(entry.name);
        }
    }
    ~LibraryFiles() override {
        EXPECT_EQ(HostLibrariesLoaded(), 0);
        HostLibrariesReset();
    }

    // Loads and saves; the file is the same again, but for half a unit at the end of UTF-16.
    void ExpectSame(const std::u16string& name, const std::string& bytes) {
        Renew();
        folder.Put("f", bytes);
        ASSERT_EQ(Load(editor, folder.OwnName("f"), CodecIndex(name.c_str())), 1);
        ASSERT_EQ(Save(editor), 1);
        const std::u16string found = CodecName(editor->codecId);
        const bool half = found.compare(0, 6, u"UTF-16") == 0 && bytes.size() % 2 != 0;
        const std::string expected = half ? bytes + '\0' : bytes;
        ASSERT_TRUE(folder.Get("f") == expected)
            << testing::PrintToString(name) << ", " << bytes.size() << " bytes, which end in "
            << testing::PrintToString(bytes.substr(bytes.size() > 40 ? bytes.size() - 40 : 0));
    }

    TempFolder folder;
    std::vector<std::u16string> exact;
    std::vector<std::u16string> unmarked;  // of them; where a mark at the start has no part in what is tested
};

TEST_F(LibraryFiles, FilesOfUpToFiveBytesStayTheSame) {
    const std::string pieces[] = {"a",    "\n",           std::string("\0", 1), "\xC3",
                                  "\xA9", "\xEF\xBB\xBF", "\xFF\xFE",           "\xFE\xFF",
                                  "\xD8", "\xDC"};
    std::vector<std::string> files = {""};
    for (size_t i = 0; i < files.size() && files[i].size() < 3; ++i) {
        for (const std::string& piece : pieces) {
            const std::string longer = files[i] + piece;
            if (longer.size() <= 5) files.push_back(longer);
        }
    }
    for (const std::u16string& name : exact) {
        for (const std::string& file : files) {
            ExpectSame(name, file);
            if (HasFatalFailure()) return;
        }
    }
}

TEST_F(LibraryFiles, WhateverABlocksEndCutsStaysTheSame) {
    const std::u16string cut[] = {u"\r\n",
                                  u"\r\n\r\n",
                                  u"\xD83D\xDE00",
                                  u"\u00E9",
                                  u"\u4E2D",
                                  u"\xDCFF\xDC80",
                                  u"\xDC01\xDC02\xDC03\xDC04"};
    for (const std::u16string& name : exact) {
        const size_t unit = WrittenAs(name, u"aa").size() - WrittenAs(name, u"a").size();
        for (size_t place = 20470; place <= 20490; ++place) {
            for (const std::u16string& piece : cut) {
                std::u16string text(place / unit - 1, u'x');
                text.append(piece).append(u"y").append(piece);
                ExpectSame(name, WrittenAs(name, text));
                if (HasFatalFailure()) return;
            }
        }
    }
}

TEST_F(LibraryFiles, InvalidBytesThatABlocksEndCutsStayTheSame) {
    const std::string cut[] = {"\xF0\x9F\x98\x80",
                               "\xF0\x9F\x98",
                               "\xE2\x82\xE2\x82\xAC",
                               "\xED\xA0\x80",
                               "\xC0\x80",
                               "\xFF\xFE\xFF",
                               std::string("\0\xD8\0\xDC\0", 5),
                               std::string("\0\0\x11\0\0\0\0\xDC", 8)};
    for (const std::u16string& name : unmarked) {
        for (size_t place = 20470; place <= 20490; ++place) {
            for (const std::string& piece : cut) {
                std::string bytes(place, 'x');
                bytes.append(piece).append("y\n").append(piece);
                ExpectSame(name, bytes);
                if (HasFatalFailure()) return;
            }
        }
    }
}

TEST_F(LibraryFiles, RandomBytesWithLineEndsOfOneKindStayTheSame) {
    std::mt19937 random(26);
    for (const std::u16string& name : exact) {
        for (const char absent : {'\r', '\n'}) {
            std::string bytes(50001, ' ');
            for (char& byte : bytes) {
                do byte = static_cast<char>(random());
                while (byte == absent);
            }
            ExpectSame(name, bytes);
            ExpectSame(name, bytes.substr(0, 1000 + random() % 100));
            if (HasFatalFailure()) return;
        }
    }
}

TEST_F(LibraryFiles, EveryCodePointStaysTheSame) {
    std::u16string text;
    for (uint32_t point = 0; point <= 0x10FFFF; point += point < 0x12000 ? 1 : 11) {
        if ((point >= 0xD800 && point <= 0xDFFF) || point == '\r') continue;
        if (point < 0x10000) {
            text += static_cast<char16_t>(point);
        } else {
            text += static_cast<char16_t>(0xD7C0 + (point >> 10));
            text += static_cast<char16_t>(0xDC00 | (point & 0x3FF));
        }
    }
    for (const std::u16string& name : unmarked) ExpectSame(name, WrittenAs(name, text));
}

TEST_F(LibraryFiles, ReadsOfAnyLengthMakeNoDifference) {
    std::u16string text;
    for (int line = 0; line < 3000; ++line) text += u"\u00E9\u4E2D\xD83D\xDE00 and a line end\r\n";
    for (const std::u16string& name : exact) {
        FaultScope fault(FaultPoint::kFileRead, {.howMany = kFaultForever, .effect = FaultEffect::kShort});
        ExpectSame(name, WrittenAs(name, text));
        EXPECT_EQ(editor->lineEnd, kLineEndCrLf);
    }
}

TEST_F(LibraryFiles, ACrLfThatABlocksEndCutsIsSeenWhole) {
    folder.Put("f", std::string(kReadBlock - 1, 'x') + "\r\ny");
    ASSERT_EQ(Load(editor, folder.OwnName("f"), CodecIndex(u"UTF-8 exact")), 1);
    EXPECT_EQ(editor->lineEnd, kLineEndCrLf);
    EXPECT_EQ(editor->lineCount, 2u);
}

TEST_F(LibraryFiles, ANewDocumentUnderAutoIsSavedAsUtf8WithoutMark) {
    TheOptions().bomSave = 1;
    editor->codecId = CodecIndex(u"Auto");
    TextInsert(editor, 0, 0, u"\xD83D\xDE00", 2);
    ASSERT_EQ(SaveAs(editor, folder.OwnName("f"), editor->codecId, kLineEndLf), 1);
    EXPECT_EQ(folder.Get("f"), "\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace nira
