#include "files/save.h"

#include <random>

#include "files/load.h"
#include "host/document_support.h"

namespace nira {
namespace {

class SaveFile : public DocumentTest {
  protected:
    // A new document "f.txt" with this text, not saved yet.
    void Make(const std::u16string& text, uint32_t lineEnd = kLineEndLf, uint32_t codec = kCodecUtf8) {
        Renew();
        SetEditorPath(editor, folder.OwnName("f.txt"));
        editor->codecId = codec;
        editor->lineEnd = lineEnd;
        Type(text);
    }
    void Type(const std::u16string& text) {
        std::u16string breaks;
        for (const char16_t unit : text) breaks += unit == u'\n' ? u"\r\n" : std::u16string(1, unit);
        TextInsert(editor, 0, 0, breaks.c_str(), static_cast<uint32_t>(breaks.size()));
    }
    std::string SavedAs(const std::u16string& text, uint32_t lineEnd, uint32_t codec = kCodecUtf8) {
        Make(text, lineEnd, codec);
        EXPECT_EQ(Save(editor), 1);
        return folder.Get("f.txt");
    }
    // An old file, and a changed document about to replace it.
    void MakeOverOld() {
        folder.Put("f.txt", "old");
        Make(u"new\ntext");
        TheOptions().safeSave = 1;
    }
    void ExpectFailed() {
        ExpectMessage(u"Error writing file");
        EXPECT_EQ(editor->saveFailed, 1);
    }
};

// ---- bytes ----

TEST_F(SaveFile, WritesTheLineEndBetweenLines) {
    EXPECT_EQ(SavedAs(u"a\nb", kLineEndLf), "a\nb");
    EXPECT_EQ(SavedAs(u"a\nb", kLineEndCr), "a\rb");
    EXPECT_EQ(SavedAs(u"a\nb", kLineEndCrLf), "a\r\nb");
    EXPECT_EQ(SavedAs(u"a\nb\n", kLineEndLf), "a\nb\n");
    EXPECT_EQ(SavedAs(u"\n\n\n", kLineEndCrLf), "\r\n\r\n\r\n");
    EXPECT_EQ(SavedAs(u"", kLineEndCrLf), "");
    EXPECT_EQ(SavedAs(u"a", kLineEndCrLf), "a");
}

TEST_F(SaveFile, WritesEveryNumberOfLines) {
    for (const int count : {1, 2, 99, 100, 101, 102, 199, 200, 201, 202, 350}) {
        std::u16string text;
        std::string bytes;
        for (int i = 1; i <= count; ++i) {
            text += Wide(std::to_string(i)) + (i < count ? u"\n" : u"");
            bytes += std::to_string(i) + (i < count ? "\r\n" : "");
        }
        EXPECT_EQ(SavedAs(text, kLineEndCrLf), bytes) << count;
    }
}

TEST_F(SaveFile, WritesThroughTheCodec) {
    EXPECT_EQ(SavedAs(u"\u00E9\n\u20AC", kLineEndLf, kCodecAnsi), "\xE9\n\x80");
    EXPECT_EQ(SavedAs(u"\u00E9\n\u20AC", kLineEndLf, kCodecUtf8), "\xC3\xA9\n\xE2\x82\xAC");
    EXPECT_EQ(SavedAs(u"\u00E9\nA", kLineEndLf, kCodecUnicode), std::string("\xE9\0\n\0A\0", 6));
    EXPECT_EQ(SavedAs(u"\u00E9\nA", kLineEndLf, kCodecUtf16Be), std::string("\0\xE9\0\n\0A", 6));
}

TEST_F(SaveFile, WritesTheMarkOnceAtTheStart) {
    TheOptions().bomSave = 1;
    EXPECT_EQ(SavedAs(u"a", kLineEndLf),
              "\xEF\xBB\xBF"
              "a");
    EXPECT_EQ(SavedAs(u"", kLineEndLf), "\xEF\xBB\xBF");
    EXPECT_EQ(SavedAs(u"a", kLineEndLf, kCodecAnsi), "a");
    EXPECT_EQ(SavedAs(u"a", kLineEndLf, kCodecUtf16Be), std::string("\xFE\xFF\0a", 4));
    std::u16string many;
    for (int i = 0; i < 250; ++i) many += u"x\n";
    const std::string bytes = SavedAs(many, kLineEndLf);
    EXPECT_EQ(bytes.size(), 3 + 500u);
    EXPECT_EQ(bytes.find("\xEF\xBB\xBF", 1), std::string::npos);
}

TEST_F(SaveFile, WritesNulUnits) {
    const std::u16string text(u"a\0b\n\0\0\nc\0", 9);
    EXPECT_EQ(SavedAs(text, kLineEndLf), std::string("a\0b\n\0\0\nc\0", 9));
}

TEST_F(SaveFile, WritesBackWhatWasLoaded) {
    const std::string files[] = {
        "# Title\n\nText",       "\n\n\n", "a\r\n\r\nb\r\n", "a\rb\r\r", "", std::string("a\0\n\0", 4),
        std::string(50000, '\n')};
    for (const std::string& bytes : files) {
        folder.Put("f.txt", bytes);
        Renew();
        ASSERT_EQ(Load(editor, folder.OwnName("f.txt"), kCodecUtf8), 1);
        ASSERT_EQ(Save(editor), 1);
        EXPECT_EQ(folder.Get("f.txt"), bytes);
    }
}

TEST_F(SaveFile, WritesTheOrderThatTheMarkToldOnLoading) {
    const std::string bytes("\xFE\xFF\0a\0\n\0b", 8);
    folder.Put("f.txt", bytes);
    ASSERT_EQ(Load(editor, folder.OwnName("f.txt"), kCodecUnicode), 1);
    TheOptions().bomSave = 1;
    ASSERT_EQ(Save(editor), 1);
    EXPECT_EQ(folder.Get("f.txt"), bytes);
}

TEST_F(SaveFile, ReplacesALongerFile) {
    folder.Put("f.txt", std::string(1000, 'o'));
    EXPECT_EQ(SavedAs(u"new", kLineEndLf), "new");
}

// ---- the document afterwards ----

TEST_F(SaveFile, LeavesASavedDocument) {
    Make(u"a\nb");
    ASSERT_EQ(editor->modified, 1);
    editor->saveFailed = 1;
    const int titles = TitleChanges();
    EXPECT_EQ(Save(editor), 1);
    EXPECT_EQ(editor->modified, 0);
    EXPECT_EQ(editor->saveFailed, 0);
    EXPECT_GT(TitleChanges(), titles);
    EXPECT_TRUE(MessageLog().empty());
    ASSERT_GT(editor->undo->count, 0);
    for (int32_t i = 0; i < editor->undo->count; ++i) {
        EXPECT_NE(editor->undo->entries[i].kind & kUndoModifiedBit, 0u);
    }
}

// ---- the backup ----

TEST_F(SaveFile, SafeSaveLeavesNoBackupBehind) {
    MakeOverOld();
    EXPECT_EQ(Save(editor), 1);
    EXPECT_EQ(folder.Get("f.txt"), "new\ntext");
    EXPECT_EQ(folder.Count(), 1u);
    EXPECT_EQ(FaultCalls(FaultPoint::kFileMove), 1u);
    EXPECT_EQ(FaultCalls(FaultPoint::kFileFlush), 1u);
}

TEST_F(SaveFile, WithoutSafeSaveNothingIsSetAside) {
    MakeOverOld();
    TheOptions().safeSave = 0;
    EXPECT_EQ(Save(editor), 1);
    EXPECT_EQ(folder.Get("f.txt"), "new\ntext");
    EXPECT_EQ(FaultCalls(FaultPoint::kFileMove), 0u);
    EXPECT_EQ(FaultCalls(FaultPoint::kFileDelete), 0u);
}

TEST_F(SaveFile, ANewFileNeedsNoBackup) {
    Make(u"a");
    TheOptions().safeSave = 1;
    EXPECT_EQ(Save(editor), 1);
    EXPECT_EQ(FaultCalls(FaultPoint::kFileMove), 0u);
    EXPECT_EQ(folder.Count(), 1u);
}

TEST_F(SaveFile, TheBackupTakesTheFirstFreeDigit) {
    MakeOverOld();
    folder.Put("f.txt0", "mine");
    folder.Put("f.txt1", "mine too");
    FaultScope fault(FaultPoint::kFileDelete, {.first = 1});
    EXPECT_EQ(Save(editor), 1) << "a backup that cannot be deleted is no failure";
    EXPECT_EQ(folder.Get("f.txt"), "new\ntext");
    EXPECT_EQ(folder.Get("f.txt0"), "mine");
    EXPECT_EQ(folder.Get("f.txt1"), "mine too");
    EXPECT_EQ(folder.Get("f.txt2"), "old");
}

TEST_F(SaveFile, WithoutAFreeDigitNothingIsWritten) {
    MakeOverOld();
    for (int i = 0; i < 10; ++i) folder.Put("f.txt" + std::to_string(i), "mine");
    EXPECT_EQ(Save(editor), 0);
    ExpectFailed();
    EXPECT_EQ(folder.Get("f.txt"), "old");
    EXPECT_EQ(editor->modified, 1);
    EXPECT_EQ(FaultCalls(FaultPoint::kFileMove), 10u);
    EXPECT_EQ(FaultCalls(FaultPoint::kFileCreate), 0u);
}

TEST_F(SaveFile, AFileThatCannotBeCreatedLeavesTheBackup) {
    MakeOverOld();
    FaultScope fault(FaultPoint::kFileCreate, {.first = 1});
    EXPECT_EQ(Save(editor), 0);
    ExpectFailed();
    EXPECT_FALSE(folder.Has("f.txt"));
    EXPECT_EQ(folder.Get("f.txt0"), "old");
    EXPECT_EQ(editor->modified, 1);
}

TEST_F(SaveFile, AFolderIsNeitherWrittenNorSetAside) {
    std::filesystem::create_directory(folder.File("f.txt"));
    for (const uint32_t safeSave : {0u, 1u}) {
        Make(u"a");
        TheOptions().safeSave = safeSave;
        EXPECT_EQ(Save(editor), 0);
        ExpectFailed();
        EXPECT_EQ(editor->modified, 1);
        EXPECT_TRUE(std::filesystem::is_directory(folder.File("f.txt")));
        EXPECT_FALSE(folder.Has("f.txt0"));
    }
}

TEST_F(SaveFile, AReadOnlyFileIsNeitherWrittenNorSetAside) {
    for (const uint32_t safeSave : {0u, 1u}) {
        MakeOverOld();
        TheOptions().safeSave = safeSave;
        std::filesystem::permissions(folder.File("f.txt"), std::filesystem::perms::owner_read);
        EXPECT_EQ(Save(editor), 0);
        ExpectFailed();
        EXPECT_EQ(folder.Get("f.txt"), "old");
        EXPECT_FALSE(folder.Has("f.txt0"));
        EXPECT_EQ(editor->modified, 1);
        std::filesystem::permissions(folder.File("f.txt"), std::filesystem::perms::owner_all);
    }
}

// ---- failing writes ----

TEST_F(SaveFile, AFailedWriteBringsTheOldFileBack) {
    for (const FaultEffect effect : {FaultEffect::kFail, FaultEffect::kNothing, FaultEffect::kShort}) {
        for (uint32_t call = 1; call <= 2; ++call) {
            MakeOverOld();
            FaultScope fault(FaultPoint::kFileWrite, {.first = call, .effect = effect, .error = 112});
            EXPECT_EQ(Save(editor), 0);
            ExpectFailed();
            EXPECT_EQ(folder.Get("f.txt"), "old");
            EXPECT_EQ(folder.Count(), 1u);
            EXPECT_EQ(editor->modified, 0) << "cleared also when writing failed";
            EXPECT_EQ(Text(editor), u"new\ntext");
            for (int32_t i = 0; i < editor->undo->count; ++i) {
                EXPECT_EQ(editor->undo->entries[i].kind & kUndoModifiedBit, 0u);
            }
        }
    }
}

TEST_F(SaveFile, AFailedWriteWithoutSafeSaveLeavesThePartWritten) {
    MakeOverOld();
    TheOptions().safeSave = 0;
    FaultScope fault(FaultPoint::kFileWrite, {.first = 2});
    EXPECT_EQ(Save(editor), 0);
    ExpectFailed();
    EXPECT_EQ(folder.Get("f.txt"), "new\n");
    EXPECT_EQ(editor->modified, 0);
    EXPECT_EQ(FaultCalls(FaultPoint::kFileWrite), 2u) << "writing stops at the first failure";
}

TEST_F(SaveFile, AShortWriteStartsTheBlockAgainAndFails) {
    Make(u"123456789\nend");
    FaultScope fault(FaultPoint::kFileWrite, {.first = 1, .effect = FaultEffect::kShort});
    EXPECT_EQ(Save(editor), 0);
    ExpectFailed();
    // Ten bytes: five of them at first, then five from the start again.
    EXPECT_EQ(folder.Get("f.txt"), "1234512345end");
}

TEST_F(SaveFile, AFailingFlushOrCloseBringsTheOldFileBack) {
    for (const FaultPoint point : {FaultPoint::kFileFlush, FaultPoint::kFileClose}) {
        MakeOverOld();
        FaultScope fault(point, {.first = 1});
        EXPECT_EQ(Save(editor), 0);
        ExpectFailed();
        EXPECT_EQ(folder.Get("f.txt"), "old");
        EXPECT_EQ(folder.Count(), 1u);
    }
}

TEST_F(SaveFile, AFailingCloseIsToldWithoutABackupToo) {
    Make(u"abc");
    FaultScope fault(FaultPoint::kFileClose, {.first = 1});
    EXPECT_EQ(Save(editor), 0);
    ExpectFailed();
}

TEST_F(SaveFile, ABackupThatCannotBeRenamedBackStays) {
    MakeOverOld();
    {
        FaultScope write(FaultPoint::kFileWrite, {.first = 1});
        FaultScope move(FaultPoint::kFileMove, {.first = 2});
        EXPECT_EQ(Save(editor), 0);
    }
    ExpectFailed();
    EXPECT_FALSE(folder.Has("f.txt"));
    EXPECT_EQ(folder.Get("f.txt0"), "old");
}

TEST_F(SaveFile, ABackupStaysWhenThePartialFileCannotBeDeleted) {
    MakeOverOld();
    {
        FaultScope write(FaultPoint::kFileWrite, {.first = 2});
        FaultScope remove(FaultPoint::kFileDelete, {.first = 1});
        EXPECT_EQ(Save(editor), 0);
    }
    ExpectFailed();
    EXPECT_EQ(folder.Get("f.txt"), "new\n");
    EXPECT_EQ(folder.Get("f.txt0"), "old");
}

TEST_F(SaveFile, TellsThatACodecCannotBeMade) {
    MakeOverOld();
    editor->codecId = 99;
    EXPECT_EQ(Save(editor), 0);
    ExpectMessage(u"Error initializing encoder");
    EXPECT_EQ(editor->saveFailed, 1);
    EXPECT_EQ(editor->modified, 1);
    EXPECT_EQ(FaultCalls(FaultPoint::kAnyFile), 0u);
    EXPECT_EQ(folder.Get("f.txt"), "old");
}

TEST_F(SaveFile, CanBeTriedAgain) {
    MakeOverOld();
    {
        FaultScope fault(FaultPoint::kFileWrite, {.first = 1});
        EXPECT_EQ(Save(editor), 0);
    }
    MessageLogReset();
    EXPECT_EQ(Save(editor), 1);
    EXPECT_EQ(editor->saveFailed, 0);
    EXPECT_EQ(folder.Get("f.txt"), "new\ntext");
}

// The old text is on the disk under its own or its backup name, or else the new one is there whole; the
// result says which; and the document can be saved afterwards.
TEST_F(SaveFile, NoFailingFileCallLosesTheText) {
    for (const FaultEffect effect : {FaultEffect::kFail, FaultEffect::kShort, FaultEffect::kNothing}) {
        for (const uint32_t howMany : {1u, kFaultForever}) {
            bool untouched = false;
            for (uint32_t call = 1; !untouched; ++call) {
                for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
                    std::filesystem::remove(entry);
                }
                MakeOverOld();
                int saved = 0;
                {
                    FaultScope fault(FaultPoint::kAnyFile,
                                     {.first = call, .howMany = howMany, .effect = effect});
                    saved = Save(editor);
                    untouched = fault.Hits() == 0;
                }
                EXPECT_EQ(editor->saveFailed, saved == 0 ? 1 : 0);
                if (saved == 0) ExpectFailed();
                const bool oldThere = folder.Get("f.txt") == "old" || folder.Get("f.txt0") == "old";
                const bool newThere = folder.Get("f.txt") == "new\ntext";
                EXPECT_TRUE(saved == 1 ? newThere : oldThere) << "call " << call << " saved " << saved;
                EXPECT_EQ(HostOpenFileCount(), 0u);
                EXPECT_EQ(Save(editor), 1);
                EXPECT_EQ(folder.Get("f.txt"), "new\ntext");
            }
        }
    }
    EXPECT_TRUE(MessageLog().empty());
}

TEST_F(SaveFile, NoFailingAllocationLosesTheText) {
    uint32_t failures = 0;
    for (uint32_t call = 1;; ++call) {
        MakeOverOld();
        HostShellLogReset();
        MessageLogReset();
        uint32_t hits = 0;
        int saved = 0;
        {
            FaultScope fault(FaultPoint::kAllocation, {.first = call});
            saved = Save(editor);
            hits = fault.Hits();
        }
        EXPECT_EQ(saved, hits == 0 ? 1 : 0);
        EXPECT_EQ(editor->saveFailed, hits);
        EXPECT_EQ(folder.Get("f.txt"), hits == 0 ? "new\ntext" : "old") << call;
        EXPECT_EQ(folder.Count(), 1u);
        EXPECT_EQ(HostShellLog().memoryBoxes, hits);
        EXPECT_EQ(Text(editor), u"new\ntext");
        if (hits == 0) break;
        ++failures;
    }
    EXPECT_GE(failures, 5u) << "codec, its state, backup name, text, bytes";
}

// ---- under another name ----

class SaveFileAs : public SaveFile {};

TEST_F(SaveFileAs, TheDocumentKeepsTheNewFile) {
    Make(u"a\nb");
    editor->modified = 0;
    const int titles = TitleChanges();
    char16_t* path = folder.OwnName("new.txt");
    EXPECT_EQ(SaveAs(editor, path, kCodecUtf16Be, kLineEndCr), 1);
    EXPECT_EQ(editor->path, path);
    EXPECT_EQ(std::u16string(editor->displayName), u"new.txt");
    EXPECT_EQ(editor->codecId, kCodecUtf16Be);
    EXPECT_EQ(editor->lineEnd, kLineEndCr);
    EXPECT_EQ(folder.Get("new.txt"), std::string("\0a\0\r\0b", 6));
    EXPECT_EQ(TitleChanges(), titles + 1);
    EXPECT_FALSE(folder.Has("f.txt"));
}

TEST_F(SaveFileAs, GivesTheOldFileBackWhenItFails) {
    Make(u"a\nb");
    char16_t* path = editor->path;
    FaultScope fault(FaultPoint::kFileCreate, {.first = 1});
    EXPECT_EQ(SaveAs(editor, folder.OwnName("new.txt"), kCodecUtf16Be, kLineEndCr), 0);
    ExpectFailed();
    EXPECT_EQ(editor->path, path);
    EXPECT_EQ(std::u16string(editor->displayName), u"f.txt");
    EXPECT_EQ(editor->codecId, kCodecUtf8);
    EXPECT_EQ(editor->lineEnd, kLineEndLf);
}

TEST_F(SaveFileAs, AnUntitledDocumentGetsAName) {
    editor->untitledNumber = 7;
    EXPECT_EQ(SaveAs(editor, folder.OwnName("new.txt"), kCodecAnsi, kLineEndLf), 1);
    EXPECT_EQ(std::u16string(editor->displayName), u"new.txt");
}

TEST_F(SaveFileAs, AnUntitledDocumentStaysUntitledWhenItFails) {
    editor->untitledNumber = 7;
    FaultScope fault(FaultPoint::kFileWrite, {.first = 1});
    TheOptions().bomSave = 1;
    EXPECT_EQ(SaveAs(editor, folder.OwnName("new.txt"), kCodecUtf8, kLineEndLf), 0);
    ExpectFailed();
    EXPECT_EQ(editor->path, nullptr);
    EXPECT_EQ(editor->untitledNumber, 7u);
    EXPECT_EQ(editor->modified, 0);
}

}  // namespace
}  // namespace nira
