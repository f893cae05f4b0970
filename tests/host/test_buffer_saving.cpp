#include "app/buffer_saving.h"

#include "app_fixture.h"
#include "settings/options.h"

namespace nira {
namespace {

using Texts = std::vector<std::u16string>;

class BufferSavingTest : public AppTest {
  protected:
    // A document of a file with the text "one", modified to "xone".
    void OpenModified(const std::string& name) {
        WriteFile(name, "one");
        if (BufferCount() == 0) NewBuffer();
        ASSERT_EQ(Open(name), 1);
        Type(u"x");
    }
    static size_t Prompts() {
        size_t prompts = 0;
        for (const ShownMessage& box : MessageLog()) prompts += box.caption == u"File modified" ? 1 : 0;
        return prompts;
    }
};

// ---- the question ----

TEST_F(BufferSavingTest, AsksWithTheFilesName) {
    OpenModified("a%s%d.txt");

    PromptSaveChanges(Shown());

    const ShownMessage& box = MessageLog().back();
    EXPECT_EQ(box.text, u"Save changes to 'a%s%d.txt'?");
    EXPECT_EQ(box.caption, u"File modified");
    EXPECT_EQ(box.kind, MessageKind::kQuestionYesNoCancel);
    EXPECT_EQ(box.owner, &mainWindow_);
}

TEST_F(BufferSavingTest, AsksWithTheNumberOfAnUntitledDocument) {
    NewBuffer();
    NewBuffer();
    Type(u"x");

    PromptSaveChanges(Shown());

    EXPECT_EQ(MessageLog().back().text, u"Save changes to 'Untitled2'?");
}

TEST_F(BufferSavingTest, TheAnswerIsCancelWhenMemoryRunsOut) {
    NewBuffer();
    for (uint32_t call = 1;; ++call) {
        MessageLogReset();
        MessageScript({kAnswerNo});
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const int answer = PromptSaveChanges(Shown());
        if (fault.Hits() == 0) break;
        EXPECT_EQ(answer, kAnswerCancel);
    }
}

// ---- Save ----

TEST_F(BufferSavingTest, SaveWritesTheShownDocument) {
    OpenModified("a.txt");

    EXPECT_EQ(SaveActiveBuffer(), 1);

    EXPECT_EQ(ReadFile("a.txt"), "xone");
    EXPECT_EQ(Caption(), u"a.txt");
    EXPECT_TRUE(TheStandIns().dialogs.empty());
}

TEST_F(BufferSavingTest, SaveOfAnUntitledDocumentAsksForAPath) {
    NewBuffer();
    Type(u"hello");
    TheStandIns().answers = {{PathOf("new.txt"), kCodecUtf16Le, kLineEndLf}};

    EXPECT_EQ(SaveActiveBuffer(), 1);

    ASSERT_EQ(TheStandIns().dialogs.size(), 1u);
    EXPECT_TRUE(TheStandIns().dialogs[0].saving);
    EXPECT_EQ(TheStandIns().dialogs[0].initialPath, u"\\Untitled1");
    EXPECT_EQ(TheStandIns().dialogs[0].lineEnd, kLineEndCrLf);
    EXPECT_EQ(Shown()->codecId, kCodecUtf16Le);
    EXPECT_EQ(Shown()->lineEnd, kLineEndLf);
    EXPECT_EQ(Caption(), u"new.txt");
    EXPECT_EQ(popup_.items[0].text, u"new.txt");
    EXPECT_NE(ReadFile("new.txt").find(std::string("h\0e\0", 4)), std::string::npos);
}

TEST_F(BufferSavingTest, SaveThatFailsReportsAndReturnsOne) {
    OpenModified("a.txt");
    FaultScope fault(FaultPoint::kFileWrite, {.howMany = kFaultForever});

    EXPECT_EQ(SaveActiveBuffer(), 1);

    EXPECT_EQ(MessageLog().back().text, u"Error writing file");
    EXPECT_EQ(Shown()->saveFailed, 1);
}

TEST_F(BufferSavingTest, SaveWithoutADocumentDoesNothing) { EXPECT_EQ(SaveActiveBuffer(), 0); }

// ---- Save As ----

TEST_F(BufferSavingTest, SaveAsProposesTheDocumentsPath) {
    OpenModified("a.txt");

    EXPECT_EQ(SaveBufferAs(Shown()), 0);

    EXPECT_EQ(TheStandIns().dialogs[0].initialPath, PathOf("a.txt"));
    EXPECT_EQ(TheStandIns().dialogs[0].codecIndex, kCodecAnsi);
    EXPECT_EQ(ReadFile("a.txt"), "one");
    EXPECT_EQ(Caption(), u"a.txt *");
}

TEST_F(BufferSavingTest, SaveAsProposesTheRootFolderWhenTheDocumentsFolderIsGone) {
    std::filesystem::create_directory(folder_ + "/sub");
    OpenModified("sub/a.txt");
    std::filesystem::remove_all(folder_ + "/sub");

    EXPECT_EQ(SaveBufferAs(Shown()), 0);

    EXPECT_EQ(TheStandIns().dialogs[0].initialPath, u"\\a.txt");
    EXPECT_EQ(std::u16string(Shown()->path), PathOf("sub/a.txt"));
    EXPECT_EQ(Caption(), u"a.txt *");
}

TEST_F(BufferSavingTest, SaveAsProposesTheRootFolderWhenTheDocumentsFolderCannotBeRead) {
    OpenModified("a.txt");
    const FaultScope fault(FaultPoint::kFolderOpen, {.first = 1});

    EXPECT_EQ(SaveBufferAs(Shown()), 0);

    EXPECT_EQ(TheStandIns().dialogs[0].initialPath, u"\\a.txt");
}

TEST_F(BufferSavingTest, SaveAsThatFailsKeepsPathCodecAndLineEnd) {
    OpenModified("a.txt");
    TheStandIns().answers = {{PathOf("none/b.txt"), kCodecUtf8, kLineEndCr}};

    EXPECT_EQ(SaveBufferAs(Shown()), 0);

    EXPECT_EQ(std::u16string(Shown()->path), PathOf("a.txt"));
    EXPECT_EQ(Shown()->codecId, kCodecAnsi);
    EXPECT_EQ(Shown()->lineEnd, kLineEndCrLf);
    EXPECT_EQ(popup_.items[0].text, u"a.txt");
}

TEST_F(BufferSavingTest, SaveAsThatFailsHalfWayLeavesTheOldNameInTheTitle) {
    OpenModified("a.txt");
    TheStandIns().answers = {{PathOf("b.txt"), kCodecUtf8, kLineEndCr}};
    FaultScope fault(FaultPoint::kFileWrite, {.howMany = kFaultForever});

    EXPECT_EQ(SaveBufferAs(Shown()), 0);

    EXPECT_EQ(Caption(), u"a.txt");
    EXPECT_EQ(Shown()->saveFailed, 1);
}

TEST_F(BufferSavingTest, SaveAsSurvivesRunningOutOfMemory) {
    NewBuffer();
    Type(u"x");
    for (uint32_t call = 1;; ++call) {
        TheStandIns().answers.clear();
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        SaveBufferAs(Shown());
        if (fault.Hits() == 0) break;
        CheckList();
    }
    EXPECT_EQ(TheStandIns().dialogs.back().initialPath, u"\\Untitled1");
}

// ---- Save All ----

TEST_F(BufferSavingTest, SaveAllWritesNamedDocumentsWhetherModifiedOrNot) {
    WriteFile("a.txt", "one");
    NewBuffer();
    Open("a.txt");
    WriteFile("a.txt", "changed behind its back");
    OpenModified("b.txt");

    SaveAll();

    EXPECT_EQ(ReadFile("a.txt"), "one");
    EXPECT_EQ(ReadFile("b.txt"), "xone");
}

TEST_F(BufferSavingTest, SaveAllPassesOverCleanUntitledDocuments) {
    NewBuffer();

    SaveAll();

    EXPECT_TRUE(TheStandIns().dialogs.empty());
}

TEST_F(BufferSavingTest, SaveAllStopsWhenSaveAsIsCancelled) {
    NewBuffer();
    Type(u"x");
    OpenModified("b.txt");

    SaveAll();

    EXPECT_EQ(TheStandIns().dialogs.size(), 1u);
    EXPECT_EQ(ReadFile("b.txt"), "one");
}

TEST_F(BufferSavingTest, SaveAllGoesOnAfterAFileThatCannotBeWritten) {
    OpenModified("a.txt");
    OpenModified("b.txt");
    FaultScope fault(FaultPoint::kFileWrite, {.first = 1});

    SaveAll();

    EXPECT_EQ(ReadFile("b.txt"), "xone");
    EXPECT_EQ(BufferAt(0)->saveFailed, 1);
}

// ---- Close ----

TEST_F(BufferSavingTest, ClosingTheOnlyDocumentMakesANewOne) {
    WriteFile("a.txt", "one");
    NewBuffer();
    Open("a.txt");

    EXPECT_EQ(CloseBuffer(0, false), 1);

    EXPECT_EQ(MenuTexts(), Texts{u"Untitled2"});
    EXPECT_EQ(Caption(), u"Untitled2");
    EXPECT_EQ(Prompts(), 0u);
    CheckList();
}

TEST_F(BufferSavingTest, ClosingInTheMiddleRenumbersAndShowsTheFirst) {
    NewBuffer();
    NewBuffer();
    NewBuffer();
    ActivateBufferById(CMD_BUFFER_FIRST + 1);

    EXPECT_EQ(CloseBuffer(1, false), 1);

    EXPECT_EQ(MenuTexts(), (Texts{u"Untitled1", u"Untitled3"}));
    EXPECT_EQ(BufferIndex(Shown()), 0);
    EXPECT_EQ(Caption(), u"Untitled1");
    CheckList();
}

TEST_F(BufferSavingTest, CancelKeepsTheDocument) {
    OpenModified("a.txt");
    MessageScript({kAnswerCancel});

    EXPECT_EQ(CloseBuffer(0, false), 0);

    EXPECT_EQ(MenuTexts(), Texts{u"a.txt *"});
    EXPECT_EQ(ReadFile("a.txt"), "one");
    CheckList();
}

TEST_F(BufferSavingTest, NoClosesWithoutWriting) {
    OpenModified("a.txt");
    MessageScript({kAnswerNo});

    EXPECT_EQ(CloseBuffer(0, false), 1);

    EXPECT_EQ(ReadFile("a.txt"), "one");
    EXPECT_EQ(MenuTexts(), Texts{u"Untitled2"});
}

TEST_F(BufferSavingTest, YesWritesAndCloses) {
    OpenModified("a.txt");
    MessageScript({kAnswerYes});

    EXPECT_EQ(CloseBuffer(0, false), 1);

    EXPECT_EQ(ReadFile("a.txt"), "xone");
    EXPECT_EQ(BufferCount(), 1);
}

TEST_F(BufferSavingTest, YesSavesTheDocumentAskedAbout) {
    OpenModified("a.txt");
    OpenModified("b.txt");
    MessageScript({kAnswerYes});

    EXPECT_EQ(CloseBuffer(0, false), 1);

    EXPECT_EQ(ReadFile("a.txt"), "xone");
    EXPECT_EQ(ReadFile("b.txt"), "one");
}

TEST_F(BufferSavingTest, YesThatCannotBeWrittenKeepsTheDocument) {
    OpenModified("a.txt");
    MessageScript({kAnswerYes});
    FaultScope fault(FaultPoint::kFileWrite, {.howMany = kFaultForever});

    EXPECT_EQ(CloseBuffer(0, false), 0);

    EXPECT_EQ(BufferCount(), 1);
    EXPECT_EQ(Shown()->lines[0].length, 4u);
}

TEST_F(BufferSavingTest, YesThatCannotCreateTheFileKeepsTheDocument) {
    OpenModified("a.txt");
    MessageScript({kAnswerYes});
    FaultScope fault(FaultPoint::kFileCreate, {.howMany = kFaultForever});

    EXPECT_EQ(CloseBuffer(0, false), 0);

    EXPECT_EQ(BufferCount(), 1);
}

TEST_F(BufferSavingTest, ClosingAsksAfterAFailedSaveAlthoughTheFlagIsClear) {
    OpenModified("a.txt");
    {
        FaultScope fault(FaultPoint::kFileWrite, {.howMany = kFaultForever});
        SaveActiveBuffer();
    }
    ASSERT_EQ(Shown()->modified, 0);
    MessageScript({kAnswerCancel});

    EXPECT_EQ(CloseBuffer(0, false), 0);

    EXPECT_EQ(Prompts(), 1u);
    EXPECT_EQ(BufferCount(), 1);
}

TEST_F(BufferSavingTest, YesWithSaveAsCancelledKeepsTheDocument) {
    NewBuffer();
    Type(u"x");
    MessageScript({kAnswerYes});

    EXPECT_EQ(CloseBuffer(0, false), 0);

    EXPECT_EQ(TheStandIns().dialogs.size(), 1u);
    EXPECT_EQ(MenuTexts(), Texts{u"Untitled1 *"});
}

TEST_F(BufferSavingTest, AClosedFileIsRecent) {
    WriteFile("a.txt", "one");
    NewBuffer();
    Open("a.txt");

    CloseBuffer(0, false);

    ASSERT_EQ(recent_.items.size(), 1u);
    EXPECT_EQ(recent_.items[0].text, u"&0 " + PathOf("a.txt"));
}

TEST_F(BufferSavingTest, AClosedUntitledDocumentIsNotRecent) {
    NewBuffer();

    CloseBuffer(0, false);

    EXPECT_EQ(recent_.items[0].text, u"(Empty)");
}

TEST_F(BufferSavingTest, ThereIsNothingToCloseOutsideTheList) {
    NewBuffer();

    EXPECT_EQ(CloseBuffer(-1, false), 0);
    EXPECT_EQ(CloseBuffer(1, false), 0);

    EXPECT_EQ(BufferCount(), 1);
}

// ---- Close All, Exit ----

TEST_F(BufferSavingTest, CloseAllEndsWithOneNewDocument) {
    OpenModified("a.txt");
    OpenModified("b.txt");
    MessageScript({kAnswerNo, kAnswerYes});

    EXPECT_EQ(CloseAllBuffers(false), 1);

    EXPECT_EQ(MessageLog()[0].text, u"Save changes to 'b.txt'?");
    EXPECT_EQ(MessageLog()[1].text, u"Save changes to 'a.txt'?");
    EXPECT_EQ(ReadFile("a.txt"), "xone");
    EXPECT_EQ(ReadFile("b.txt"), "one");
    EXPECT_EQ(MenuTexts(), Texts{u"Untitled2"});
    CheckList();
}

TEST_F(BufferSavingTest, CloseAllStopsAtTheFirstCancel) {
    OpenModified("a.txt");
    OpenModified("b.txt");
    OpenModified("c.txt");
    MessageScript({kAnswerNo, kAnswerCancel});

    EXPECT_EQ(CloseAllBuffers(false), 0);

    EXPECT_EQ(Prompts(), 2u);
    EXPECT_EQ(MenuTexts(), (Texts{u"a.txt *", u"b.txt *"}));
    EXPECT_EQ(BufferIndex(Shown()), 0);
    CheckList();
}

TEST_F(BufferSavingTest, ExitLeavesNoDocument) {
    OpenModified("a.txt");
    NewBuffer();
    MessageScript({kAnswerYes});

    EXPECT_EQ(CloseAllBuffers(true), 1);

    EXPECT_EQ(BufferCount(), 0);
    EXPECT_EQ(TheAppState().buffers, nullptr);
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_EQ(ReadFile("a.txt"), "xone");
    CheckList();
}

TEST_F(BufferSavingTest, EveryFileThatCloseAllClosesIsRecent) {
    OpenModified("a.txt");
    OpenModified("b.txt");
    OpenModified("c.txt");
    MessageScript({kAnswerNo, kAnswerYes, kAnswerCancel});

    EXPECT_EQ(CloseAllBuffers(false), 0);

    // The shown one first, then the others in their order; the last one closed is on top.
    ASSERT_EQ(recent_.items.size(), 2u);
    EXPECT_TRUE(recent_.items[0].text.ends_with(u"a.txt"));
    EXPECT_TRUE(recent_.items[1].text.ends_with(u"c.txt"));
}

TEST_F(BufferSavingTest, CloseAllPaintsOnlyWhatItAsksAboutAndWhatIsLeft) {
    static std::vector<std::u16string> painted;
    for (int i = 0; i < 5; ++i) NewBuffer();
    OpenModified("a.txt");
    NewBuffer();
    ActivateBufferById(CMD_BUFFER_FIRST);
    painted.clear();
    TheEditorEvents().repaint = [](Editor* editor) {
        painted.push_back(editor->path != nullptr ? editor->displayName : u"untitled");
    };
    MessageScript({kAnswerNo});

    EXPECT_EQ(CloseAllBuffers(false), 1);

    EXPECT_EQ(painted, (Texts{u"a.txt", u"untitled"}));
    EXPECT_EQ(Caption(), u"Untitled7");
    CheckList();
}

TEST_F(BufferSavingTest, CancelledCloseAllLeavesANumberedListBehindTheCleanDocuments) {
    for (int i = 0; i < 4; ++i) NewBuffer();
    OpenModified("a.txt");
    NewBuffer();
    NewBuffer();
    ActivateBufferById(CMD_BUFFER_FIRST + 1);
    MessageScript({kAnswerCancel});

    EXPECT_EQ(CloseAllBuffers(true), 0);

    EXPECT_EQ(MenuTexts(), (Texts{u"a.txt *", u"Untitled5", u"Untitled6"}));
    EXPECT_EQ(Caption(), u"a.txt *");
    CheckList();
}

// With ten times as many documents ten times as much, and not a hundred times.
TEST_F(BufferSavingTest, TheWorkOfCloseAllInTheMenuGrowsNoFasterThanTheList) {
    const auto workWith = [this](int documents) {
        while (BufferCount() < documents) NewBuffer();
        const uint64_t before = popup_.itemsTouched;
        EXPECT_EQ(CloseAllBuffers(false), 1);
        return popup_.itemsTouched - before;
    };
    const uint64_t few = workWith(200);
    const uint64_t many = workWith(2000);

    EXPECT_GE(few, 200u);
    EXPECT_LT(many, 11 * few);
    CheckList();
}

TEST_F(BufferSavingTest, ExitWithNothingLeftAsksNothing) {
    EXPECT_EQ(CloseAllBuffers(true), 1);

    EXPECT_TRUE(MessageLog().empty());
}

TEST_F(BufferSavingTest, ExitStopsWhenASaveFails) {
    OpenModified("a.txt");
    NewBuffer();
    ActivateBufferById(CMD_BUFFER_FIRST);
    MessageScript({kAnswerYes});
    FaultScope fault(FaultPoint::kFileWrite, {.howMany = kFaultForever});

    EXPECT_EQ(CloseAllBuffers(true), 0);

    EXPECT_EQ(BufferCount(), 2);
    EXPECT_EQ(std::u16string(Shown()->path), PathOf("a.txt"));
    CheckList();
}

// Nobody is told of it, and the list of documents does not depend on that of recent files.
TEST_F(BufferSavingTest, ClosingAndOpeningSurviveEveryRegistryFailure) {
    WriteFile("a.txt", "one");
    bool untouched = false;
    for (uint32_t call = 1; !untouched && call < 500; ++call) {
        while (BufferCount() > 0) DropLast();
        NewBuffer();
        for (int i = 0; i < 3; ++i) AddRecentFile(PathOf("b.txt").c_str(), kCodecAnsi);
        FaultScope fault(FaultPoint::kAnyRegistry, {.first = call});
        EXPECT_EQ(Open("a.txt"), 1);
        EXPECT_EQ(CloseBuffer(0, false), 1);
        untouched = fault.Hits() == 0;
        EXPECT_EQ(BufferCount(), 1);
        EXPECT_EQ(RegistryMemoryOpenHandles(), 0u);
        CheckList();
    }
    EXPECT_TRUE(untouched);
    EXPECT_TRUE(MessageLog().empty());
}

TEST_F(BufferSavingTest, ClosingSurvivesRunningOutOfMemory) {
    for (uint32_t call = 1;; ++call) {
        while (BufferCount() > 0) DropLast();
        NewBuffer();
        WriteFile("a.txt", "one");
        Open("a.txt");
        NewBuffer();
        ActivateBufferById(CMD_BUFFER_FIRST);
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        EXPECT_EQ(CloseBuffer(0, false), 1);
        if (fault.Hits() == 0) break;
        EXPECT_EQ(BufferCount(), 1);
        CheckList();
    }
}

}  // namespace
}  // namespace nira
