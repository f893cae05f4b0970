#include "codecs/catalog.h"

#include <cstddef>
#include <type_traits>

#include "host/files_support.h"
#include "host/library_codec.h"

namespace nira {
namespace {

using codecs::kEntries;

// What the program and a library call each other's record must be the same, word for word.
static_assert(sizeof(NiraCodec) == 56 && sizeof(NiraCodec) == sizeof(Codec));
static_assert(offsetof(NiraCodec, create) == 0 && offsetof(Codec, create) == 0);
static_assert(offsetof(NiraCodec, decode) == 8 && offsetof(Codec, decode) == 8);
static_assert(offsetof(NiraCodec, encode) == 16 && offsetof(Codec, encode) == 16);
static_assert(offsetof(NiraCodec, destroy) == 24 && offsetof(Codec, destroy) == 24);
static_assert(offsetof(NiraCodec, currentIndex) == 32 && offsetof(Codec, currentIndex) == 32);
static_assert(offsetof(NiraCodec, state) == 40 && offsetof(Codec, state) == 40);
static_assert(offsetof(NiraCodec, library) == 48 && offsetof(Codec, library) == 48);
static_assert(std::is_same_v<decltype(NiraCodec::create), decltype(Codec::create)>);
static_assert(std::is_same_v<decltype(NiraCodec::decode), decltype(Codec::decode)>);
static_assert(std::is_same_v<decltype(NiraCodec::encode), decltype(Codec::encode)>);
static_assert(std::is_same_v<decltype(NiraCodec::destroy), decltype(Codec::destroy)>);
static_assert(std::is_same_v<decltype(NiraCodec::currentIndex), decltype(Codec::currentIndex)>);
static_assert(static_cast<int32_t>(kNiraFirstChunk) == kFirstChunk);
static_assert(static_cast<int32_t>(kNiraMiddleChunk) == kMiddleChunk);
static_assert(static_cast<int32_t>(kNiraLastChunk) == kLastChunk);
static_assert(static_cast<uint32_t>(kNiraBuiltInCodecs) == kBuiltInCodecs);

class Catalog : public ServicesTest {};

TEST_F(Catalog, NamesAreUniqueAlsoWithoutCase) {
    std::vector<std::u16string> names;
    for (const codecs::Entry& entry : kEntries) {
        std::u16string name = entry.name;
        for (char16_t& unit : name) {
            if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit + 32);
        }
        EXPECT_EQ(std::count(names.begin(), names.end(), name), 0);
        names.push_back(name);
    }
}

TEST_F(Catalog, AnEncodingIsFoundByItsWholeName) {
    for (const codecs::Entry& entry : kEntries) EXPECT_EQ(codecs::FindEntry(entry.name), &entry);
    for (const char16_t* name : {u"", u"auto", u"UTF-8", u"UTF-8 exact ", u"UTF-8 exac", u"ANSI"}) {
        EXPECT_EQ(codecs::FindEntry(name), nullptr);
    }
}

TEST_F(Catalog, APageStandsInForOneThatTheSystemLacks) {
    EXPECT_EQ(codecs::PageOfEntry(*codecs::FindEntry(u"EUC-KR")), 949u) << "the host has no 51949";
    EXPECT_EQ(codecs::PageOfEntry(*codecs::FindEntry(u"EUC-JP")), 51932u);
    EXPECT_EQ(codecs::PageOfEntry(*codecs::FindEntry(u"Johab")), 0u);
    EXPECT_EQ(codecs::EntryOfPage(949)->name, std::u16string(u"Windows-949"));
    EXPECT_EQ(codecs::EntryOfPage(1), nullptr);
}

TEST_F(Catalog, TheLibraryFillsTheRecordsThatItCan) {
    NiraCodec codec = {};
    EXPECT_TRUE(codecs::FillCodec(u"UTF-8 exact", &codec));
    EXPECT_NE(codec.create, nullptr);
    EXPECT_NE(codec.decode, nullptr);
    EXPECT_NE(codec.encode, nullptr);
    EXPECT_NE(codec.destroy, nullptr);
    EXPECT_NE(codec.currentIndex, nullptr);
    NiraCodec untouched = {};
    EXPECT_FALSE(codecs::FillCodec(u"UTF-9", &untouched));
    EXPECT_FALSE(codecs::FillCodec(u"Johab", &untouched)) << "the host has not the page";
    EXPECT_EQ(untouched.decode, nullptr);
}

}  // namespace
}  // namespace nira
