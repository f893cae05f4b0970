#include "app/buffer_list.h"

#include "app_fixture.h"

namespace nira {
namespace {

using Texts = std::vector<std::u16string>;

class BufferListTest : public AppTest {};

TEST_F(BufferListTest, NewBufferIsShownNumberedAndInTheMenu) {
    NewBuffer();

    ASSERT_EQ(BufferCount(), 1);
    EXPECT_EQ(Shown(), BufferAt(0));
    EXPECT_EQ(Shown()->path, nullptr);
    EXPECT_EQ(Caption(), u"Untitled1");
    EXPECT_EQ(MenuTexts(), Texts{u"Untitled1"});
    CheckList();
}

TEST_F(BufferListTest, TheCaptionStaysWhileThereIsNoDocument) {
    mainWindow_.title = u"NIRA";

    UpdateMainTitle();

    EXPECT_EQ(Caption(), u"NIRA");
}

TEST_F(BufferListTest, UntitledNumbersAreNeverUsedAgain) {
    NewBuffer();
    NewBuffer();
    CloseBuffer(1, false);
    NewBuffer();

    EXPECT_EQ(MenuTexts(), (Texts{u"Untitled1", u"Untitled3"}));
    EXPECT_EQ(Caption(), u"Untitled3");
    CheckList();
}

TEST_F(BufferListTest, UntitledNumberTurnsOverWithoutHarm) {
    TheAppState().untitledCounter = 32767;

    NewBuffer();

    EXPECT_EQ(Caption(), u"Untitled-32768");
}

TEST_F(BufferListTest, AFileTakesThePlaceOfACleanUntitledDocument) {
    WriteFile("a.txt", "one");
    WriteFile("b.txt", "two");
    NewBuffer();
    Open("a.txt");
    NewBuffer();
    Editor* behind = Shown();
    NewBuffer();
    ActivateBuffer(behind);

    EXPECT_EQ(Open("b.txt"), 1);

    EXPECT_EQ(MenuTexts(), (Texts{u"a.txt", u"b.txt", u"Untitled3"}));
    EXPECT_EQ(BufferIndex(Shown()), 1);
    EXPECT_EQ(Caption(), u"b.txt");
    CheckList();
}

TEST_F(BufferListTest, AFileComesLastWhenTheShownDocumentIsModified) {
    WriteFile("a.txt", "one");
    NewBuffer();
    Type(u"x");

    EXPECT_EQ(Open("a.txt"), 1);

    EXPECT_EQ(MenuTexts(), (Texts{u"Untitled1 *", u"a.txt"}));
    EXPECT_EQ(BufferIndex(Shown()), 1);
    CheckList();
}

TEST_F(BufferListTest, AFileComesLastWhenTheShownDocumentHasAPath) {
    WriteFile("a.txt", "one");
    WriteFile("b.txt", "two");
    NewBuffer();
    Open("a.txt");

    Open("b.txt");

    EXPECT_EQ(MenuTexts(), (Texts{u"a.txt", u"b.txt"}));
    CheckList();
}

TEST_F(BufferListTest, AFileNeverTakesThePlaceOfTextThatCouldNotBeSaved) {
    WriteFile("a.txt", "one");
    NewBuffer();
    Type(u"x");
    Shown()->modified = 0;
    Shown()->saveFailed = 1;

    Open("a.txt");

    EXPECT_EQ(BufferCount(), 2);
}

TEST_F(BufferListTest, AFileThatCannotBeReadLeavesTheListAsItWas) {
    NewBuffer();

    EXPECT_EQ(Open("missing.txt"), 0);

    ASSERT_EQ(MessageLog().size(), 1u);
    EXPECT_EQ(MessageLog()[0].text, u"Error reading file");
    EXPECT_EQ(MessageLog()[0].openFiles, 0u);
    EXPECT_EQ(MenuTexts(), Texts{u"Untitled1"});
    EXPECT_FALSE(HostPointer().waiting);
    CheckList();
}

TEST_F(BufferListTest, AFolderOpenedAsAFileIsAnError) {
    NewBuffer();

    EXPECT_EQ(OpenFileInBuffer(MemStrDup(nullptr, PathOf("").c_str()), kCodecAnsi), 0);

    EXPECT_EQ(MessageLog().size(), 1u);
    EXPECT_EQ(BufferCount(), 1);
}

TEST_F(BufferListTest, AReadErrorHalfWayLeavesTheListAsItWas) {
    WriteFile("a.txt", std::string(50000, 'x'));
    NewBuffer();
    FaultScope fault(FaultPoint::kFileRead, {.first = 2});

    EXPECT_EQ(Open("a.txt"), 0);

    EXPECT_EQ(MenuTexts(), Texts{u"Untitled1"});
    EXPECT_EQ(Caption(), u"Untitled1");
    CheckList();
}

TEST_F(BufferListTest, OpeningTakesTheFileOutOfTheRecentOnes) {
    WriteFile("a.txt", "one");
    AddRecentFile(PathOf("a.txt").c_str(), kCodecAnsi);
    NewBuffer();

    Open("a.txt");

    EXPECT_EQ(recent_.items[0].text, u"(Empty)");
}

TEST_F(BufferListTest, ActivationMarksTheShownDocumentAndEndsMarkMode) {
    NewBuffer();
    NewBuffer();
    BufferAt(0)->markMode = 1;

    ActivateBufferById(CMD_BUFFER_FIRST);

    EXPECT_EQ(Shown(), BufferAt(0));
    EXPECT_EQ(Shown()->markMode, 0);
    EXPECT_EQ(Caption(), u"Untitled1");
    CheckList();
}

TEST_F(BufferListTest, ActivationPaintsOnce) {
    static int paints;
    NewBuffer();
    NewBuffer();
    paints = 0;
    TheEditorEvents().repaint = [](Editor*) { ++paints; };

    ActivateBufferById(CMD_BUFFER_FIRST);

    EXPECT_EQ(paints, 1);
}

TEST_F(BufferListTest, IdentifiersWithoutADocumentDoNothing) {
    NewBuffer();
    NewBuffer();

    ActivateBufferById(CMD_BUFFER_FIRST + 2);
    ActivateBufferById(CMD_BUFFER_FIRST - 1);

    EXPECT_EQ(BufferIndex(Shown()), 1);
}

TEST_F(BufferListTest, NextBufferGoesRound) {
    NewBuffer();
    NextBuffer();
    EXPECT_EQ(BufferIndex(Shown()), 0);
    NewBuffer();

    NextBuffer();
    EXPECT_EQ(BufferIndex(Shown()), 0);
    NextBuffer();
    EXPECT_EQ(BufferIndex(Shown()), 1);
    CheckList();
}

TEST_F(BufferListTest, NextBufferWithoutDocumentsDoesNothing) {
    NextBuffer();

    EXPECT_EQ(Shown(), nullptr);
}

TEST_F(BufferListTest, AModifiedDocumentIsMarkedInCaptionAndMenu) {
    WriteFile("a.txt", "one");
    NewBuffer();
    Open("a.txt");

    Type(u"x");

    EXPECT_EQ(Caption(), u"a.txt *");
    EXPECT_EQ(MenuTexts(), Texts{u"a.txt *"});
}

TEST_F(BufferListTest, ADocumentThatIsNotInTheListHasNoIndex) {
    Editor stranger = {};

    EXPECT_EQ(BufferIndex(&stranger), -1);
}

TEST_F(BufferListTest, NoTitleWhenMemoryRunsOut) {
    NewBuffer();
    FaultScope fault(FaultPoint::kAllocation, {.howMany = kFaultForever});

    EXPECT_EQ(BufferTitle(Shown()), nullptr);
    SetBufferMenuText(0, Shown());
    UpdateMainTitle();

    EXPECT_EQ(Caption(), u"Untitled1");
    EXPECT_EQ(popup_.items[0].text, u"Untitled1");
}

// Every allocation fails in turn: either the document is there with everything that belongs to it, or nothing
// is.
TEST_F(BufferListTest, NewBufferIsWholeOrNothingWhenMemoryRunsOut) {
    NewBuffer();
    for (uint32_t call = 1;; ++call) {
        const int before = BufferCount();
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        NewBuffer();
        if (fault.Hits() == 0) break;
        ASSERT_TRUE(BufferCount() == before || BufferCount() == before + 1);
        ASSERT_NE(Shown(), nullptr);
        CheckList();
    }
    EXPECT_GE(BufferCount(), 2);
}

TEST_F(BufferListTest, OpeningIsWholeOrNothingWhenMemoryRunsOut) {
    WriteFile("a.txt", "one\ntwo\n");
    NewBuffer();
    Type(u"x");
    for (uint32_t call = 1;; ++call) {
        const int before = BufferCount();
        char16_t* path = MemStrDup(nullptr, PathOf("a.txt").c_str());
        FaultScope fault(FaultPoint::kAllocation, {.first = call});
        const int opened = OpenFileInBuffer(path, kCodecAnsi);
        if (fault.Hits() == 0) break;
        ASSERT_EQ(BufferCount(), before + opened) << call;
        CheckList();
    }
}

TEST_F(BufferListTest, TheArrayIsAsLongAsTheList) {
    for (int count = 1; count <= 3; ++count) {
        NewBuffer();
        EXPECT_EQ(MemSize(nullptr, TheAppState().buffers), static_cast<size_t>(count) * sizeof(void*));
    }

    CloseBuffer(1, false);

    EXPECT_EQ(MemSize(nullptr, TheAppState().buffers), 2 * sizeof(void*));
}

TEST_F(BufferListTest, ANameWithAnAmpersandIsShownAsItIs) {
    WriteFile("a&b.txt", "one");
    NewBuffer();

    Open("a&b.txt");

    EXPECT_EQ(MenuTexts(), Texts{u"a&&b.txt"});
    EXPECT_EQ(Caption(), u"a&b.txt");
}

TEST_F(BufferListTest, TheItemsThatStandInFrontOfTheDocumentsStay) {
    popup_.items = {{CMD_TOGGLE_WRAP, u"&Toggle wrap", false}, {CMD_CLOSE, u"&Close", false}};
    for (int i = 0; i < 3; ++i) NewBuffer();
    CloseBuffer(1, false);

    EXPECT_EQ(MenuTexts(), (Texts{u"&Toggle wrap", u"&Close", u"Untitled1", u"Untitled3"}));
    EXPECT_TRUE(popup_.items[2].marked);
    EXPECT_EQ(popup_.items[3].id, static_cast<uint32_t>(CMD_BUFFER_FIRST + 1));
}

TEST_F(BufferListTest, ADocumentWithoutAMenuItemIsNotAdded) {
    NewBuffer();
    {
        FaultScope fault(FaultPoint::kMenuAppend, {});
        NewBuffer();
    }
    EXPECT_EQ(BufferCount(), 1);
    CheckList();

    NewBuffer();

    EXPECT_EQ(Caption(), u"Untitled2");
    CheckList();
}

TEST_F(BufferListTest, TheListEndsBeforeItsCountTurnsOver) {
    NewBuffer();
    Editor stranger = {};
    TheAppState().bufferCount = INT16_MAX;
    const int added = AddBuffer(&stranger, false);
    TheAppState().bufferCount = 1;

    EXPECT_EQ(added, 0);
    CheckList();
}

// What a menu has to do for one opening, switch and close, with ten times as many documents: ten times as
// much, and not a hundred times.
TEST_F(BufferListTest, TheWorkInTheMenuGrowsNoFasterThanTheList) {
    const auto workWith = [this](int documents) {
        while (BufferCount() < documents) NewBuffer();
        const uint64_t before = popup_.itemsTouched;
        NewBuffer();
        ActivateBufferById(CMD_BUFFER_FIRST + 1);
        NextBuffer();
        CloseBuffer(0, false);
        MenuTexts();
        return popup_.itemsTouched - before;
    };
    const uint64_t few = workWith(200);
    const uint64_t many = workWith(2000);

    EXPECT_GT(few, 200u);
    EXPECT_LT(many, 11 * few);
    CheckList();
}

TEST_F(BufferListTest, HoldsTwoThousandDocuments) {
    for (int i = 0; i < 2000; ++i) NewBuffer();

    ActivateBufferById(CMD_BUFFER_FIRST + 1999);

    EXPECT_EQ(Caption(), u"Untitled2000");
    CheckList();
}

}  // namespace
}  // namespace nira
