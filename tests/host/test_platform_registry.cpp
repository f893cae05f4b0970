#include <gtest/gtest.h>

#include <cstring>

#include "platform/host/faults.h"
#include "platform/host/last_error.h"
#include "platform/host/registry_memory.h"

namespace nira {
namespace {

constexpr RegistryRoot kUser = RegistryRoot::kCurrentUser;

class RegistryOnTheHost : public ::testing::Test {
  protected:
    void SetUp() override { RegistryMemoryReset(); }
    void TearDown() override {
        EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
        RegistryMemoryReset();
        FaultResetAll();
    }
};

TEST_F(RegistryOnTheHost, FindsKeysAndValuesWithoutCase) {
    RegistryHandle key = RegistryCreate(kUser, u"Software\\NIRA");
    const uint32_t value = 7;
    EXPECT_TRUE(RegistrySet(key, u"TabSize", RegistryType::kDword, &value, 4));
    RegistryClose(key);

    RegistryHandle again = RegistryOpen(kUser, u"SOFTWARE\\nira");
    ASSERT_NE(again, nullptr);
    uint32_t size = 0;
    EXPECT_TRUE(RegistryQuery(again, u"tabsize", nullptr, &size));
    EXPECT_EQ(size, 4u);
    uint32_t read = 0;
    EXPECT_TRUE(RegistryQuery(again, u"TABSIZE", &read, &size));
    EXPECT_EQ(read, 7u);
    RegistryClose(again);
    EXPECT_EQ(RegistryOpen(RegistryRoot::kLocalMachine, u"Software\\NIRA"), nullptr);
}

TEST_F(RegistryOnTheHost, OpensOnlyWhatIsThereAndOnlyForReading) {
    EXPECT_EQ(RegistryOpen(kUser, u"Software\\None"), nullptr);
    EXPECT_EQ(HostLastError(), kErrorFileNotFound);
    EXPECT_FALSE(RegistryMemoryHasKey(kUser, u"Software\\None"));
    RegistryMemorySetDword(kUser, u"Key", u"a", 1);
    RegistryHandle key = RegistryOpen(kUser, u"Key");
    const uint32_t value = 2;
    EXPECT_FALSE(RegistrySet(key, u"a", RegistryType::kDword, &value, 4));
    EXPECT_EQ(HostLastError(), kErrorAccessDenied);
    EXPECT_FALSE(RegistryDeleteValue(key, u"a"));
    EXPECT_EQ(RegistryMemoryFind(kUser, u"Key", u"a")->bytes[0], 1);
    RegistryClose(key);
}

TEST_F(RegistryOnTheHost, RefusesALeadingBackslash) {
    EXPECT_EQ(RegistryCreate(kUser, u"\\Software\\NIRA"), nullptr);
    EXPECT_EQ(HostLastError(), kErrorBadPathName);
    EXPECT_EQ(RegistryOpen(kUser, u"\\Software\\NIRA"), nullptr);
    EXPECT_EQ(HostLastError(), kErrorBadPathName);
}

TEST_F(RegistryOnTheHost, RefusesTooLittleRoom) {
    RegistryMemorySetString(kUser, u"Key", u"Name", u"text");
    RegistryHandle key = RegistryOpen(kUser, u"Key");
    char16_t text[5];
    uint32_t size = 8;
    EXPECT_FALSE(RegistryQuery(key, u"Name", text, &size));
    EXPECT_EQ(HostLastError(), kErrorMoreData);
    size = 10;
    EXPECT_TRUE(RegistryQuery(key, u"Name", text, &size));
    EXPECT_EQ(std::u16string(text), u"text");
    uint32_t length = 4;
    EXPECT_FALSE(RegistryEnumValue(key, 0, text, &length));
    length = 5;
    EXPECT_TRUE(RegistryEnumValue(key, 0, text, &length));
    EXPECT_EQ(length, 4u);
    RegistryClose(key);
}

TEST_F(RegistryOnTheHost, EnumeratesInOrderOfFirstSetting) {
    RegistryMemorySetDword(kUser, u"Key", u"second to none", 1);
    RegistryMemorySetDword(kUser, u"Key", u"b", 2);
    RegistryMemorySetDword(kUser, u"Key", u"a", 3);
    RegistryMemorySetDword(kUser, u"Key", u"B", 4);
    RegistryHandle key = RegistryCreate(kUser, u"Key");
    uint32_t count = 0;
    uint32_t longest = 0;
    EXPECT_TRUE(RegistryQueryInfo(key, &count, &longest));
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(longest, 14u);
    EXPECT_TRUE(RegistryDeleteValue(key, u"SECOND to none"));
    EXPECT_FALSE(RegistryDeleteValue(key, u"second to none"));
    char16_t name[16];
    uint32_t length = 16;
    EXPECT_TRUE(RegistryEnumValue(key, 0, name, &length));
    EXPECT_EQ(std::u16string(name), u"b");
    length = 16;
    EXPECT_TRUE(RegistryEnumValue(key, 1, name, &length));
    EXPECT_EQ(std::u16string(name), u"a");
    length = 16;
    EXPECT_FALSE(RegistryEnumValue(key, 2, name, &length));
    EXPECT_EQ(HostLastError(), kErrorNoMoreItems);
    EXPECT_EQ(RegistryMemoryFind(kUser, u"Key", u"b")->bytes[0], 4);
    RegistryClose(key);
}

TEST_F(RegistryOnTheHost, EveryCallFailsOnDemand) {
    RegistryHandle key = RegistryCreate(kUser, u"Key");
    RegistryMemorySetDword(kUser, u"Key", u"a", 1);
    FaultScope fault(FaultPoint::kAnyRegistry, {.howMany = 7});
    uint32_t size = 4;
    uint32_t other = 4;
    char16_t name[4];
    EXPECT_EQ(RegistryCreate(kUser, u"Key"), nullptr);
    EXPECT_EQ(RegistryOpen(kUser, u"Key"), nullptr);
    EXPECT_FALSE(RegistryQuery(key, u"a", nullptr, &size));
    EXPECT_FALSE(RegistrySet(key, u"b", RegistryType::kDword, &size, 4));
    EXPECT_FALSE(RegistryQueryInfo(key, &size, &other));
    EXPECT_FALSE(RegistryEnumValue(key, 0, name, &other));
    EXPECT_FALSE(RegistryDeleteValue(key, u"a"));
    EXPECT_EQ(fault.Hits(), 7u);
    EXPECT_TRUE(RegistryDeleteValue(key, u"a"));
    RegistryClose(key);
}

}  // namespace
}  // namespace nira
