#include "app/menu_state.h"

#include "app_fixture.h"
#include "view/undo_apply.h"

namespace nira {
namespace {

class MenuStateTest : public AppTest {};

TEST_F(MenuStateTest, TheOtherPasteIsAlwaysTheOneThatPasteIsNot) {
    EXPECT_EQ(DecideEditMenu(nullptr, 1, false).otherPasteText, static_cast<uint32_t>(IDS_PASTE_NORMAL));
    EXPECT_EQ(DecideEditMenu(nullptr, 0, false).otherPasteText, static_cast<uint32_t>(IDS_PASTE_SMART));
}

TEST_F(MenuStateTest, PasteNeedsTextOnTheClipboard) {
    EXPECT_TRUE(DecideEditMenu(nullptr, 0, true).canPaste);
    EXPECT_FALSE(DecideEditMenu(nullptr, 0, false).canPaste);
}

TEST_F(MenuStateTest, CutCopyAndClearNeedASelection) {
    NewBuffer();
    Type(u"ab");
    EXPECT_FALSE(DecideEditMenu(Shown(), 0, false).hasSelection);

    Shown()->anchorColumn = 0;

    EXPECT_TRUE(DecideEditMenu(Shown(), 0, false).hasSelection);
}

TEST_F(MenuStateTest, UndoAndRedoFollowTheJournal) {
    NewBuffer();
    EXPECT_FALSE(DecideEditMenu(Shown(), 0, false).canUndo);
    Type(u"a");
    EXPECT_TRUE(DecideEditMenu(Shown(), 0, false).canUndo);
    EXPECT_FALSE(DecideEditMenu(Shown(), 0, false).canRedo);

    UndoApply(Shown(), true, false);

    EXPECT_FALSE(DecideEditMenu(Shown(), 0, false).canUndo);
    EXPECT_TRUE(DecideEditMenu(Shown(), 0, false).canRedo);
}

TEST_F(MenuStateTest, NothingIsEnabledWithoutADocument) {
    const EditMenuState state = DecideEditMenu(nullptr, 0, true);

    EXPECT_FALSE(state.hasSelection);
    EXPECT_FALSE(state.canUndo);
    EXPECT_FALSE(state.canRedo);
    EXPECT_FALSE(IsBookmarkSet(nullptr, 0));
}

TEST_F(MenuStateTest, BookmarksAreThoseOfTheDocument) {
    NewBuffer();
    Shown()->bookmarks[9] = 1;

    EXPECT_TRUE(IsBookmarkSet(Shown(), 9));
    EXPECT_FALSE(IsBookmarkSet(Shown(), 0));
    EXPECT_FALSE(IsBookmarkSet(Shown(), 10));
}

TEST_F(MenuStateTest, CutAndCopyButtonsFollowTheShownDocumentsSelection) {
    NewBuffer();
    Type(u"ab");
    UpdateClipboardButtons();
    EXPECT_FALSE(HostBarButtonEnabled(&menuBar_, CMD_CUT));
    EXPECT_FALSE(HostBarButtonEnabled(&menuBar_, CMD_COPY));

    Shown()->anchorColumn = 0;
    UpdateClipboardButtons();

    EXPECT_TRUE(HostBarButtonEnabled(&menuBar_, CMD_CUT));
    EXPECT_TRUE(HostBarButtonEnabled(&menuBar_, CMD_COPY));
}

TEST_F(MenuStateTest, ActivationUpdatesTheClipboardButtons) {
    NewBuffer();
    Type(u"ab");
    Shown()->anchorColumn = 0;
    UpdateClipboardButtons();

    NewBuffer();
    EXPECT_FALSE(HostBarButtonEnabled(&menuBar_, CMD_COPY));
    ActivateBufferById(CMD_BUFFER_FIRST);

    EXPECT_TRUE(HostBarButtonEnabled(&menuBar_, CMD_COPY));
}

TEST_F(MenuStateTest, UndoButtonsFollowEveryEdit) {
    WindowTag bar;
    TheAppState().undoBar = &bar;
    NewBuffer();
    EXPECT_FALSE(HostBarButtonEnabled(&bar, CMD_UNDO));

    Type(u"a");
    EXPECT_TRUE(HostBarButtonEnabled(&bar, CMD_UNDO));
    EXPECT_FALSE(HostBarButtonEnabled(&bar, CMD_REDO));
    UndoApply(Shown(), true, false);

    EXPECT_FALSE(HostBarButtonEnabled(&bar, CMD_UNDO));
    EXPECT_TRUE(HostBarButtonEnabled(&bar, CMD_REDO));
    TheAppState().undoBar = nullptr;
}

}  // namespace
}  // namespace nira
