#include "files/folder_listing.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

#include "host/files_support.h"
#include "platform/host/drives.h"
#include "platform/host/last_error.h"

namespace nira {
namespace {

class FolderList : public ServicesTest {
  protected:
    ~FolderList() override {
        FreeListing(&listing);
        HostSetDrives(0);
    }
    ListResult List(const std::string& below = "") {
        return ListFolder(&listing, below.empty() ? Whole().c_str() : folder.Name(below).c_str());
    }
    std::u16string Whole() const {
        const std::u16string name = folder.Name("x");
        return name.substr(0, name.size() - 2);
    }
    std::vector<std::u16string> Names() const {
        std::vector<std::u16string> names;
        for (uint32_t i = 0; i < listing.count; ++i) names.emplace_back(listing.entries[i].name);
        return names;
    }
    void MakeFolder(const std::string& name) const { mkdir(folder.File(name).c_str(), 0755); }
    static std::u16string Size(uint32_t bytes) {
        char16_t text[16];
        const size_t units = FormatSize(text, 16, bytes);
        EXPECT_EQ(std::u16string(text).size(), units);
        return text;
    }

    using Texts = std::vector<std::u16string>;
    TempFolder folder;
    FolderListing listing = {};
};

TEST_F(FolderList, GrowsByTen) {
    std::vector<uint32_t> capacities;
    for (int i = 0; i <= 25; ++i) {
        if (i > 0) folder.Put("file" + std::to_string(i), "");
        ASSERT_EQ(List(), ListResult::kListed);
        ASSERT_EQ(listing.count, static_cast<uint32_t>(i));
        if (capacities.empty() || capacities.back() != listing.capacity)
            capacities.push_back(listing.capacity);
    }
    EXPECT_EQ(capacities, (std::vector<uint32_t>{0, 10, 20, 30}));
}

TEST_F(FolderList, LeavesOutItselfAndItsParent) {
    folder.Put(".hidden", "");
    folder.Put("...", "");
    ASSERT_EQ(List(), ListResult::kListed);
    EXPECT_EQ(Names(), (Texts{u"...", u".hidden"}));
}

TEST_F(FolderList, OfAnEmptyFolderIsEmpty) {
    ASSERT_EQ(List(), ListResult::kListed);
    EXPECT_EQ(listing.count, 0u);
}

TEST_F(FolderList, KnowsKindSizeAndTime) {
    MakeFolder("sub");
    folder.Put("a", "12345");
    const timespec times[2] = {{0, 0}, {1000000000, 0}};
    utimensat(AT_FDCWD, folder.File("a").c_str(), times, 0);
    ASSERT_EQ(List(), ListResult::kListed);
    ASSERT_EQ(listing.count, 2u);
    EXPECT_EQ(listing.entries[0].kind, kEntryFolder);
    EXPECT_EQ(listing.entries[1].kind, kEntryFile);
    EXPECT_EQ(listing.entries[1].size, 5u);
    EXPECT_EQ(listing.entries[1].modified, 126444736000000000u);
}

TEST_F(FolderList, ShowsALinkToNowhereAsAFile) {
    ASSERT_EQ(symlink("/nowhere/at/all", folder.File("link").c_str()), 0);
    ASSERT_EQ(List(), ListResult::kListed);
    EXPECT_EQ(Names(), Texts{u"link"});
    EXPECT_EQ(listing.entries[0].kind, kEntryFile);
}

TEST_F(FolderList, StartsByNameWithFoldersFirst) {
    MakeFolder("zoo");
    MakeFolder("Alpha");
    for (const char* name : {"b.txt", "A.txt", "a.txt", "C.txt", "\xC3\x84rger", "\xC3\xA4hnlich"})
        folder.Put(name, "");
    ASSERT_EQ(List(), ListResult::kListed);
    EXPECT_EQ(Names(), (Texts{u"Alpha", u"zoo", u"A.txt", u"a.txt", u"b.txt", u"C.txt", u"\u00E4hnlich",
                              u"\u00C4rger"}));
}

TEST_F(FolderList, KeepsOneOrderOfNamesThatDifferInNothingButCase) {
    const Texts sorted = {u"ABC", u"ABc", u"AbC", u"Abc", u"aBC", u"aBc", u"abC", u"abc"};
    for (const char* name : {"aBc", "ABc", "abc", "AbC", "ABC", "abC", "Abc", "aBC"}) folder.Put(name, "");
    ASSERT_EQ(List(), ListResult::kListed);
    EXPECT_EQ(Names(), sorted);
    std::reverse(listing.entries, listing.entries + listing.count);
    SortBySize(&listing);
    EXPECT_EQ(Names(), sorted);
}

TEST_F(FolderList, SortsFilesBySizeAndTheRestByName) {
    MakeFolder("z");
    MakeFolder("y");
    folder.Put("big", "123456789");
    folder.Put("same2", "123");
    folder.Put("Same1", "123");
    folder.Put("none", "");
    ASSERT_EQ(List(), ListResult::kListed);
    SortBySize(&listing);
    EXPECT_EQ(Names(), (Texts{u"y", u"z", u"none", u"Same1", u"same2", u"big"}));
    SortByName(&listing);
    EXPECT_EQ(Names(), (Texts{u"y", u"z", u"big", u"none", u"Same1", u"same2"}));
}

TEST_F(FolderList, OfTheRootFolderShowsTheDrives) {
    HostSetDrives(1u << 2 | 1u << 25);
    ASSERT_EQ(ListFolder(&listing, u""), ListResult::kListed);
    for (const char16_t* drive : {u"C:", u"Z:"}) {
        const int index = FindEntry(listing, drive);
        ASSERT_GE(index, 0);
        EXPECT_EQ(listing.entries[index].kind, kEntryFolder);
        EXPECT_EQ(listing.entries[index].modified, 0u);
    }
    EXPECT_EQ(FindEntry(listing, u"D:"), -1);
    EXPECT_GE(FindEntry(listing, u"tmp"), 0);
}

TEST_F(FolderList, OfAnotherFolderShowsNoDrives) {
    HostSetDrives(1u << 2);
    ASSERT_EQ(List(), ListResult::kListed);
    EXPECT_EQ(listing.count, 0u);
}

TEST_F(FolderList, StaysWhenAFolderCannotBeOpened) {
    folder.Put("a", "");
    MakeFolder("locked");
    ASSERT_EQ(List(), ListResult::kListed);
    const Texts before = Names();
    chmod(folder.File("locked").c_str(), 0);
    EXPECT_EQ(List("locked"), ListResult::kFailed);
    EXPECT_EQ(HostLastError(), kErrorAccessDenied);
    EXPECT_EQ(List("missing"), ListResult::kFailed);
    EXPECT_EQ(HostLastError(), kErrorFileNotFound);
    EXPECT_EQ(List("a"), ListResult::kFailed);
    EXPECT_EQ(Names(), before);
}

TEST_F(FolderList, StaysWhenTheEnumerationBreaksOff) {
    folder.Put("old", "");
    ASSERT_EQ(List(), ListResult::kListed);
    for (int i = 0; i < 12; ++i) folder.Put("new" + std::to_string(i), "");
    for (uint32_t call = 1; call <= 15; ++call) {
        FaultScope fault(FaultPoint::kFolderNext, {.first = call});
        EXPECT_EQ(List(), ListResult::kFailed) << call;
        EXPECT_EQ(HostLastError(), kErrorAccessDenied);
        EXPECT_EQ(Names(), Texts{u"old"});
    }
    EXPECT_EQ(List(), ListResult::kListed);
    EXPECT_EQ(listing.count, 13u);
}

TEST_F(FolderList, StaysWhenMemoryRunsOut) {
    folder.Put("old", "");
    ASSERT_EQ(List(), ListResult::kListed);
    for (int i = 0; i < 12; ++i) folder.Put("new" + std::to_string(i), "");
    for (uint32_t call = 1;; ++call) {
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const ListResult result = List();
        if (fault.Hits() == 0) break;
        EXPECT_EQ(result, ListResult::kNoMemory) << call;
        EXPECT_EQ(Names(), Texts{u"old"});
    }
    EXPECT_EQ(listing.count, 13u);
}

TEST_F(FolderList, FindsNamesWithoutRegardToCase) {
    for (const char* name : {"alpha", "Beta", "beta2", "gamma"}) folder.Put(name, "");
    ASSERT_EQ(List(), ListResult::kListed);
    EXPECT_EQ(FindEntry(listing, u"BETA"), 1);
    EXPECT_EQ(FindEntry(listing, u"bet"), -1);
    EXPECT_EQ(FindEntryByStart(listing, u"be", 0, false), 1);
    EXPECT_EQ(FindEntryByStart(listing, u"be", 2, false), 2);
    EXPECT_EQ(FindEntryByStart(listing, u"BE", 3, true), 1);
    EXPECT_EQ(FindEntryByStart(listing, u"be", 3, false), -1);
    EXPECT_EQ(FindEntryByStart(listing, u"be", 4, true), 1);
    EXPECT_EQ(FindEntryByStart(listing, u"be", 99, true), 1);
    EXPECT_EQ(FindEntryByStart(listing, u"x", 0, true), -1);
    EXPECT_EQ(FindEntryByStart(listing, u"beta2222", 0, true), -1);
}

TEST_F(FolderList, GivesItsLongestNames) {
    for (const char* name : {"1", "333", "22", "4444", "55555"}) folder.Put(name, "");
    ASSERT_EQ(List(), ListResult::kListed);
    uint32_t indexes[3];
    ASSERT_EQ(LongestNames(listing, indexes, 3), 3u);
    EXPECT_EQ(std::u16string(listing.entries[indexes[0]].name), u"55555");
    EXPECT_EQ(std::u16string(listing.entries[indexes[1]].name), u"4444");
    EXPECT_EQ(std::u16string(listing.entries[indexes[2]].name), u"333");
    EXPECT_EQ(LongestNames({}, indexes, 3), 0u);
}

TEST_F(FolderList, WritesSizesAsPeopleReadThem) {
    EXPECT_EQ(Size(0), u"0B");
    EXPECT_EQ(Size(1023), u"1023B");
    EXPECT_EQ(Size(1024), u"1.0K");
    EXPECT_EQ(Size(1536), u"1.5K");
    EXPECT_EQ(Size(1280), u"1.2K");  // 1.25: the even digit
    EXPECT_EQ(Size(1379), u"1.3K");  // 1.3467
    EXPECT_EQ(Size(1792), u"1.8K");  // 1.75: the even digit
    EXPECT_EQ(Size(1048575), u"1024.0K");
    EXPECT_EQ(Size(1048576), u"1.0M");
    EXPECT_EQ(Size(1572864), u"1.5M");
    EXPECT_EQ(Size(0xFFFFFFFF), u"4096.0M");
}

TEST_F(FolderList, CutsASizeToItsRoom) {
    char16_t text[4] = {1, 1, 1, 1};
    EXPECT_EQ(FormatSize(text, 3, 12345), 2u);
    EXPECT_EQ(text[2], 0);
    EXPECT_EQ(text[3], 1);
}

}  // namespace
}  // namespace nira
