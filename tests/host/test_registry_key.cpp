#include "app/services/registry_key.h"

#include <cstring>

#include "host/files_support.h"

namespace nira {
namespace {

constexpr RegistryRoot kUser = RegistryRoot::kCurrentUser;
constexpr const char16_t* kPath = u"Software\\NIRA\\Test";

void PutBytes(const char16_t* name, const std::string& bytes) {
    RegistryMemorySet(kUser, kPath, name, RegistryType::kBinary, bytes.data(),
                      static_cast<uint32_t>(bytes.size()));
}

class RegistryKey : public ServicesTest {
  protected:
    ~RegistryKey() override { RegKeyClose(key_); }
    RegKey* Open() { return key_ = RegKeyOpen(kUser, kPath); }

  private:
    RegKey* key_ = nullptr;
};

TEST_F(RegistryKey, OpeningMakesTheKey) {
    RegKey* key = RegKeyOpen(kUser, u"Software\\New");
    EXPECT_NE(key, nullptr);
    EXPECT_EQ(key->value, nullptr);
    EXPECT_TRUE(RegistryMemoryHasKey(kUser, u"Software\\New"));
    RegKeyClose(key);
}

TEST_F(RegistryKey, OneLeadingBackslashIsTakenOff) {
    RegKeyClose(RegKeyOpen(kUser, u"\\Software\\New"));
    EXPECT_TRUE(RegistryMemoryHasKey(kUser, u"Software\\New"));
    RegKey* key = RegKeyOpenExisting(kUser, u"\\Software\\New");
    EXPECT_NE(key, nullptr);
    RegKeyClose(key);
}

TEST_F(RegistryKey, OpeningAnExistingKeyMakesNone) {
    EXPECT_EQ(RegKeyOpenExisting(kUser, kPath), nullptr);
    EXPECT_FALSE(RegistryMemoryHasKey(kUser, kPath));
}

TEST_F(RegistryKey, AnExistingKeyIsOpenedForReadingOnly) {
    RegistryMemorySetDword(kUser, kPath, u"n", 5);
    RegKey* key = RegKeyOpenExisting(kUser, kPath);
    EXPECT_EQ(RegKeyQueryDword(key, u"n", 0), 5u);
    EXPECT_FALSE(RegKeySetDword(key, u"n", 6));
    EXPECT_FALSE(RegKeyDeleteValue(key, u"n"));
    RegKeyClose(key);
    EXPECT_NE(RegistryMemoryFind(kUser, kPath, u"n"), nullptr);
}

TEST_F(RegistryKey, NullIsAcceptedEverywhere) {
    RegKeyClose(nullptr);
    uint32_t size = 9;
    uint32_t longest = 9;
    EXPECT_EQ(RegKeyQuery(nullptr, u"x", &size), nullptr);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(RegKeyQueryText(nullptr, u"x"), nullptr);
    EXPECT_EQ(RegKeyQueryDword(nullptr, u"x", 3), 3u);
    EXPECT_FALSE(RegKeySetString(nullptr, u"x", u"y"));
    EXPECT_FALSE(RegKeySetDword(nullptr, u"x", 1));
    RegKeyQueryInfo(nullptr, &size, &longest);
    EXPECT_EQ(longest, 0u);
    EXPECT_FALSE(RegKeyEnumValue(nullptr, 0, nullptr, &size));
    EXPECT_FALSE(RegKeyDeleteValue(nullptr, u"x"));
}

TEST_F(RegistryKey, ReadsAValueWithItsSize) {
    PutBytes(u"v", "abc");
    RegKey* key = Open();
    uint32_t size = 0;
    const void* value = RegKeyQuery(key, u"V", &size);
    ASSERT_EQ(size, 3u);
    EXPECT_EQ(std::memcmp(value, "abc\0\0\0\0", 7), 0) << "four zero bytes stand behind it";
    EXPECT_EQ(key->value, value);
    EXPECT_EQ(key->valueSize, 3u);
}

TEST_F(RegistryKey, OwnsOneValueAtATime) {
    PutBytes(u"v", "abc");
    RegKey* key = Open();
    const size_t before = HostHeapLiveBlocks(nullptr);
    uint32_t size = 0;
    RegKeyQuery(key, u"v", &size);
    RegKeyQuery(key, u"v", &size);
    EXPECT_EQ(HostHeapLiveBlocks(nullptr), before + 1);
    EXPECT_EQ(RegKeyQuery(key, u"missing", &size), nullptr);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(HostHeapLiveBlocks(nullptr), before) << "a missing value frees the one before";
}

TEST_F(RegistryKey, AnEmptyValueIsThere) {
    PutBytes(u"v", "");
    RegKey* key = Open();
    uint32_t size = 9;
    EXPECT_NE(RegKeyQuery(key, u"v", &size), nullptr);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(std::u16string(RegKeyQueryText(key, u"v")), u"");
}

TEST_F(RegistryKey, TextsEndWhereTheirBytesEnd) {
    PutBytes(u"unterminated", std::string("a\0b\0", 4));
    PutBytes(u"odd", std::string("a\0b\0c", 5));
    PutBytes(u"oneByte", "a");
    PutBytes(u"two", std::string("a\0\0\0b\0\0\0", 8));
    RegKey* key = Open();
    EXPECT_EQ(std::u16string(RegKeyQueryText(key, u"unterminated")), u"ab");
    EXPECT_EQ(std::u16string(RegKeyQueryText(key, u"odd")), u"ab");
    EXPECT_EQ(std::u16string(RegKeyQueryText(key, u"oneByte")), u"");
    EXPECT_EQ(std::u16string(RegKeyQueryText(key, u"two")), u"a");
    EXPECT_EQ(RegKeyQueryText(key, u"missing"), nullptr);
}

TEST_F(RegistryKey, NumbersAreTheFirst32Bits) {
    PutBytes(u"long", std::string("\x01\x02\x03\x04\x05", 5));
    PutBytes(u"short", std::string("\x01\x02\x03", 3));
    RegistryMemorySetDword(kUser, kPath, u"number", 0xFFFFFFFF);
    RegKey* key = Open();
    EXPECT_EQ(RegKeyQueryDword(key, u"long", 0), 0x04030201u);
    EXPECT_EQ(RegKeyQueryDword(key, u"short", 42), 42u);
    EXPECT_EQ(RegKeyQueryDword(key, u"number", 0), 0xFFFFFFFFu);
    EXPECT_EQ(RegKeyQueryDword(key, u"missing", 42), 42u);
}

TEST_F(RegistryKey, WritesTextsWithTheirTerminator) {
    RegKey* key = Open();
    EXPECT_TRUE(RegKeySetString(key, u"t", u"ab"));
    EXPECT_TRUE(RegKeySetString(key, u"empty", nullptr));
    const RegistryMemoryValue* value = RegistryMemoryFind(kUser, kPath, u"t");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->type, RegistryType::kString);
    EXPECT_EQ(std::string(value->bytes.begin(), value->bytes.end()), std::string("a\0b\0\0\0", 6));
    EXPECT_EQ(RegistryMemoryFind(kUser, kPath, u"empty")->bytes.size(), 2u);
}

TEST_F(RegistryKey, WritesNumbersInFourBytes) {
    RegKey* key = Open();
    EXPECT_TRUE(RegKeySetDword(key, u"n", 0x01020304));
    const RegistryMemoryValue* value = RegistryMemoryFind(kUser, kPath, u"n");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->type, RegistryType::kDword);
    EXPECT_EQ(std::string(value->bytes.begin(), value->bytes.end()), "\x04\x03\x02\x01");
}

TEST_F(RegistryKey, CountsAndNamesValues) {
    RegistryMemorySetDword(kUser, kPath, u"one", 1);
    RegistryMemorySetDword(kUser, kPath, u"three", 3);
    RegKey* key = Open();
    uint32_t count = 0;
    uint32_t longest = 0;
    RegKeyQueryInfo(key, &count, &longest);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(longest, 5u);
    char16_t name[6];
    uint32_t length = 6;
    EXPECT_TRUE(RegKeyEnumValue(key, 1, name, &length));
    EXPECT_EQ(std::u16string(name, length), u"three");
    length = 6;
    EXPECT_FALSE(RegKeyEnumValue(key, 2, name, &length));
}

TEST_F(RegistryKey, CountsNothingWhenTheRegistryFails) {
    RegistryMemorySetDword(kUser, kPath, u"one", 1);
    RegKey* key = Open();
    FaultScope fault(FaultPoint::kRegistryInfo, {.first = 1});
    uint32_t count = 9;
    uint32_t longest = 9;
    RegKeyQueryInfo(key, &count, &longest);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(longest, 0u);
}

TEST_F(RegistryKey, DeletesValues) {
    RegistryMemorySetDword(kUser, kPath, u"one", 1);
    RegKey* key = Open();
    EXPECT_TRUE(RegKeyDeleteValue(key, u"one"));
    EXPECT_FALSE(RegKeyDeleteValue(key, u"one"));
}

TEST_F(RegistryKey, FailingCallsGiveNothing) {
    RegistryMemorySetDword(kUser, kPath, u"n", 1);
    {
        FaultScope fault(FaultPoint::kRegistryCreate, {.first = 1});
        EXPECT_EQ(RegKeyOpen(kUser, kPath), nullptr);
    }
    {
        FaultScope fault(FaultPoint::kRegistryOpen, {.first = 1});
        EXPECT_EQ(RegKeyOpenExisting(kUser, kPath), nullptr);
    }
    RegKey* key = Open();
    for (uint32_t call = 1; call <= 2; ++call) {
        FaultScope fault(FaultPoint::kRegistryQuery, {.first = call});
        uint32_t size = 9;
        EXPECT_EQ(RegKeyQuery(key, u"n", &size), nullptr) << "query " << call;
        EXPECT_EQ(size, 0u);
        EXPECT_EQ(key->value, nullptr);
    }
    FaultScope fault(FaultPoint::kRegistrySet, {.first = 1});
    EXPECT_FALSE(RegKeySetDword(key, u"n", 2));
}

TEST_F(RegistryKey, RunningOutOfMemoryGivesNothing) {
    RegistryMemorySetDword(kUser, kPath, u"n", 1);
    {
        FaultScope fault(FaultPoint::kAllocation, {.first = 1});
        EXPECT_EQ(RegKeyOpen(kUser, kPath), nullptr);
        EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
    }
    RegKey* key = Open();
    FaultScope fault(FaultPoint::kAllocation, {.first = 1});
    EXPECT_EQ(RegKeyQueryDword(key, u"n", 77), 77u);
    EXPECT_EQ(HostShellLog().memoryBoxes, 2u);
}

}  // namespace
}  // namespace nira
