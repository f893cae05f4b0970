#include "files/file_chooser.h"

#include <sys/stat.h>

#include <vector>

#include "host/files_support.h"
#include "platform/host/drives.h"
#include "platform/host/last_error.h"

namespace nira {
namespace {

class FileChoosing : public ServicesTest {
  protected:
    FileChoosing() {
        chooser.firstCodec = 3;
        chooser.codecIndex = 3;
        folder.Put("a.txt", "one");
        mkdir(folder.File("sub").c_str(), 0755);
        folder.Put("sub/b.txt", "two");
    }
    ~FileChoosing() override {
        EndChoosing(&chooser);
        MemFree(nullptr, chooser.path);
        HostSetDrives(0);
    }
    std::u16string Whole() const {
        const std::u16string name = folder.Name("x");
        return name.substr(0, name.size() - 2);
    }
    bool Begin(const std::u16string& path) {
        char16_t* name = nullptr;
        const bool begun = BeginChoosing(&chooser, path.c_str(), &name);
        proposed = name != nullptr ? name : u"(none)";
        MemFree(nullptr, name);
        return begun;
    }
    std::u16string Folder() const { return chooser.folder; }
    std::u16string Path() const { return chooser.path != nullptr ? chooser.path : u"(none)"; }
    std::vector<std::u16string> Names() const {
        std::vector<std::u16string> names;
        for (uint32_t i = 0; i < chooser.listing.count; ++i)
            names.emplace_back(chooser.listing.entries[i].name);
        return names;
    }
    // The box that was shown since the last call, none or one.
    static std::u16string Box() {
        const std::vector<ShownMessage>& log = MessageLog();
        EXPECT_LE(log.size(), 1u);
        std::u16string shown = log.empty() ? u"" : log[0].caption + u": " + log[0].text;
        MessageLogReset();
        return shown;
    }
    uint32_t Index(const char16_t* name) const {
        const int index = FindEntry(chooser.listing, name);
        EXPECT_GE(index, 0);
        return static_cast<uint32_t>(index);
    }

    using Texts = std::vector<std::u16string>;
    TempFolder folder;
    FileChooser chooser = {};
    std::u16string proposed;
};

// ---- Beginning ----

TEST_F(FileChoosing, BeginsInTheRootFolderWithoutAPath) {
    HostSetDrives(1u << 2);
    char16_t* name = nullptr;
    ASSERT_TRUE(BeginChoosing(&chooser, nullptr, &name));
    EXPECT_EQ(std::u16string(name), u"");
    MemFree(nullptr, name);
    EXPECT_EQ(Folder(), u"");
    EXPECT_GE(FindEntry(chooser.listing, u"C:"), 0);
}

TEST_F(FileChoosing, BeginsInAGivenFolder) {
    ASSERT_TRUE(Begin(folder.Name("sub")));
    EXPECT_EQ(Folder(), folder.Name("sub"));
    EXPECT_EQ(proposed, u"");
    EXPECT_EQ(Names(), Texts{u"b.txt"});
    EndChoosing(&chooser);
    ASSERT_TRUE(Begin(folder.Name("sub") + u"\\"));
    EXPECT_EQ(Folder(), folder.Name("sub"));
}

TEST_F(FileChoosing, BeginsWithTheNameOfAFileInItsFolder) {
    ASSERT_TRUE(Begin(folder.Name("new.txt")));
    EXPECT_EQ(Folder(), Whole());
    EXPECT_EQ(proposed, u"new.txt");
    EXPECT_EQ(Names(), (Texts{u"sub", u"a.txt"}));
}

TEST_F(FileChoosing, ProposesANameInTheRootFolder) {
    ASSERT_TRUE(Begin(u"\\Untitled1"));
    EXPECT_EQ(Folder(), u"");
    EXPECT_EQ(proposed, u"Untitled1");
}

TEST_F(FileChoosing, DoesNotBeginWhereNothingCanBeListed) {
    EXPECT_FALSE(Begin(folder.Name("gone/new.txt")));
    EXPECT_EQ(Box(), u"Error: " + HostErrorText(kErrorFileNotFound));
    EXPECT_EQ(chooser.folder, nullptr);
}

TEST_F(FileChoosing, DoesNotBeginWithoutMemory) {
    for (uint32_t call = 1;; ++call) {
        bool begun = false;
        uint32_t hits = 0;
        Guarded([&] {
            FaultScope fault(FaultPoint::kAllocation, {.first = call});
            char16_t* name = nullptr;
            Guarded([&] { begun = BeginChoosing(&chooser, folder.Name("new.txt").c_str(), &name); });
            MemFree(nullptr, name);
            hits = fault.Hits();
        });
        if (hits == 0) {
            EXPECT_TRUE(begun);
            break;
        }
        EXPECT_FALSE(begun) << call;
        EXPECT_EQ(chooser.folder, nullptr);
        MessageLogReset();
    }
}

// ---- Walking ----

TEST_F(FileChoosing, EntersAFolderAndComesBack) {
    ASSERT_TRUE(Begin(Whole()));
    ASSERT_TRUE(EnterEntry(&chooser, Index(u"sub")));
    EXPECT_EQ(Folder(), folder.Name("sub"));
    EXPECT_EQ(Names(), Texts{u"b.txt"});
    ASSERT_TRUE(GoUpOneLevel(&chooser));
    EXPECT_EQ(Folder(), Whole());
    EXPECT_EQ(Names(), (Texts{u"sub", u"a.txt"}));
}

TEST_F(FileChoosing, StaysInTheRootFolderWhenGoingUp) {
    ASSERT_TRUE(Begin(u""));
    ASSERT_TRUE(GoUpOneLevel(&chooser));
    EXPECT_EQ(Folder(), u"");
    EXPECT_EQ(Box(), u"");
}

TEST_F(FileChoosing, GoesFromTheRootFolderToADrive) {
    HostSetDrives(1u << 2);
    ASSERT_TRUE(Begin(u""));
    // The host has no such drive, so that it cannot be listed either.
    EXPECT_FALSE(EnterEntry(&chooser, Index(u"C:")));
    EXPECT_NE(Box(), u"");
    EXPECT_EQ(Folder(), u"");
}

TEST_F(FileChoosing, StaysWhereItIsWhenAFolderCannotBeEntered) {
    ASSERT_TRUE(Begin(Whole()));
    chmod(folder.File("sub").c_str(), 0);
    EXPECT_FALSE(EnterEntry(&chooser, Index(u"sub")));
    EXPECT_EQ(Box(), u"Error: " + HostErrorText(kErrorAccessDenied));
    EXPECT_EQ(Folder(), Whole());
    EXPECT_EQ(Names(), (Texts{u"sub", u"a.txt"}));
    chmod(folder.File("sub").c_str(), 0755);
}

TEST_F(FileChoosing, KeepsTheListingOfAFolderDeletedMeanwhile) {
    ASSERT_TRUE(Begin(folder.Name("sub")));
    std::filesystem::remove_all(folder.File("sub"));
    EXPECT_FALSE(RefreshListing(&chooser));
    EXPECT_EQ(Box(), u"Error: " + HostErrorText(kErrorFileNotFound));
    EXPECT_EQ(Names(), Texts{u"b.txt"});
    EXPECT_EQ(AcceptName(&chooser, u"b.txt"), Acceptance::kStay);
    EXPECT_EQ(Box(), u"Error: File not found.\r\nChoose another one.");
    EXPECT_TRUE(GoUpOneLevel(&chooser));
    EXPECT_EQ(Names(), Texts{u"a.txt"});
}

TEST_F(FileChoosing, SeesNewFilesAfterARefresh) {
    ASSERT_TRUE(Begin(Whole()));
    folder.Put("c.txt", "");
    ASSERT_TRUE(RefreshListing(&chooser));
    EXPECT_EQ(Names(), (Texts{u"sub", u"a.txt", u"c.txt"}));
}

TEST_F(FileChoosing, MakesAFolderAndDoesNotEnterIt) {
    ASSERT_TRUE(Begin(Whole()));
    ASSERT_TRUE(MakeFolder(&chooser, u"new"));
    EXPECT_EQ(Folder(), Whole());
    EXPECT_EQ(Names(), (Texts{u"new", u"sub", u"a.txt"}));
    EXPECT_FALSE(MakeFolder(&chooser, u"new"));
    EXPECT_EQ(Box(), u"Error: " + HostErrorText(kErrorAlreadyExists));
    EXPECT_FALSE(MakeFolder(&chooser, u"a<b"));
    EXPECT_EQ(Box(), u"Error: " + HostErrorText(kErrorInvalidName));
}

// ---- Accepting ----

TEST_F(FileChoosing, AnEmptyNameDoesNothing) {
    ASSERT_TRUE(Begin(Whole()));
    EXPECT_EQ(AcceptName(&chooser, u""), Acceptance::kStay);
    EXPECT_EQ(Box(), u"");
}

TEST_F(FileChoosing, OpensAFile) {
    ASSERT_TRUE(Begin(Whole()));
    EXPECT_EQ(AcceptName(&chooser, u"a.txt"), Acceptance::kChosen);
    EXPECT_EQ(Path(), folder.Name("a.txt"));
    EXPECT_EQ(Box(), u"");
}

TEST_F(FileChoosing, OpensNoFileThatIsMissing) {
    ASSERT_TRUE(Begin(Whole()));
    for (const char16_t* name : {u"none.txt", u"gone\\none.txt", u"a<b"}) {
        EXPECT_EQ(AcceptName(&chooser, name), Acceptance::kStay);
        EXPECT_EQ(Box(), u"Error: File not found.\r\nChoose another one.");
    }
    EXPECT_EQ(Path(), u"(none)");
}

TEST_F(FileChoosing, EntersAFolderWhoseNameWasTyped) {
    for (const bool saving : {false, true}) {
        chooser.saving = saving;
        ASSERT_TRUE(Begin(Whole()));
        EXPECT_EQ(AcceptName(&chooser, u"sub"), Acceptance::kEntered);
        EXPECT_EQ(Folder(), folder.Name("sub"));
        EXPECT_EQ(AcceptName(&chooser, u".."), Acceptance::kEntered);
        EXPECT_EQ(Folder(), Whole());
        EXPECT_EQ(AcceptName(&chooser, u"sub\\"), Acceptance::kEntered);
        EXPECT_EQ(Folder(), folder.Name("sub"));
        EXPECT_EQ(Box(), u"");
        EndChoosing(&chooser);
    }
}

TEST_F(FileChoosing, StaysWhenATypedFolderCannotBeEntered) {
    ASSERT_TRUE(Begin(Whole()));
    chmod(folder.File("sub").c_str(), 0);
    EXPECT_EQ(AcceptName(&chooser, u"sub"), Acceptance::kStay);
    EXPECT_EQ(Box(), u"Error: " + HostErrorText(kErrorAccessDenied));
    EXPECT_EQ(Folder(), Whole());
    chmod(folder.File("sub").c_str(), 0755);
}

TEST_F(FileChoosing, SavesUnderANewNameWithoutAsking) {
    chooser.saving = true;
    ASSERT_TRUE(Begin(Whole()));
    EXPECT_EQ(AcceptName(&chooser, u"new.txt"), Acceptance::kChosen);
    EXPECT_EQ(Path(), folder.Name("new.txt"));
    EXPECT_EQ(Box(), u"");
}

TEST_F(FileChoosing, AsksBeforeAFileIsOverwritten) {
    chooser.saving = true;
    ASSERT_TRUE(Begin(Whole()));
    MessageScript({kAnswerNo, kAnswerYes});
    EXPECT_EQ(AcceptName(&chooser, u"a.txt"), Acceptance::kStay);
    EXPECT_EQ(Path(), u"(none)");
    EXPECT_EQ(AcceptName(&chooser, u"a.txt"), Acceptance::kChosen);
    EXPECT_EQ(Path(), folder.Name("a.txt"));
    ASSERT_EQ(MessageLog().size(), 2u);
    EXPECT_EQ(MessageLog()[0].text, u"File exists. Overwrite?");
    EXPECT_EQ(MessageLog()[0].caption, u"Confirmation");
    EXPECT_EQ(MessageLog()[0].kind, MessageKind::kQuestionYesNo);
}

TEST_F(FileChoosing, SavesNothingUnderANameThatNothingMayHave) {
    chooser.saving = true;
    ASSERT_TRUE(Begin(Whole()));
    for (const char16_t* name : {u"a<b.txt", u"a:b.txt", u"a.txt:b", u"a\tb.txt"}) {
        EXPECT_EQ(AcceptName(&chooser, name), Acceptance::kStay);
        EXPECT_EQ(Box(), u"Error: " + HostErrorText(kErrorInvalidName));
    }
    EXPECT_EQ(AcceptName(&chooser, std::u16string(260, u'n').c_str()), Acceptance::kStay);
    EXPECT_EQ(Box(), u"Error: " + HostErrorText(kErrorFileNameTooLong));
}

TEST_F(FileChoosing, GivesTheFirstCodecBackForAnActivatedFile) {
    ASSERT_TRUE(Begin(Whole()));
    chooser.codecIndex = 4;
    EXPECT_EQ(AcceptEntry(&chooser, Index(u"a.txt")), Acceptance::kChosen);
    EXPECT_EQ(Path(), folder.Name("a.txt"));
    EXPECT_EQ(chooser.codecIndex, 3u);
}

TEST_F(FileChoosing, KeepsTheChosenCodecForATypedName) {
    ASSERT_TRUE(Begin(Whole()));
    chooser.codecIndex = 4;
    EXPECT_EQ(AcceptName(&chooser, u"a.txt"), Acceptance::kChosen);
    EXPECT_EQ(chooser.codecIndex, 4u);
}

TEST_F(FileChoosing, AsksBeforeAnActivatedFileIsOverwritten) {
    chooser.saving = true;
    ASSERT_TRUE(Begin(Whole()));
    MessageScript({kAnswerNo});
    EXPECT_EQ(AcceptEntry(&chooser, Index(u"a.txt")), Acceptance::kStay);
    EXPECT_EQ(Box(), u"Confirmation: File exists. Overwrite?");
}

TEST_F(FileChoosing, ChoosesNothingWithoutMemory) {
    ASSERT_TRUE(Begin(Whole()));
    for (uint32_t call = 1;; ++call) {
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        Acceptance acceptance = Acceptance::kStay;
        Guarded([&] { acceptance = AcceptName(&chooser, u"a.txt"); });
        if (fault.Hits() == 0) break;
        EXPECT_EQ(acceptance, Acceptance::kStay) << call;
        EXPECT_EQ(Path(), u"(none)");
        EXPECT_EQ(Names(), (Texts{u"sub", u"a.txt"}));
    }
    EXPECT_EQ(Path(), folder.Name("a.txt"));
}

}  // namespace
}  // namespace nira
