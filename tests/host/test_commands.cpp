#include "app/commands.h"

#include "app/pending_paths.h"
#include "app_fixture.h"
#include "base/utf16.h"
#include "platform/host/clipboard_state.h"
#include "search/search_request.h"
#include "view/navigation.h"

namespace nira {
namespace {

class CommandsTest : public AppTest {
  protected:
    intptr_t Run(uint32_t command, uint32_t notification = 0) {
        return OnCommand(&mainWindow_, 0x0111, command | (notification << 16), 0);
    }
};

TEST_F(CommandsTest, TheTableIsInItsFixedOrder) {
    const std::vector<uint32_t> expected = {7005, 7018, 7001, 7002, 7003, 7004, 7034, 7022, 7011, 7012,
                                            7021, 7006, 7007, 7008, 7033, 7009, 7010, 7029, 7030, 7016,
                                            7017, 7019, 7020, 7031, 7032, 7027, 7028, 7026, 7025, 7024,
                                            1066, 1028, 1029, 1031, 1033, 1034, 1068, 1078};
    const MessageTable table = CommandTable();
    std::vector<uint32_t> identifiers;
    for (size_t i = 0; i < table.count; ++i) identifiers.push_back(table.entries[i].identifier);

    EXPECT_EQ(identifiers, expected);
}

TEST_F(CommandsTest, EveryCommandGivesTheKeyboardBack) {
    NewBuffer();

    Run(CMD_SELECT_ALL);
    Run(CMD_OPEN);
    Run(65000);

    EXPECT_EQ(TheStandIns().refocused, 3);
}

TEST_F(CommandsTest, AnUnknownCommandResultsInZero) { EXPECT_EQ(Run(65000), 0); }

TEST_F(CommandsTest, TheNotificationCodeDoesNotHideTheCommand) {
    NewBuffer();

    Run(CMD_NEW, 1);

    EXPECT_EQ(BufferCount(), 2);
}

TEST_F(CommandsTest, EveryCommandAcceptsThatThereIsNoDocument) {
    const MessageTable table = CommandTable();
    for (size_t i = 0; i < table.count; ++i) {
        if (table.entries[i].identifier != CMD_NEW) Run(table.entries[i].identifier);
    }
    for (uint32_t id = 7400; id < 7430; ++id) Run(id);
    Run(CMD_BUFFER_FIRST);

    EXPECT_EQ(BufferCount(), 0);
}

TEST_F(CommandsTest, OpenAsksForAFileWithTheDefaultEncoding) {
    WriteFile("a.txt", "one");
    NewBuffer();
    TheStandIns().answers = {{PathOf("a.txt"), kCodecUtf8, -1}};

    Run(CMD_OPEN);

    ASSERT_EQ(TheStandIns().dialogs.size(), 1u);
    EXPECT_FALSE(TheStandIns().dialogs[0].saving);
    EXPECT_EQ(TheStandIns().dialogs[0].codecIndex, DefaultCodec());
    EXPECT_EQ(TheStandIns().dialogs[0].initialPath, u"");
    EXPECT_EQ(Caption(), u"a.txt");
    EXPECT_EQ(Shown()->codecId, kCodecUtf8);
}

TEST_F(CommandsTest, ExitClosesTheWindowOnlyWhenEveryDocumentIsClosed) {
    NewBuffer();
    Type(u"x");
    MessageScript({kAnswerCancel, kAnswerNo});

    Run(CMD_EXIT);
    EXPECT_EQ(TheStandIns().closed, 0);
    EXPECT_EQ(BufferCount(), 1);
    Run(CMD_EXIT);

    EXPECT_EQ(TheStandIns().closed, 1);
    EXPECT_EQ(BufferCount(), 0);
}

TEST_F(CommandsTest, CloseClosesTheShownDocument) {
    NewBuffer();
    NewBuffer();

    Run(CMD_CLOSE);

    EXPECT_EQ(BufferCount(), 1);
    EXPECT_EQ(Caption(), u"Untitled1");
}

TEST_F(CommandsTest, ClearDeletesForwardWithoutASelection) {
    NewBuffer();
    Type(u"ab");
    Run(CMD_FILE_TOP);

    Run(CMD_CLEAR);

    EXPECT_EQ(std::u16string(Shown()->lines[0].text), u"b");
}

TEST_F(CommandsTest, ConfirmedOptionsReachTheShownDocumentAtOnceAndTheOthersWhenShown) {
    NewBuffer();
    Type(u"\tx");
    NewBuffer();
    Type(u"\ty");
    const int32_t before = Shown()->widestLine;
    const int16_t wrap = Shown()->wordWrap;
    const uint32_t waits = HostPointer().waits;
    TheStandIns().editOptions = [] {
        TheOptions().tabSize = 20;
        TheOptions().wordWrapDefault = 1;
    };

    Run(CMD_OPTIONS);

    EXPECT_GT(Shown()->widestLine, before);
    EXPECT_EQ(Shown()->layoutStale, 0);
    EXPECT_EQ(Shown()->wordWrap, wrap) << "the default is for documents to come";
    EXPECT_EQ(BufferAt(0)->layoutStale, 1);
    EXPECT_EQ(BufferAt(0)->widestLine, before);
    EXPECT_EQ(HostPointer().waits, waits + 1);
    EXPECT_FALSE(HostPointer().waiting);
    EXPECT_EQ(TheStandIns().refocused, 1);
    const int32_t after = Shown()->widestLine;
    ActivateBuffer(BufferAt(0));
    EXPECT_EQ(BufferAt(0)->layoutStale, 0);
    EXPECT_EQ(BufferAt(0)->widestLine, after);
}

TEST_F(CommandsTest, CancelledOptionsReachNoDocument) {
    NewBuffer();
    NewBuffer();

    Run(CMD_OPTIONS);

    EXPECT_EQ(TheStandIns().optionsShown, 1);
    EXPECT_EQ(BufferAt(0)->layoutStale, 0);
    EXPECT_EQ(BufferAt(1)->layoutStale, 0);
}

TEST_F(CommandsTest, ConfirmedOptionsNeedNoDocument) {
    TheStandIns().editOptions = [] { TheOptions().tabSize = 20; };
    Run(CMD_OPTIONS);
    EXPECT_EQ(TheStandIns().optionsShown, 1);
}

TEST_F(CommandsTest, ToggleWrapFlipsTheShownDocument) {
    NewBuffer();
    const int16_t before = Shown()->wordWrap;
    const uint32_t waits = HostPointer().waits;

    Run(CMD_TOGGLE_WRAP);

    EXPECT_NE(Shown()->wordWrap, before);
    EXPECT_EQ(HostPointer().waits, waits + 1);
    EXPECT_FALSE(HostPointer().waiting);
}

TEST_F(CommandsTest, EachPasteCommandPastesInItsMode) {
    HostClipboard() = {};
    HostClipboard().text = u" a\n b";
    for (const uint32_t smart : {0u, 1u}) {
        TheOptions().pasteMode = smart;
        for (const uint32_t command : {uint32_t{CMD_PASTE}, uint32_t{CMD_PASTE_OTHER}}) {
            NewBuffer();
            const uint32_t waits = HostPointer().waits;

            Run(command);

            const bool isSmart = (smart != 0) == (command == CMD_PASTE);
            EXPECT_EQ(std::u16string(Shown()->lines[1].text), isSmart ? u"b" : u" b") << command;
            EXPECT_EQ(HostPointer().waits, waits + 1);
            EXPECT_FALSE(HostPointer().waiting);
        }
    }
    HostClipboard() = {};
}

TEST_F(CommandsTest, IndentCommandsMoveTheLineOutAndBackAndShowTheirBar) {
    NewBuffer();
    Type(u"a");

    Run(CMD_INDENT_MORE);
    EXPECT_EQ(std::u16string(Shown()->lines[0].text), u"\ta");
    Run(CMD_INDENT_LESS);

    EXPECT_EQ(std::u16string(Shown()->lines[0].text), u"a");
    EXPECT_EQ(TheStandIns().barsShown, std::vector<ToolBar>(2, ToolBar::kIndent));
}

TEST_F(CommandsTest, PagesMoveTheirOwnWay) {
    NewBuffer();
    for (int i = 0; i < 100; ++i) Type(u"\n");
    const int32_t last = Shown()->caret.row;

    Run(CMD_PAGE_UP);
    const int32_t above = Shown()->caret.row;
    Run(CMD_PAGE_DOWN);

    EXPECT_LT(above, last);
    EXPECT_EQ(Shown()->caret.row, last);
}

TEST_F(CommandsTest, MarkedTextIsExtendedByMovesUntilTheMarkEnds) {
    NewBuffer();
    Type(u"ab");
    Run(CMD_MARK_START);
    Run(CMD_FILE_TOP);
    EXPECT_TRUE(HasSelection(Shown()));
    Run(CMD_MARK_END);
    EXPECT_TRUE(HasSelection(Shown()));

    Run(CMD_FILE_BOTTOM);

    EXPECT_FALSE(HasSelection(Shown()));
}

TEST_F(CommandsTest, UndoShowsItsBarAndTakesBackWhatWasTyped) {
    NewBuffer();
    Type(u"a");

    Run(CMD_UNDO);

    EXPECT_EQ(Shown()->lines[0].length, 0u);
    EXPECT_EQ(TheStandIns().barsShown, std::vector<ToolBar>{ToolBar::kUndo});
    Run(CMD_REDO);
    EXPECT_EQ(Shown()->lines[0].length, 1u);
}

TEST_F(CommandsTest, GroupUndoIsASwitchWithAButton) {
    Run(CMD_GROUP_UNDO);
    EXPECT_EQ(TheAppState().groupUndo, 1);
    EXPECT_TRUE(TheStandIns().groupButton);

    Run(CMD_GROUP_UNDO);

    EXPECT_EQ(TheAppState().groupUndo, 0);
    EXPECT_FALSE(TheStandIns().groupButton);
}

TEST_F(CommandsTest, MovesThroughTheFileShowTheNavigateBar) {
    NewBuffer();

    Run(CMD_PAGE_DOWN);
    Run(CMD_PAGE_UP);
    Run(CMD_FILE_BOTTOM);
    Run(CMD_FILE_TOP);

    EXPECT_EQ(TheStandIns().barsShown, std::vector<ToolBar>(4, ToolBar::kNavigate));
}

TEST_F(CommandsTest, AHitOfFindShowsItsBar) {
    NewBuffer();
    Type(u"one two");
    TheStandIns().searches = {{u"one", u""}};

    Run(CMD_FIND);

    EXPECT_EQ(TheStandIns().searchDialogs, std::vector<bool>{false});
    EXPECT_EQ(TheStandIns().barsShown, std::vector<ToolBar>{ToolBar::kFind});
    EXPECT_EQ(Shown()->caretColumn, 3);
    EXPECT_EQ(Shown()->anchorColumn, 0);
}

TEST_F(CommandsTest, AHitOfReplaceShowsTheBarWithReplace) {
    NewBuffer();
    Type(u"one");
    TheStandIns().searches = {{u"one", u"two"}};

    Run(CMD_REPLACE);

    EXPECT_EQ(TheStandIns().searchDialogs, std::vector<bool>{true});
    EXPECT_EQ(TheStandIns().barsShown, std::vector<ToolBar>{ToolBar::kReplace});
    EXPECT_EQ(std::u16string(Shown()->lines[0].text), u"one") << "only found so far";
}

TEST_F(CommandsTest, ASearchThatFindsNothingSaysSoAndShowsNoBar) {
    NewBuffer();
    TheStandIns().searches = {{u"one", u""}, {u"one", u""}};

    Run(CMD_FIND);
    Run(CMD_REPLACE);

    EXPECT_EQ(TheStandIns().barsShown, std::vector<ToolBar>{});
    ASSERT_EQ(MessageLog().size(), 2u);
    EXPECT_EQ(MessageLog()[0].text, u"Pattern not found");
}

TEST_F(CommandsTest, ACancelledSearchSearchesNothing) {
    NewBuffer();
    Type(u"one");
    AcceptSearch({u"one", nullptr, false, false, false});

    Run(CMD_FIND);
    Run(CMD_REPLACE);

    EXPECT_EQ(TheStandIns().searchDialogs.size(), 2u);
    EXPECT_EQ(TheStandIns().barsShown, std::vector<ToolBar>{});
    EXPECT_EQ(Shown()->anchorColumn, -1);
    EXPECT_EQ(MessageLog().size(), 0u);
}

TEST_F(CommandsTest, TheSearchBarGoesOnAndClosesWhenNothingIsLeft) {
    NewBuffer();
    Type(u"one one");
    AcceptSearch({u"one", u"two", false, false, false});
    Run(CMD_FILE_TOP);

    Run(CMD_FIND_NEXT);
    EXPECT_EQ(Shown()->caretColumn, 3);
    Run(CMD_REPLACE_NEXT);
    EXPECT_EQ(std::u16string(Shown()->lines[0].text), u"two one");
    EXPECT_EQ(Shown()->caretColumn, 7);
    EXPECT_EQ(TheStandIns().barsClosed, std::vector<ToolBar>{});
    Run(CMD_REPLACE_NEXT);

    EXPECT_EQ(std::u16string(Shown()->lines[0].text), u"two two");
    EXPECT_EQ(TheStandIns().barsClosed, std::vector<ToolBar>{ToolBar::kFind});
    ASSERT_EQ(MessageLog().size(), 1u);
    Run(CMD_FIND_NEXT);
    EXPECT_EQ(TheStandIns().barsClosed.size(), 2u);
    EXPECT_EQ(MessageLog().size(), 2u);
}

TEST_F(CommandsTest, ASearchWithoutADocumentIsHarmless) {
    TheStandIns().searches = {{u"one", u""}, {u"one", u"two"}};

    Run(CMD_FIND);
    Run(CMD_REPLACE);
    Run(CMD_FIND_NEXT);
    Run(CMD_REPLACE_NEXT);

    EXPECT_EQ(TheStandIns().barsShown, std::vector<ToolBar>{});
    EXPECT_EQ(MessageLog().size(), 0u);
}

TEST_F(CommandsTest, EachBarHasItsCloseButton) {
    Run(CMD_CLOSE_NAVIGATE_BAR);
    Run(CMD_CLOSE_FIND_BAR);
    Run(CMD_CLOSE_UNDO_BAR);
    Run(CMD_CLOSE_INDENT_BAR);

    EXPECT_EQ(TheStandIns().barsClosed,
              (std::vector<ToolBar>{ToolBar::kNavigate, ToolBar::kFind, ToolBar::kUndo, ToolBar::kIndent}));
}

TEST_F(CommandsTest, BookmarksAreSetAndGoneTo) {
    NewBuffer();
    Type(u"a");
    NewLine(Shown());
    Run(CMD_SET_BOOKMARK_FIRST + 3);
    EXPECT_EQ(Shown()->bookmarks[3], 2);
    Run(CMD_FILE_TOP);

    Run(CMD_GO_TO_BOOKMARK_FIRST + 3);

    EXPECT_EQ(Shown()->caret.line, 1);
}

TEST_F(CommandsTest, TheRangeOfDocumentsEndsWithTheList) {
    NewBuffer();
    NewBuffer();

    Run(CMD_BUFFER_FIRST);
    EXPECT_EQ(Caption(), u"Untitled1");
    Run(CMD_BUFFER_FIRST + 2);

    EXPECT_EQ(Caption(), u"Untitled1");
}

TEST_F(CommandsTest, GoToMovesToTheLineThatWasEnteredAndShowsTheBar) {
    NewBuffer();
    TextInsertLines(Shown(), 0, 0, u"a\nb\nc", 5);
    TheStandIns().lineEntered = 2;

    Run(CMD_GO_TO);

    EXPECT_EQ(Shown()->caret.line, 1);
    EXPECT_EQ(Shown()->caretColumn, 0);
    EXPECT_EQ(TheStandIns().barsShown, std::vector<ToolBar>{ToolBar::kNavigate});
}

TEST_F(CommandsTest, GoToBeyondTheEndIsTheLastLine) {
    NewBuffer();
    TextInsertLines(Shown(), 0, 0, u"a\nb\nc", 5);
    TheStandIns().lineEntered = UINT32_MAX;

    Run(CMD_GO_TO);

    EXPECT_EQ(Shown()->caret.line, 2);
}

TEST_F(CommandsTest, GoToThatIsCancelledChangesNothing) {
    NewBuffer();
    TextInsertLines(Shown(), 0, 0, u"a\nb\nc", 5);
    MoveToEnd(Shown(), false);
    TheStandIns().lineEntered = 0;

    Run(CMD_GO_TO);

    EXPECT_EQ(Shown()->caret.line, 2);
    EXPECT_TRUE(TheStandIns().barsShown.empty());
}

TEST_F(CommandsTest, NextBufferShowsTheOneBehind) {
    NewBuffer();
    NewBuffer();

    Run(CMD_NEXT_BUFFER);

    EXPECT_EQ(Caption(), u"Untitled1");
}

TEST_F(CommandsTest, ARecentFileIsOpenedByItsCommand) {
    static char16_t opened[300];
    WriteFile("a.txt", "one");
    AddRecentFile(PathOf("a.txt").c_str(), kCodecAnsi);
    SetRecentFileOpener([](char16_t* path, uint32_t) {
        Utf16Copy(opened, 300, path);
        MemFree(nullptr, path);
    });

    Run(CMD_RECENT_FIRST);

    EXPECT_EQ(std::u16string(opened), PathOf("a.txt"));
    SetRecentFileOpener(nullptr);
}

TEST_F(CommandsTest, PathsMustWaitWhileACommandRuns) {
    static bool busyInside;
    AddRecentFile(u"\\x", kCodecAnsi);
    SetRecentFileOpener([](char16_t* path, uint32_t) {
        busyInside = IsBusy();
        MemFree(nullptr, path);
    });

    Run(CMD_RECENT_FIRST);

    EXPECT_TRUE(busyInside);
    EXPECT_FALSE(IsBusy());
    SetRecentFileOpener(nullptr);
}

}  // namespace
}  // namespace nira
