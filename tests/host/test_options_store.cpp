#include "settings/options_store.h"

#include <cstring>

#include "host/files_support.h"
#include "platform/system_colors.h"
#include "view/fonts.h"

namespace nira {
namespace {

constexpr RegistryRoot kUser = RegistryRoot::kCurrentUser;
constexpr const char16_t* kKey = u"Software\\NIRA";

class OptionsStore : public ServicesTest {
  protected:
    OptionsStore() { InitFonts(nullptr); }
    ~OptionsStore() override {
        FreeOptions();
        ShutdownFonts();
    }

    static void Reload() {
        FreeOptions();
        ASSERT_EQ(LoadOptions(), 1);
    }
};

struct Number {
    const char16_t* name;
    uint32_t Options::*field;
    uint32_t missing;
};

constexpr Number kNumbers[] = {
    {u"safeSave", &Options::safeSave, 0},   {u"undoSize", &Options::undoSize, 100},
    {u"bomSave", &Options::bomSave, 1},     {u"stopWordEnd", &Options::stopWordEnd, 0},
    {u"tabSize", &Options::tabSize, 3},     {u"keepIndent", &Options::keepIndent, 0},
    {u"PasteMode", &Options::pasteMode, 0}, {u"SmartBase", &Options::smartBase, 0},
    {u"HistLen", &Options::histLen, 10},    {u"WordWrapDefault", &Options::wordWrapDefault, 0},
};

void ExpectDefaults() {
    const Options& options = TheOptions();
    EXPECT_EQ(std::u16string(options.font), u"Courier New\u100E");
    EXPECT_EQ(std::u16string(options.wordSeparators), u",.;");
    EXPECT_EQ(std::u16string(options.defaultEncoding), u"ANSI");
    EXPECT_EQ(options.text.fore, SystemColor(SystemColorIndex::kWindowText));
    EXPECT_EQ(options.text.back, SystemColor(SystemColorIndex::kWindow));
    EXPECT_EQ(options.selection.fore, SystemColor(SystemColorIndex::kHighlightText));
    EXPECT_EQ(options.selection.back, SystemColor(SystemColorIndex::kHighlight));
    for (const Number& number : kNumbers) EXPECT_EQ(options.*number.field, number.missing);
    EXPECT_EQ(options.sheetCopy, nullptr);
}

TEST_F(OptionsStore, AnEmptyRegistryGivesTheDefaults) {
    SheetCopy left = {};
    TheOptions().sheetCopy = &left;
    ASSERT_EQ(LoadOptions(), 1);
    ExpectDefaults();
    EXPECT_EQ(MemSize(nullptr, TheOptions().font), 26u);
}

TEST_F(OptionsStore, LoadingMakesTheKeyAndWritesNothing) {
    ASSERT_EQ(LoadOptions(), 1);
    EXPECT_TRUE(RegistryMemoryHasKey(kUser, kKey));
    EXPECT_TRUE(RegistryMemoryValues(kUser, kKey).empty());
}

TEST_F(OptionsStore, AcquiresOneFontForBothStyles) {
    ASSERT_EQ(LoadOptions(), 1);
    FontCacheEntry* entry = FindFontEntry(TheOptions().font);
    ASSERT_NE(entry, nullptr);
    EXPECT_NE(entry->font, nullptr);
    EXPECT_EQ(TheOptions().text.font, entry->font);
    EXPECT_EQ(TheOptions().selection.font, entry->font);
    EXPECT_EQ(entry->references, 1u);
}

TEST_F(OptionsStore, TakesValuesAsTheyAre) {
    const uint32_t odd[] = {0, 1, 500, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    for (const uint32_t value : odd) {
        for (const Number& number : kNumbers) RegistryMemorySetDword(kUser, kKey, number.name, value);
        Reload();
        for (const Number& number : kNumbers) EXPECT_EQ(TheOptions().*number.field, value);
    }
}

TEST_F(OptionsStore, TheTabSizeOfMeasuringIsTheStoredOneAsFarAsItIsSigned) {
    const std::pair<uint32_t, int32_t> sizes[] = {
        {0, 0},
        {3, 3},
        {500, 500},
        {0x7FFFFFFF, INT32_MAX},
        {0x80000000, INT32_MAX},
        {0xFFFFFFFE, INT32_MAX},
        {0xFFFFFFFF, -1},
    };
    for (const auto& [stored, measured] : sizes) {
        RegistryMemorySetDword(kUser, kKey, u"tabSize", stored);
        Reload();
        EXPECT_EQ(OptionsTabSize(), measured) << stored;
    }
}

TEST_F(OptionsStore, ReadsEachValueIntoItsOwnField) {
    uint32_t next = 1000;
    for (const Number& number : kNumbers) RegistryMemorySetDword(kUser, kKey, number.name, next++);
    for (const char16_t* name : {u"textFore", u"textBack", u"selFore", u"selBack"}) {
        RegistryMemorySetDword(kUser, kKey, name, next++);
    }
    RegistryMemorySetString(kUser, kKey, u"Font", u"Arial\u010C");
    RegistryMemorySetString(kUser, kKey, u"WordSeparator", u"+-");
    RegistryMemorySetString(kUser, kKey, u"DefaultEncoding", u"UTF-8");
    Reload();
    next = 1000;
    for (const Number& number : kNumbers) EXPECT_EQ(TheOptions().*number.field, next++);
    EXPECT_EQ(TheOptions().text.fore, 1010u);
    EXPECT_EQ(TheOptions().text.back, 1011u);
    EXPECT_EQ(TheOptions().selection.fore, 1012u);
    EXPECT_EQ(TheOptions().selection.back, 1013u);
    EXPECT_EQ(std::u16string(TheOptions().font), u"Arial\u010C");
    EXPECT_EQ(std::u16string(TheOptions().wordSeparators), u"+-");
    EXPECT_EQ(std::u16string(TheOptions().defaultEncoding), u"UTF-8");
}

TEST_F(OptionsStore, ReadsNoFurtherThanAValueGoes) {
    RegistryMemorySet(kUser, kKey, u"tabSize", RegistryType::kBinary, "\x05\0\0", 3);
    RegistryMemorySet(kUser, kKey, u"undoSize", RegistryType::kBinary, "\x05\0\0\0\x09", 5);
    RegistryMemorySet(kUser, kKey, u"WordSeparator", RegistryType::kBinary, "a\0b", 3);
    RegistryMemorySet(kUser, kKey, u"DefaultEncoding", RegistryType::kBinary, "U\0T\0", 4);
    Reload();
    EXPECT_EQ(TheOptions().tabSize, 3u);
    EXPECT_EQ(TheOptions().undoSize, 5u);
    EXPECT_EQ(std::u16string(TheOptions().wordSeparators), u"a");
    EXPECT_EQ(std::u16string(TheOptions().defaultEncoding), u"UT");
}

TEST_F(OptionsStore, UsesAnEmptyFontAsItIs) {
    RegistryMemorySetString(kUser, kKey, u"Font", u"");
    Reload();
    EXPECT_EQ(std::u16string(TheOptions().font), u"");
    RegistryMemorySet(kUser, kKey, u"Font", RegistryType::kString, "", 0);
    Reload();
    EXPECT_EQ(std::u16string(TheOptions().font), u"");
}

TEST_F(OptionsStore, AnUnreadableRegistryGivesTheDefaults) {
    RegistryMemorySetDword(kUser, kKey, u"tabSize", 8);
    for (const FaultPoint point : {FaultPoint::kRegistryCreate, FaultPoint::kRegistryQuery}) {
        FaultScope fault(point, {.first = 1, .howMany = kFaultForever});
        Reload();
        ExpectDefaults();
    }
    EXPECT_TRUE(MessageLog().empty());
}

TEST_F(OptionsStore, OneUnreadableValueGivesItsDefaultAlone) {
    RegistryMemorySetString(kUser, kKey, u"Font", u"Arial\u010C");
    RegistryMemorySetDword(kUser, kKey, u"tabSize", 8);
    FaultScope fault(FaultPoint::kRegistryQuery, {.first = 1});
    Reload();
    EXPECT_EQ(std::u16string(TheOptions().font), u"Courier New\u100E");
    EXPECT_EQ(TheOptions().tabSize, 8u);
}

TEST_F(OptionsStore, SavedOptionsAreFoundAgain) {
    ASSERT_EQ(LoadOptions(), 1);
    Options& options = TheOptions();
    uint32_t next = 2000;
    for (const Number& number : kNumbers) options.*number.field = next++;
    options.text.fore = 1;
    options.text.back = 2;
    options.selection.fore = 3;
    options.selection.back = 4;
    MemFree(nullptr, options.defaultEncoding);
    options.defaultEncoding = MemStrDup(nullptr, u"UTF-8");
    SaveOptions();
    EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
    Reload();
    next = 2000;
    for (const Number& number : kNumbers) EXPECT_EQ(options.*number.field, next++);
    EXPECT_EQ(options.text.fore, 1u);
    EXPECT_EQ(options.text.back, 2u);
    EXPECT_EQ(options.selection.fore, 3u);
    EXPECT_EQ(options.selection.back, 4u);
    EXPECT_EQ(std::u16string(options.defaultEncoding), u"UTF-8");
    EXPECT_EQ(std::u16string(options.font), u"Courier New\u100E");
    EXPECT_TRUE(MessageLog().empty());
}

TEST_F(OptionsStore, WritesNamesTypesAndOrder) {
    ASSERT_EQ(LoadOptions(), 1);
    SaveOptions();
    const char16_t* names[] = {
        u"Font",      u"WordSeparator", u"textFore", u"textBack",        u"selFore",        u"selBack",
        u"safeSave",  u"undoSize",      u"bomSave",  u"stopWordEnd",     u"tabSize",        u"keepIndent",
        u"PasteMode", u"SmartBase",     u"HistLen",  u"WordWrapDefault", u"defaultEncoding"};
    const std::vector<RegistryMemoryValue> values = RegistryMemoryValues(kUser, kKey);
    ASSERT_EQ(values.size(), std::size(names));
    for (size_t i = 0; i < values.size(); ++i) {
        const bool text = i < 2 || i == 16;
        EXPECT_EQ(values[i].name, names[i]);
        EXPECT_EQ(values[i].type, text ? RegistryType::kString : RegistryType::kDword);
    }
    EXPECT_EQ(values[0].bytes.size(), 26u);
    EXPECT_EQ(values[1].bytes.size(), 8u);
    EXPECT_EQ(values[16].bytes.size(), 10u);
}

TEST_F(OptionsStore, TellsThatTheKeyCannotBeOpened) {
    ASSERT_EQ(LoadOptions(), 1);
    FaultScope fault(FaultPoint::kRegistryCreate, {.first = 1});
    SaveOptions();
    ASSERT_EQ(MessageLog().size(), 1u);
    EXPECT_EQ(MessageLog()[0].text, u"Error saving options");
    EXPECT_EQ(MessageLog()[0].caption, u"Error");
    EXPECT_EQ(MessageLog()[0].kind, MessageKind::kError);
    EXPECT_TRUE(RegistryMemoryValues(kUser, kKey).empty());
}

TEST_F(OptionsStore, PassesOverSingleFailedWrites) {
    ASSERT_EQ(LoadOptions(), 1);
    for (uint32_t call = 1; call <= 17; ++call) {
        RegistryMemoryDeleteKey(kUser, kKey);
        FaultScope fault(FaultPoint::kRegistrySet, {.first = call});
        SaveOptions();
        EXPECT_EQ(RegistryMemoryValues(kUser, kKey).size(), 16u);
    }
    EXPECT_TRUE(MessageLog().empty());
}

// Whatever fails, options load, with the default or the stored value of each, and saving ends without a
// crash.
TEST_F(OptionsStore, EveryRegistryCallMayFail) {
    for (const uint32_t howMany : {1u, kFaultForever}) {
        uint32_t hits = 1;
        for (uint32_t call = 1; hits > 0; ++call) {
            ASSERT_LT(call, 200u);
            RegistryMemorySetDword(kUser, kKey, u"tabSize", 8);
            FaultScope fault(FaultPoint::kAnyRegistry, {.first = call, .howMany = howMany});
            Reload();
            EXPECT_TRUE(TheOptions().tabSize == 8 || TheOptions().tabSize == 3) << call;
            EXPECT_EQ(TheOptions().undoSize, 100u) << call;
            EXPECT_NE(TheOptions().font, nullptr) << call;
            SaveOptions();
            hits = fault.Hits();
            EXPECT_LE(MessageLog().size(), 1u) << "only a key that cannot be opened is told";
            MessageLogReset();
            EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
            RegistryMemoryDeleteKey(kUser, kKey);
        }
    }
}

TEST_F(OptionsStore, FreeingTwiceIsHarmless) {
    ASSERT_EQ(LoadOptions(), 1);
    FreeOptions();
    FreeOptions();
    EXPECT_EQ(TheOptions().font, nullptr);
    EXPECT_EQ(TheOptions().wordSeparators, nullptr);
    EXPECT_EQ(TheOptions().defaultEncoding, nullptr);
}

TEST_F(OptionsStore, FailsCleanlyWhenMemoryRunsOut) {
    RegistryMemorySetString(kUser, kKey, u"Font", u"Arial\u010C");
    uint32_t failures = 0;
    for (uint32_t call = 1;; ++call) {
        ShutdownFonts();
        InitFonts(nullptr);
        HostShellLogReset();
        uint32_t hits = 0;
        int loaded = 0;
        {
            FaultScope fault(FaultPoint::kAllocation, {.first = call});
            loaded = LoadOptions();
            hits = fault.Hits();
        }
        EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
        EXPECT_EQ(HostShellLog().memoryBoxes, hits);
        EXPECT_TRUE(loaded == 1 || hits != 0);
        failures += loaded == 0 ? 1 : 0;
        FreeOptions();
        if (hits == 0) break;
    }
    EXPECT_GE(failures, 3u) << "the three texts";
}

}  // namespace
}  // namespace nira
