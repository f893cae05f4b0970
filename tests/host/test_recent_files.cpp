#include "files/recent_files.h"

#include <vector>

#include "host/files_support.h"
#include "platform/host/menu_state.h"
#include "resources/resource.h"

namespace nira {
namespace {

constexpr RegistryRoot kUser = RegistryRoot::kCurrentUser;
constexpr const char16_t* kKey = u"Software\\NIRA\\MRU";

std::u16string openedPath;
uint32_t openedCodec = 0;
int opened = 0;

void TakeOpened(char16_t* path, uint32_t codec) {
    openedPath = path;
    openedCodec = codec;
    ++opened;
    EXPECT_EQ(RegistryMemoryOpenHandles(), 0u) << "the key is open while the file is opened";
    MemFree(nullptr, path);
}

class RecentFiles : public ServicesTest {
  protected:
    RecentFiles() {
        InitCodecs();
        InitRecentFiles(&menu_);
        SetRecentFileOpener(TakeOpened);
        openedPath.clear();
        openedCodec = 99;
        opened = 0;
    }
    ~RecentFiles() override {
        InitRecentFiles(nullptr);
        SetRecentFileOpener(nullptr);
    }

    static void Put(int number, const std::u16string& entry) {
        RegistryMemorySetString(kUser, kKey, Wide(std::to_string(number)).c_str(), entry.c_str());
    }
    static std::u16string Get(int number) {
        const auto* value = RegistryMemoryFind(kUser, kKey, Wide(std::to_string(number)).c_str());
        if (value == nullptr) return u"(missing)";
        return std::u16string(reinterpret_cast<const char16_t*>(value->bytes.data()));
    }
    std::vector<std::u16string> Labels() const {
        std::vector<std::u16string> labels;
        for (const MenuItem& item : menu_.items) labels.push_back(item.text);
        return labels;
    }

    MenuTag menu_;
};

TEST_F(RecentFiles, AnEmptyListShowsOneGrayedItem) {
    ASSERT_EQ(menu_.items.size(), 1u);
    EXPECT_EQ(menu_.items[0].text, u"(Empty)");
    EXPECT_TRUE(menu_.items[0].grayed);
    EXPECT_TRUE(RegistryMemoryHasKey(kUser, kKey));
}

TEST_F(RecentFiles, AClosedFileIsOnTop) {
    AddRecentFile(u"\\a.txt", kCodecUtf8);
    AddRecentFile(u"\\b.txt", kCodecAnsi);
    EXPECT_EQ(Get(0), u"\\b.txt\\\\ANSI");
    EXPECT_EQ(Get(1), u"\\a.txt\\\\UTF-8");
    EXPECT_EQ(Get(2), u"(missing)");
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"&0 \\b.txt", u"&1 \\a.txt"}));
    EXPECT_EQ(menu_.items[1].id, uint32_t{CMD_RECENT_FIRST} + 1);
    EXPECT_FALSE(menu_.items[0].grayed);
}

TEST_F(RecentFiles, AnUnknownCodecIsStoredAsAnsi) {
    AddRecentFile(u"\\a.txt", 55);
    EXPECT_EQ(Get(0), u"\\a.txt\\\\ANSI");
}

TEST_F(RecentFiles, KeepsTheTenClosedLast) {
    for (int i = 1; i <= 11; ++i) AddRecentFile((u"\\" + Wide(std::to_string(i))).c_str(), kCodecAnsi);
    EXPECT_EQ(Get(0), u"\\11\\\\ANSI");
    EXPECT_EQ(Get(9), u"\\2\\\\ANSI");
    EXPECT_EQ(Get(10), u"(missing)");
    EXPECT_EQ(menu_.items.size(), 10u);
    EXPECT_EQ(menu_.items[9].text, u"&9 \\2");
    EXPECT_EQ(menu_.items[9].id, 7429u);
}

TEST_F(RecentFiles, AFileClosedTwiceIsListedTwice) {
    AddRecentFile(u"\\a", kCodecAnsi);
    AddRecentFile(u"\\a", kCodecAnsi);
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"&0 \\a", u"&1 \\a"}));
    RemoveRecentFile(u"\\a");
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"&0 \\a"}));
}

TEST_F(RecentFiles, RemovingMovesTheOthersUp) {
    for (int i = 9; i >= 0; --i) AddRecentFile((u"\\" + Wide(std::to_string(i))).c_str(), kCodecUtf8);
    RemoveRecentFile(u"\\3");
    EXPECT_EQ(Get(2), u"\\2\\\\UTF-8");
    EXPECT_EQ(Get(3), u"\\4\\\\UTF-8");
    EXPECT_EQ(Get(8), u"\\9\\\\UTF-8");
    EXPECT_EQ(Get(9), u"(missing)");
    EXPECT_EQ(menu_.items.size(), 9u);
}

TEST_F(RecentFiles, RemovesTheLastAndTheFirst) {
    for (int i = 2; i >= 0; --i) AddRecentFile((u"\\" + Wide(std::to_string(i))).c_str(), kCodecAnsi);
    RemoveRecentFile(u"\\2");
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"&0 \\0", u"&1 \\1"}));
    RemoveRecentFile(u"\\0");
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"&0 \\1"}));
    RemoveRecentFile(u"\\1");
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"(Empty)"}));
}

TEST_F(RecentFiles, ComparesWholePathsExactly) {
    AddRecentFile(u"\\Notes.txt", kCodecAnsi);
    for (const char16_t* other :
         {u"\\notes.txt", u"\\Notes.tx", u"\\Notes.txt2", u"", u"\\Notes.txt\\\\ANSI"}) {
        RemoveRecentFile(other);
        EXPECT_EQ(menu_.items[0].text, u"&0 \\Notes.txt");
    }
}

TEST_F(RecentFiles, RemovingStopsAtAGap) {
    Put(0, u"\\a\\\\ANSI");
    Put(2, u"\\c\\\\ANSI");
    RemoveRecentFile(u"\\c");
    EXPECT_EQ(Get(2), u"\\c\\\\ANSI") << "what stands behind a gap is not looked at";
    RemoveRecentFile(u"\\a");
    EXPECT_EQ(Get(0), u"(missing)");
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"&2 \\c"}));
}

TEST_F(RecentFiles, AddingMovesWhatIsBehindAGap) {
    Put(1, u"\\b\\\\ANSI");
    AddRecentFile(u"\\a", kCodecAnsi);
    EXPECT_EQ(Get(0), u"\\a\\\\ANSI");
    EXPECT_EQ(Get(1), u"\\b\\\\ANSI") << "there was no value 0 to take its place";
    EXPECT_EQ(Get(2), u"\\b\\\\ANSI");
}

TEST_F(RecentFiles, AServersPathIsNotCutAtItsStart) {
    AddRecentFile(u"\\\\server\\a", kCodecUtf8);
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"&0 \\\\server\\a"}));
    OpenRecentFile(CMD_RECENT_FIRST);
    EXPECT_EQ(openedPath, u"\\\\server\\a");
    EXPECT_EQ(openedCodec, kCodecUtf8);
    RemoveRecentFile(u"\\\\server\\a");
    EXPECT_EQ(Get(0), u"(missing)");
}

TEST_F(RecentFiles, ALongPathIsCutInTheMenuOnly) {
    const std::u16string path = u"\\" + std::u16string(300, u'x');
    AddRecentFile(path.c_str(), kCodecAnsi);
    EXPECT_EQ(menu_.items[0].text, u"&0 " + path.substr(0, 260));
    EXPECT_EQ(Get(0), path + u"\\\\ANSI");
    OpenRecentFile(CMD_RECENT_FIRST);
    EXPECT_EQ(openedPath, path);
}

TEST_F(RecentFiles, ANameIsShownAsItIs) {
    AddRecentFile(u"\\a&b\tc", kCodecAnsi);
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"&0 \\a&&b c"}));
    OpenRecentFile(CMD_RECENT_FIRST);
    EXPECT_EQ(openedPath, u"\\a&b\tc");
    RemoveRecentFile(u"\\a&b\tc");
    EXPECT_EQ(Get(0), u"(missing)");
}

TEST_F(RecentFiles, TheLongestNameOfAmpersandsFits) {
    AddRecentFile(std::u16string(400, u'&').c_str(), kCodecAnsi);
    EXPECT_EQ(menu_.items[0].text, u"&0 " + std::u16string(520, u'&'));
}

TEST_F(RecentFiles, OpensWithTheCodecOfTheEntry) {
    AddRecentFile(u"\\a", kCodecUtf16Be);
    AddRecentFile(u"\\b", kCodecUtf8);
    OpenRecentFile(CMD_RECENT_FIRST + 1);
    EXPECT_EQ(openedPath, u"\\a");
    EXPECT_EQ(openedCodec, kCodecUtf16Be);
}

TEST_F(RecentFiles, OpensAsAnsiWhatNamesNoCodec) {
    Put(0, u"\\a\\\\Gone");
    Put(1, u"\\b");
    Put(2, u"\\c\\\\");
    Put(3, u"\\\\");
    Put(4, u"");
    const std::u16string paths[] = {u"\\a", u"\\b", u"\\c", u"\\\\", u""};
    for (uint32_t i = 0; i < 5; ++i) {
        openedCodec = 99;
        OpenRecentFile(CMD_RECENT_FIRST + i);
        EXPECT_EQ(openedPath, paths[i]);
        EXPECT_EQ(openedCodec, kCodecAnsi);
    }
    EXPECT_EQ(opened, 5);
}

TEST_F(RecentFiles, OpensNothingForAMissingEntry) {
    AddRecentFile(u"\\a", kCodecAnsi);
    OpenRecentFile(CMD_RECENT_FIRST + 1);
    OpenRecentFile(CMD_RECENT_FIRST - 1);
    EXPECT_EQ(opened, 0);
    SetRecentFileOpener(nullptr);
    OpenRecentFile(CMD_RECENT_FIRST);
}

TEST_F(RecentFiles, WorksWithoutAMenu) {
    InitRecentFiles(nullptr);
    AddRecentFile(u"\\a", kCodecAnsi);
    EXPECT_EQ(Get(0), u"\\a\\\\ANSI");
    RemoveRecentFile(u"\\a");
    EXPECT_EQ(Get(0), u"(missing)");
    EXPECT_EQ(Labels(), (std::vector<std::u16string>{u"(Empty)"}));
}

TEST_F(RecentFiles, SurvivesEveryRegistryFailure) {
    bool untouched = false;
    for (uint32_t call = 1; !untouched && call < 500; ++call) {
        RegistryMemoryReset();
        for (int i = 0; i < 10; ++i) Put(i, u"\\" + Wide(std::to_string(i)) + u"\\\\ANSI");
        FaultScope fault(FaultPoint::kAnyRegistry, {.first = call});
        AddRecentFile(u"\\new", kCodecAnsi);
        OpenRecentFile(CMD_RECENT_FIRST + 2);
        RemoveRecentFile(u"\\5");
        EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
        EXPECT_FALSE(menu_.items.empty());
        EXPECT_EQ(RegistryMemoryValues(kUser, kKey).size() >= 8, true) << "call " << call;
        untouched = fault.Hits() == 0;
    }
    EXPECT_TRUE(untouched);
    EXPECT_TRUE(MessageLog().empty());
}

TEST_F(RecentFiles, SurvivesEveryAllocationFailure) {
    bool untouched = false;
    for (uint32_t call = 1; !untouched && call < 500; ++call) {
        RegistryMemoryReset();
        for (int i = 0; i < 10; ++i) Put(i, u"\\" + Wide(std::to_string(i)) + u"\\\\ANSI");
        HostShellLogReset();
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        AddRecentFile(u"\\new", kCodecAnsi);
        OpenRecentFile(CMD_RECENT_FIRST + 2);
        RemoveRecentFile(u"\\5");
        untouched = fault.Hits() == 0;
        EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
        EXPECT_EQ(HostShellLog().memoryBoxes, untouched ? 0u : 1u);
    }
    EXPECT_TRUE(untouched);
}

}  // namespace
}  // namespace nira
