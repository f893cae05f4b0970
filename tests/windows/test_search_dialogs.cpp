// The Find and Replace dialogs with their real controls, driven from inside by a timer, and the registry that
// they leave behind.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <string>
#include <utility>
#include <vector>

#include "search_dialog_fixture.h"

namespace nira {
namespace {

using namespace search_dialog_test;

// ---- opening ----

TEST_F(SearchDialogWindow, FindOpensOverItsOwnerWithTheSelectionToTypeOver) {
    Fill(u"one two");
    Select(0, 4, 0, 7);
    Find([&](HWND dialog) {
        RECT own = {};
        RECT around = {};
        GetWindowRect(dialog, &own);
        GetWindowRect(owner_, &around);
        EXPECT_TRUE(EqualRect(&own, &around));
        EXPECT_EQ(TextOf(dialog), L"Find");
        EXPECT_EQ(WithoutMark(ItemText(dialog, IDC_FIND_LABEL)), L"Find");
        EXPECT_EQ(Item(dialog, IDC_REPLACEMENT), nullptr);
        EXPECT_EQ(ItemText(dialog, IDC_PATTERN), L"two");
        EXPECT_EQ(GetFocus(), EditOf(dialog, IDC_PATTERN));
        SendMessageW(GetFocus(), WM_CHAR, L'x', 0);
        EXPECT_EQ(ItemText(dialog, IDC_PATTERN), L"x") << "the proposal was selected";
        EXPECT_FALSE(IsChecked(dialog, IDC_MATCH_CASE));
        EXPECT_FALSE(IsChecked(dialog, IDC_WHOLE_WORD));
        EXPECT_FALSE(IsChecked(dialog, IDC_UP));
        EXPECT_TRUE(IsChecked(dialog, IDC_DOWN));
    });
}

TEST_F(SearchDialogWindow, ReplaceOpensWithTheLastSearchBetweenWords) {
    AcceptSearch({u"one", u"two", true, true, true});
    Replace([&](HWND dialog) {
        EXPECT_EQ(TextOf(dialog), L"Replace");
        EXPECT_EQ(WithoutMark(ItemText(dialog, IDC_REPLACE_LABEL)), L"Replace");
        EXPECT_EQ(WithoutMark(ItemText(dialog, IDC_WITH_LABEL)), L"With");
        EXPECT_EQ(WithoutMark(ItemText(dialog, IDC_MATCH_CASE)), L"Match case");
        EXPECT_EQ(WithoutMark(ItemText(dialog, IDC_WHOLE_WORD)), L"Whole word only");
        EXPECT_EQ(ItemText(dialog, IDC_PATTERN), L"one");
        EXPECT_EQ(ItemText(dialog, IDC_REPLACEMENT), L"two");
        EXPECT_TRUE(IsChecked(dialog, IDC_MATCH_CASE));
        EXPECT_TRUE(IsChecked(dialog, IDC_WHOLE_WORD));
        EXPECT_TRUE(IsChecked(dialog, IDC_UP));
        EXPECT_FALSE(IsChecked(dialog, IDC_DOWN));
    });
}

TEST_F(SearchDialogWindow, OpensWithTheWordAtTheCaretAndTheStoredHistories) {
    Store(L"FindHist", Units(L"foo\0x\0", 7));
    Store(L"ReplaceHist", Units(L"bar\0", 5));
    Fill(u"one,two;three");
    MoveCaretTo(editor_, 0, 5);
    Replace([&](HWND dialog) {
        EXPECT_EQ(ItemText(dialog, IDC_PATTERN), L"two");
        EXPECT_EQ(ItemText(dialog, IDC_REPLACEMENT), L"") << "nothing was replaced before";
        EXPECT_EQ(Listed(dialog, IDC_PATTERN), (std::vector<std::wstring>{L"foo", L"x"}));
        EXPECT_EQ(Listed(dialog, IDC_REPLACEMENT), std::vector<std::wstring>{L"bar"});
    });
}

// ---- layout ----

void ExpectBar(HWND dialog, const std::vector<std::pair<int, const wchar_t*>>& buttons) {
    const HWND bar = shell::VisibleBar(dialog);
    ASSERT_EQ(SendMessageW(bar, TB_BUTTONCOUNT, 0, 0), static_cast<LRESULT>(buttons.size()));
    for (size_t i = 0; i < buttons.size(); ++i) {
        TBBUTTON button = {};
        SendMessageW(bar, TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
        EXPECT_EQ(button.idCommand, buttons[i].first);
        wchar_t text[80] = {};
        SendMessageW(bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(button.idCommand),
                     reinterpret_cast<LPARAM>(text));
        EXPECT_STREQ(text, buttons[i].second);
        EXPECT_EQ(ItemText(dialog, button.idCommand).empty(), false) << "a push button says the same";
    }
}

TEST_F(SearchDialogWindow, EachHasItsMenuBar) {
    Find([](HWND dialog) { ExpectBar(dialog, {{IDOK, L"Find"}, {IDCANCEL, L"Cancel"}}); });
    Replace([](HWND dialog) {
        ExpectBar(dialog, {{IDOK, L"Find"}, {IDCANCEL, L"Cancel"}, {CMD_REPLACE_ALL, L"Replace All"}});
    });
}

void ExpectStretched(HWND dialog, const std::vector<int>& wide, const std::vector<int>& buttons) {
    RECT client = {};
    GetClientRect(dialog, &client);
    const LONG margin = PlaceOf(dialog, IDC_PATTERN).left;
    EXPECT_LT(margin, ScaledPixels(16));
    for (const int id : wide) {
        EXPECT_EQ(PlaceOf(dialog, id).left, margin) << id;
        EXPECT_EQ(PlaceOf(dialog, id).right, client.right - margin) << id;
    }
    EXPECT_GE(PlaceOf(dialog, IDC_DOWN).left, client.right / 2);
    EXPECT_EQ(PlaceOf(dialog, buttons.front()).left, margin);
    EXPECT_NEAR(PlaceOf(dialog, buttons.back()).right, client.right - margin, 2);
}

TEST_F(SearchDialogWindow, WhatIsWideIsAsWideAsTheWindow) {
    for (const int width : {240, 480, 700}) {
        MakeOwner(ScaledPixels(width), ScaledPixels(320));
        Find([](HWND dialog) { ExpectStretched(dialog, {IDC_PATTERN, IDC_DIRECTION}, {IDOK, IDCANCEL}); });
        Replace([](HWND dialog) {
            ExpectStretched(dialog, {IDC_PATTERN, IDC_REPLACEMENT, IDC_DIRECTION},
                            {IDOK, IDCANCEL, CMD_REPLACE_ALL});
        });
    }
}

bool LiesInGroup(HWND dialog, HWND inner, HWND outer) {
    if (outer != Item(dialog, IDC_DIRECTION)) return false;
    const RECT place = PlaceOf(dialog, inner);
    const RECT group = PlaceOf(dialog, outer);
    RECT both = {};
    return (inner == Item(dialog, IDC_UP) || inner == Item(dialog, IDC_DOWN)) &&
           UnionRect(&both, &place, &group) && EqualRect(&both, &group);
}

bool HasText(int id) { return id != IDC_PATTERN && id != IDC_REPLACEMENT; }

bool HasSign(int id) {
    return id == IDC_MATCH_CASE || id == IDC_WHOLE_WORD || id == IDC_UP || id == IDC_DOWN;
}

bool IsLabel(int id) { return id == IDC_FIND_LABEL || id == IDC_REPLACE_LABEL || id == IDC_WITH_LABEL; }

// Whether the control lies in the window and is as large as its text and as a finger.
void ExpectLargeEnough(HWND dialog, HWND control) {
    const int id = GetDlgCtrlID(control);
    const RECT place = PlaceOf(dialog, control);
    RECT client = {};
    RECT both = {};
    GetClientRect(dialog, &client);
    UnionRect(&both, &place, &client);
    EXPECT_TRUE(EqualRect(&both, &client)) << id << " is cut off";
    if (!IsLabel(id)) {
        EXPECT_GE(place.bottom - place.top, 24) << id;
    }
    if (control == shell::VisibleBar(dialog) || !HasText(id)) return;
    EXPECT_LE(TextWidthOf(control) + (HasSign(id) ? ScaledPixels(16) : 0), place.right - place.left) << id;
}

void ExpectInOrder(HWND dialog) {
    const std::vector<HWND> children = VisibleChildren(dialog);
    EXPECT_GE(children.size(), 9u);
    for (const HWND child : children) {
        ExpectLargeEnough(dialog, child);
        for (const HWND other : children) {
            if (other == child || LiesInGroup(dialog, child, other) || LiesInGroup(dialog, other, child)) {
                continue;
            }
            const RECT place = PlaceOf(dialog, child);
            const RECT otherPlace = PlaceOf(dialog, other);
            RECT both = {};
            EXPECT_FALSE(IntersectRect(&both, &place, &otherPlace))
                << GetDlgCtrlID(child) << " and " << GetDlgCtrlID(other);
        }
    }
}

TEST_F(SearchDialogWindow, NothingOverlapsOrIsCutOffOnAnyScreen) {
    const SIZE screens[] = {{ScaledPixels(240), ScaledPixels(320)}, {480, 640}, {ScaledPixels(800), 480}};
    for (const SIZE& screen : screens) {
        SCOPED_TRACE(screen.cx);
        MakeOwner(screen.cx, screen.cy);
        Find(ExpectInOrder);
        Replace(ExpectInOrder);
    }
}

TEST_F(SearchDialogWindow, FollowsANewSizeOfItsOwner) {
    const auto turn = [this](HWND dialog) {
        SetWindowPos(owner_, nullptr, 0, 0, ScaledPixels(320), ScaledPixels(320), SWP_NOMOVE | SWP_NOZORDER);
        ExpectInOrder(dialog);
        SetWindowPos(owner_, nullptr, 0, 0, ScaledPixels(240), ScaledPixels(400), SWP_NOMOVE | SWP_NOZORDER);
        ExpectInOrder(dialog);
    };
    Find([&](HWND dialog) {
        turn(dialog);
        ExpectStretched(dialog, {IDC_PATTERN, IDC_DIRECTION}, {IDOK, IDCANCEL});
    });
    Replace([&](HWND dialog) {
        turn(dialog);
        ExpectStretched(dialog, {IDC_PATTERN, IDC_REPLACEMENT, IDC_DIRECTION},
                        {IDOK, IDCANCEL, CMD_REPLACE_ALL});
    });
}

// ---- confirming and cancelling ----

TEST_F(SearchDialogWindow, AnEmptyPatternKeepsTheDialogOpenAndTheSearchAsItIs) {
    AcceptSearch({u"last", u"by", true, false, false});
    EXPECT_FALSE(Replace([](HWND dialog) {
        Put(dialog, IDC_PATTERN, L"");
        Put(dialog, IDC_REPLACEMENT, L"other");
        CheckDlgButton(dialog, IDC_MATCH_CASE, BST_UNCHECKED);
        Press(dialog, IDOK);
        EXPECT_TRUE(IsOpen(dialog));
        Press(dialog, CMD_REPLACE_ALL);
        EXPECT_TRUE(IsOpen(dialog));
    }));
    EXPECT_STREQ(ToWide(TheSearchState().pattern), L"last");
    EXPECT_STREQ(ToWide(TheSearchState().replacement), L"by");
    EXPECT_EQ(TheSearchState().matchCase, 1);
    EXPECT_EQ(Stored(L"FindHist"), L"missing");
    EXPECT_EQ(Stored(L"ReplaceHist"), L"missing");
}

TEST_F(SearchDialogWindow, FindTakesTheSearchOverAndStoresThePatternOnly) {
    AcceptSearch({u"last", u"by", false, false, false});
    EXPECT_TRUE(Find([](HWND dialog) {
        Put(dialog, IDC_PATTERN, L"Foo");
        CheckDlgButton(dialog, IDC_MATCH_CASE, BST_CHECKED);
        CheckDlgButton(dialog, IDC_WHOLE_WORD, BST_CHECKED);
        CheckRadioButton(dialog, IDC_UP, IDC_DOWN, IDC_UP);
        Press(dialog, IDOK);
        EXPECT_FALSE(IsOpen(dialog));
    }));
    EXPECT_STREQ(ToWide(TheSearchState().pattern), L"Foo");
    EXPECT_STREQ(ToWide(TheSearchState().replacement), L"by");
    EXPECT_EQ(TheSearchState().matchCase, 1);
    EXPECT_EQ(TheSearchState().wholeWord, 1);
    EXPECT_EQ(TheSearchState().up, 1);
    EXPECT_EQ(Stored(L"FindHist"), Units(L"Foo\0", 5));
    EXPECT_EQ(Stored(L"ReplaceHist"), L"missing");
}

TEST_F(SearchDialogWindow, ReplaceStoresBothAndReplacesNothingYet) {
    Fill(u"one");
    EXPECT_TRUE(Replace([](HWND dialog) {
        Put(dialog, IDC_PATTERN, L"one");
        Put(dialog, IDC_REPLACEMENT, L"two");
        Press(dialog, IDOK);
    }));
    EXPECT_EQ(Text(), u"one");
    EXPECT_STREQ(ToWide(TheSearchState().replacement), L"two");
    EXPECT_EQ(Stored(L"FindHist"), Units(L"one\0", 5));
    EXPECT_EQ(Stored(L"ReplaceHist"), Units(L"two\0", 5));
}

TEST_F(SearchDialogWindow, CancelSavesNothing) {
    AcceptSearch({u"last", u"by", false, false, false});
    EXPECT_FALSE(Replace([](HWND dialog) {
        Put(dialog, IDC_PATTERN, L"one");
        Put(dialog, IDC_REPLACEMENT, L"two");
        CheckDlgButton(dialog, IDC_MATCH_CASE, BST_CHECKED);
        Press(dialog, IDCANCEL);
        EXPECT_FALSE(IsOpen(dialog));
    }));
    EXPECT_STREQ(ToWide(TheSearchState().pattern), L"last");
    EXPECT_STREQ(ToWide(TheSearchState().replacement), L"by");
    EXPECT_EQ(TheSearchState().matchCase, 0);
    EXPECT_EQ(Stored(L"FindHist"), L"missing");
    EXPECT_EQ(Stored(L"ReplaceHist"), L"missing");
}

// ---- Replace All ----

TEST_F(SearchDialogWindow, ReplaceAllCountsInABoxOverTheOpenDialogAndStoresBoth) {
    Fill(u"x x\nx");
    EXPECT_FALSE(Replace([](HWND dialog) {
        ReplaceAllBy(dialog, L"x", L"y");
        EXPECT_TRUE(IsOpen(dialog));
        ASSERT_EQ(boxes.size(), 1u);
        EXPECT_EQ(boxes[0].text, L"3 occurrences replaced");
        EXPECT_EQ(boxes[0].owner, dialog);
        EXPECT_EQ(Stored(L"FindHist"), Units(L"x\0", 3));
        EXPECT_EQ(Stored(L"ReplaceHist"), Units(L"y\0", 3));
        EXPECT_EQ(Listed(dialog, IDC_PATTERN), std::vector<std::wstring>{L"x"});
        ReplaceAllBy(dialog, L"x", L"y");
        EXPECT_TRUE(IsOpen(dialog));
    }));
    EXPECT_EQ(Text(), u"y y\ny");
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[1].text, L"0 occurrences replaced");
}

TEST_F(SearchDialogWindow, EscEndsAReplaceAllThatFeedsOnItself) {
    Fill(u"x");
    Replace([](HWND dialog) {
        PostMessageW(EditOf(dialog, IDC_PATTERN), WM_KEYDOWN, VK_ESCAPE, 0);
        ReplaceAllBy(dialog, L"x", L"xx");
        EXPECT_TRUE(IsOpen(dialog)) << "the key has ended the replacing, not the dialog";
    });
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_GT(Text().size(), 1u);
    EXPECT_EQ(boxes[0].text, std::to_wstring(Text().size() - 1) + L" occurrences replaced");
}

TEST_F(SearchDialogWindow, AnEmptyReplacementDeletesAndLeavesTheListOfReplacements) {
    Store(L"ReplaceHist", Units(L"old\0", 5));
    Fill(u"a-b-c");
    Replace([](HWND dialog) {
        ReplaceAllBy(dialog, L"-", L"");
        EXPECT_EQ(Listed(dialog, IDC_REPLACEMENT), std::vector<std::wstring>{L"old"});
    });
    EXPECT_EQ(Text(), u"abc");
    EXPECT_EQ(Stored(L"FindHist"), Units(L"-\0", 3));
    EXPECT_EQ(Stored(L"ReplaceHist"), Units(L"old\0", 5)) << "an empty entry would have ended the list";
}

TEST_F(SearchDialogWindow, WithoutADocumentTheDialogsWorkAndReplaceNothing) {
    SetCurrentEditor(nullptr);
    AcceptSearch({u"last", u"by", false, false, false});
    EXPECT_TRUE(Find([](HWND dialog) {
        EXPECT_EQ(ItemText(dialog, IDC_PATTERN), L"last");
        Press(dialog, IDOK);
    }));
    Replace([](HWND dialog) { ReplaceAllBy(dialog, L"x", L"y"); });
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, L"0 occurrences replaced");
    SetCurrentEditor(editor_);
}

// ---- histories ----

TEST_F(SearchDialogWindow, TheListKeepsItsLengthAndWhatItHoldsAlready) {
    TheOptions().histLen = 3;
    Store(L"FindHist", Units(L"c\0b\0a\0", 7));
    Replace([](HWND dialog) {
        ReplaceAllBy(dialog, L"d", L"1");
        EXPECT_EQ(Listed(dialog, IDC_PATTERN), (std::vector<std::wstring>{L"d", L"c", L"b"}));
        EXPECT_EQ(ItemText(dialog, IDC_PATTERN), L"d");
        ReplaceAllBy(dialog, L"B", L"1");
        EXPECT_EQ(Listed(dialog, IDC_PATTERN), (std::vector<std::wstring>{L"d", L"c", L"b"}));
        EXPECT_EQ(ItemText(dialog, IDC_PATTERN), L"B");
    });
    EXPECT_EQ(Stored(L"FindHist"), Units(L"d\0c\0b\0", 7));
    EXPECT_EQ(Stored(L"ReplaceHist"), Units(L"1\0", 3));
}

TEST_F(SearchDialogWindow, AListOfLengthZeroIsStoredEmpty) {
    TheOptions().histLen = 0;
    Store(L"FindHist", Units(L"c\0b\0", 5));
    EXPECT_TRUE(Find([](HWND dialog) {
        EXPECT_EQ(Listed(dialog, IDC_PATTERN), std::vector<std::wstring>{});
        Put(dialog, IDC_PATTERN, L"d");
        Press(dialog, IDOK);
    }));
    EXPECT_EQ(Stored(L"FindHist"), Units(L"", 1));
}

TEST_F(SearchDialogWindow, AHistoryOfAnotherTypeIsNoneAndIsReplaced) {
    for (const DWORD type : {DWORD{REG_SZ}, DWORD{REG_BINARY}, DWORD{REG_DWORD}}) {
        SCOPED_TRACE(type);
        Store(L"FindHist", Units(L"c\0", 2), type);
        EXPECT_TRUE(Find([](HWND dialog) {
            EXPECT_EQ(Listed(dialog, IDC_PATTERN), std::vector<std::wstring>{});
            Put(dialog, IDC_PATTERN, L"d");
            Press(dialog, IDOK);
        }));
        EXPECT_EQ(Stored(L"FindHist"), Units(L"d\0", 3));
    }
}

TEST_F(SearchDialogWindow, AHistoryWithoutItsFinalZerosIsReadToItsEndAndStoredWhole) {
    Store(L"FindHist", Units(L"ab\0cd", 5));
    EXPECT_TRUE(Find([](HWND dialog) {
        EXPECT_EQ(Listed(dialog, IDC_PATTERN), (std::vector<std::wstring>{L"ab", L"cd"}));
        Put(dialog, IDC_PATTERN, L"e");
        Press(dialog, IDOK);
    }));
    EXPECT_EQ(Stored(L"FindHist"), Units(L"e\0ab\0cd\0", 9));
}

TEST_F(SearchDialogWindow, OfAHundredThousandEntriesTheListTakesWhatTheOptionsKeep) {
    std::wstring entries;
    for (int i = 0; i < 100000; ++i) entries += std::to_wstring(i) + L'\0';
    Store(L"FindHist", entries + L'\0');
    TheOptions().histLen = 4000000000;
    EXPECT_TRUE(Find([](HWND dialog) {
        const auto count = [&] { return SendMessageW(Item(dialog, IDC_PATTERN), CB_GETCOUNT, 0, 0); };
        EXPECT_EQ(count(), 100000);
        Put(dialog, IDC_PATTERN, L"new");
        Press(dialog, IDOK);
    }));
    EXPECT_TRUE(Stored(L"FindHist") == Units(L"new\0", 4) + entries + L'\0');
    TheOptions().histLen = 2;
    EXPECT_TRUE(Find([](HWND dialog) {
        EXPECT_EQ(Listed(dialog, IDC_PATTERN), (std::vector<std::wstring>{L"new", L"0"}));
        Put(dialog, IDC_PATTERN, L"x");
        Press(dialog, IDOK);
    }));
    EXPECT_EQ(Stored(L"FindHist"), Units(L"x\0new\0", 7));
}

// ---- patterns that people rarely type ----

TEST_F(SearchDialogWindow, ASelectionOfSeveralLinesIsProposedWithItsLineEndsAndNeverFound) {
    Fill(u"one\ntwo\none\ntwo");
    Select(0, 1, 1, 2);
    EXPECT_TRUE(Find([](HWND dialog) {
        EXPECT_EQ(ItemText(dialog, IDC_PATTERN), L"ne\r\ntw");
        Press(dialog, IDOK);
    }));
    EXPECT_STREQ(ToWide(TheSearchState().pattern), L"ne\r\ntw");
    EXPECT_FALSE(FindNext(editor_));
    EXPECT_EQ(Stored(L"FindHist"), Units(L"ne\r\ntw\0", 8));
}

void PutOnClipboard(const std::wstring& text) {
    ASSERT_TRUE(OpenClipboard(nullptr));
    EmptyClipboard();
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    wcscpy(static_cast<wchar_t*>(GlobalLock(memory)), text.c_str());
    GlobalUnlock(memory);
    SetClipboardData(CF_UNICODETEXT, memory);
    CloseClipboard();
}

TEST_F(SearchDialogWindow, APatternOfTenThousandCharactersIsPastedTypedFoundAndListed) {
    const std::wstring pattern = std::wstring(5000, L'p') + std::wstring(4999, L'q') + L"r";
    Fill(u"ppp\n" + std::u16string(FromWide(pattern.c_str())) + u" end");
    PutOnClipboard(pattern.substr(0, 9999));
    EXPECT_TRUE(Find([&](HWND dialog) {
        SendMessageW(GetFocus(), WM_PASTE, 0, 0);
        SendMessageW(GetFocus(), WM_CHAR, L'r', 0);
        EXPECT_TRUE(ItemText(dialog, IDC_PATTERN) == pattern);
        Press(dialog, IDOK);
    }));
    EXPECT_TRUE(FindNext(editor_));
    EXPECT_EQ(Anchor(), Place(1, 0));
    EXPECT_EQ(Caret(), Place(1, 10000));
    EXPECT_TRUE(Stored(L"FindHist") == pattern + Units(L"\0", 2));
    Find(
        [&](HWND dialog) { EXPECT_TRUE(Listed(dialog, IDC_PATTERN) == std::vector<std::wstring>{pattern}); });
}

TEST_F(SearchDialogWindow, HalvesOfPairsAndSeparatorsPassThroughTheField) {
    for (const wchar_t* pattern : {L"\xD83D", L"a\xDE00", L" ,;\t "}) {
        EXPECT_TRUE(Find([&](HWND dialog) {
            Put(dialog, IDC_PATTERN, pattern);
            Press(dialog, IDOK);
        }));
        EXPECT_STREQ(ToWide(TheSearchState().pattern), pattern);
    }
    EXPECT_EQ(Stored(L"FindHist"), Units(L" ,;\t \0a\xDE00\0\xD83D\0", 12));
}

}  // namespace
}  // namespace nira
