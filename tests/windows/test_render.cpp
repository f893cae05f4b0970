// What is really painted: pixels read back from the editor window.
#include <algorithm>
#include <array>
#include <random>

#include "editor_window_fixture.h"
#include "view/editing.h"

namespace nira {
namespace {

class Render : public EditorWindowTest {
  protected:
    // The colour of one pixel of the client area, with the caret away.
    COLORREF At(int x, int y) const {
        HideCaret(window_);
        const HDC device = GetDC(window_);
        const COLORREF color = GetPixel(device, x, y);
        ReleaseDC(window_, device);
        ShowCaret(window_);
        return color;
    }
    // The background behind column `column` of window row `row`: dots leave the cell's top pixels free.
    COLORREF Behind(int column, int row) const { return At(column * unit_ + unit_ / 2, row * row_ + 1); }
    // The middle of a cell that holds a full block.
    COLORREF Ink(int column, int row) const { return At(column * unit_ + unit_ / 2, row * row_ + row_ / 2); }
    void ExpectSelected(int row, int first, int end, int columns) const {
        for (int column = 0; column < columns; ++column) {
            EXPECT_EQ(Behind(column, row), column >= first && column < end ? kSelBack : kBack)
                << "column " << column << " of row " << row;
        }
    }
    void Paint() const { PaintEditor(editor_, 0); }
    // Paints over everything, so that what the next painting leaves out is seen.
    void Smear() const {
        const HDC device = GetDC(window_);
        RECT area = Client();
        const HBRUSH brush = CreateSolidBrush(RGB(255, 0, 0));
        FillRect(device, &area, brush);
        DeleteObject(brush);
        ReleaseDC(window_, device);
    }
    int Columns() const { return Client().right / unit_; }
};

TEST_F(Render, TextHasTheOptionsColours) {
    Fill(u"\u2588\u2588.");
    Select(0, 0, 0, 1);
    Paint();
    EXPECT_EQ(Ink(0, 0), kSelFore);
    EXPECT_EQ(Ink(1, 0), kFore);
    EXPECT_EQ(Behind(2, 0), kBack);
    EXPECT_EQ(Behind(9, 0), kBack);
}

TEST_F(Render, ASelectionInsideARowIsPixelExact) {
    Fill(u"..........");
    Select(0, 2, 0, 5);
    Paint();
    ExpectSelected(0, 2, 5, Columns());
    EXPECT_EQ(At(2 * unit_ - 1, 1), kBack);
    EXPECT_EQ(At(2 * unit_, 1), kSelBack);
    EXPECT_EQ(At(5 * unit_ - 1, 1), kSelBack);
    EXPECT_EQ(At(5 * unit_, 1), kBack);
    EXPECT_EQ(At(3 * unit_, row_ - 1), kSelBack) << "down to the row's last pixel";
    EXPECT_EQ(At(3 * unit_, row_), kBack);
}

TEST_F(Render, ASelectionOfWholeLinesReachesTheEdge) {
    Fill(u"...\r\n...\r\n...\r\n...");
    Select(0, 1, 2, 2);
    Paint();
    ExpectSelected(0, 1, Columns(), Columns());
    ExpectSelected(1, 0, Columns(), Columns());
    ExpectSelected(2, 0, 2, Columns());
    ExpectSelected(3, 0, 0, Columns());
    EXPECT_EQ(At(Client().right - 1, 1), kSelBack);
    EXPECT_EQ(At(Client().right - 1, row_ + 1), kSelBack);
    EXPECT_EQ(At(Client().right - 1, 2 * row_ + 1), kBack);
}

TEST_F(Render, ASelectionOverWrappedRowsFillsTheRowsBetween) {
    ResizeClient(10 * unit_ + unit_ / 2, 6 * row_);
    editor_->wordWrap = 1;
    Fill(std::u16string(34, u'.'));
    ASSERT_EQ(EditorRows(editor_), 4);
    Select(0, 33, 0, 8);
    Paint();
    ExpectSelected(0, 8, 10, 10);
    ExpectSelected(1, 0, 10, 10);
    ExpectSelected(2, 0, 10, 10);
    ExpectSelected(3, 0, 3, 10);
    EXPECT_EQ(At(Client().right - 1, row_ + 1), kSelBack) << "behind the row's last column too";
    EXPECT_EQ(At(Client().right - 1, 3 * row_ + 1), kBack);
}

TEST_F(Render, ASelectionEndingAtARowBreakEndsOnItsRow) {
    ResizeClient(10 * unit_ + unit_ / 2, 6 * row_);
    editor_->wordWrap = 1;
    Fill(std::u16string(15, u'.'));
    Select(0, 4, 0, 10);
    Paint();
    ExpectSelected(0, 4, 10, 10);
    ExpectSelected(1, 0, 0, 10);
    Select(0, 10, 0, 12);
    Paint();
    ExpectSelected(0, 0, 0, 10);
    ExpectSelected(1, 0, 2, 10);
}

TEST_F(Render, ASelectedTabIsItsColumnsWide) {
    Fill(u".\t.\t.");
    Select(0, 1, 0, 2);
    Paint();
    ExpectSelected(0, 1, 5, Columns());
    Select(0, 2, 0, 4);
    Paint();
    ExpectSelected(0, 5, 10, Columns());
    Select(0, 0, 0, 5);
    Paint();
    ExpectSelected(0, 0, 11, Columns());
}

TEST_F(Render, WideUnitsAreSelectedAsWideAsTheyMeasure) {
    Fill(u".\u4E2D\u6587.");
    const int before = TextWidth(FromHwnd(window_), TheOptions().text.font, u".\u4E2D", 2, 4);
    const int behind = TextWidth(FromHwnd(window_), TheOptions().text.font, u".\u4E2D\u6587", 3, 4);
    Select(0, 3, 0, 2);
    Paint();
    EXPECT_EQ(At(before - 1, row_ - 1), kBack);
    EXPECT_EQ(At(before, row_ - 1), kSelBack);
    EXPECT_EQ(At(behind - 1, row_ - 1), kSelBack);
    EXPECT_EQ(At(behind, row_ - 1), kBack);
}

TEST_F(Render, AnEmptyLineIsSelectedUnlessItWasNeverFilled) {
    Fill(u".\r\n\r\n.\r\n.");
    LineSetText(editor_, 2, nullptr, 0);
    LineMeasure(editor_, 2);
    ASSERT_NE(editor_->lines[1].text, nullptr);
    ASSERT_EQ(editor_->lines[2].text, nullptr);
    Select(0, 0, 3, 1);
    Smear();
    Paint();
    ExpectSelected(1, 0, Columns(), Columns());
    ExpectSelected(2, 0, 0, Columns());
    EXPECT_EQ(At(Client().right - 1, 2 * row_ + 1), kBack);
    ExpectSelected(3, 0, 1, Columns());
}

TEST_F(Render, EveryPixelIsPaintedAlsoBelowTheText) {
    Fill(u" \r\n \r\n\r\n ");
    Smear();
    Paint();
    const RECT client = Client();
    for (int y = 0; y < client.bottom; ++y) {
        ASSERT_EQ(At(0, y), kBack) << y;
        ASSERT_EQ(At(client.right - 1, y), kBack) << y;
        ASSERT_EQ(At(client.right / 2, y), kBack) << y;
    }
}

TEST_F(Render, APaintMessagePaintsTheSame) {
    Fill(u"....\r\n....");
    Select(0, 2, 1, 1);
    Smear();
    InvalidateRect(window_, nullptr, FALSE);
    UpdateWindow(window_);
    ExpectSelected(0, 2, Columns(), Columns());
    ExpectSelected(1, 0, 1, Columns());
    EXPECT_EQ(At(5, Client().bottom - 1), kBack);
}

TEST_F(Render, RowsThatAreCutOffAtTheBottomArePaintedToo) {
    std::u16string text;
    for (int i = 0; i < 60; ++i) text += u"\u2588\r\n";
    Fill(text);
    ResizeClient(100, 3 * row_ + row_ / 2 + 2);
    Smear();
    Paint();
    EXPECT_EQ(Ink(0, 3), kFore);
    EXPECT_EQ(At(99, Client().bottom - 1), kBack);
}

TEST_F(Render, AScrolledViewShowsTheTextFromItsOffsets) {
    std::u16string text;
    for (int i = 0; i < 40; ++i) text += u"...............................................\u2588\r\n";
    Fill(text);
    Select(7, 45, 7, 46);
    editor_->scrollX = 44 * unit_;
    Send(WM_VSCROLL, SB_LINEDOWN);
    const int32_t top = editor_->top.row;
    const int32_t column = editor_->scrollX / unit_;
    Paint();
    EXPECT_EQ(At(45 * unit_ - editor_->scrollX + unit_ / 2, (7 - top) * row_ + 1), kSelBack);
    EXPECT_EQ(At(44 * unit_ - editor_->scrollX + unit_ / 2, (7 - top) * row_ + 1), kBack);
    EXPECT_EQ(At(47 * unit_ - editor_->scrollX + unit_ / 2, row_ / 2), kFore);
    EXPECT_GT(column, 0);
}

TEST_F(Render, ALongRowScrolledFarIsFilledToTheEdge) {
    Fill(std::u16string(60, u'.') + u"\r\n.");
    Select(0, 2, 0, 50);
    MoveCaretTo(editor_, 0, 60);
    Smear();
    Paint();
    EXPECT_EQ(At(Client().right - 1, 1), kBack);
    EXPECT_EQ(At(1, row_ + 1), kBack) << "a row that ends left of the window";
}

TEST_F(Render, TypingIsSeenAtOnceAndLeavesNoCaretBehind) {
    SetFocus(window_);
    for (int i = 0; i < 5; ++i) Send(WM_CHAR, ' ');
    Key(VK_LEFT);
    Key(VK_LEFT);
    HideCaret(window_);
    for (int x = 0; x < 8 * unit_; ++x) ASSERT_EQ(At(x, row_ / 2), kBack) << x;
    ShowCaret(window_);
    Send(WM_CHAR, 0x2588);
    EXPECT_EQ(Ink(3, 0), kFore);
    Key(VK_BACK);
    EXPECT_EQ(Ink(3, 0), kBack);
}

TEST_F(Render, TheCaretStandsBetweenTheUnits) {
    SetFocus(window_);
    Fill(u"..\t\u4E2D..");
    for (uint32_t column = 0; column <= 6; ++column) {
        MoveCaretTo(editor_, 0, column);
        Paint();
        POINT caret = {};
        GetCaretPos(&caret);
        EXPECT_EQ(caret.x, TextWidth(FromHwnd(window_), TheOptions().text.font, u"..\t\u4E2D..", column, 4));
        EXPECT_EQ(caret.y, 0);
    }
}

TEST_F(Render, APaintThatIsDeferredDrawsNothingAndIsNoted) {
    Fill(u"...");
    Smear();
    editor_->flags |= kFlagPaintDeferred;
    Paint();
    EXPECT_EQ(At(5, 5), RGB(255, 0, 0));
    EXPECT_NE(editor_->flags & kFlagRepaintPending, 0u);
    editor_->flags &= ~(kFlagPaintDeferred | kFlagRepaintPending);
    Paint();
    EXPECT_EQ(Behind(0, 0), kBack);
}

HBITMAP MakeBitmap() { return CreateBitmap(1, 1, 1, 1, nullptr); }

uintptr_t NextBitmap() {
    const HBITMAP bitmap = MakeBitmap();
    DeleteObject(bitmap);
    return reinterpret_cast<uintptr_t>(bitmap) & 0xFFFF;
}

// Once the handles that earlier tests gave back are taken, handles count up: objects left behind are seen in
// the next.
class TakenHandles {
  public:
    TakenHandles() { std::generate(bitmaps_.begin(), bitmaps_.end(), MakeBitmap); }
    ~TakenHandles() { std::for_each(bitmaps_.begin(), bitmaps_.end(), DeleteObject); }

  private:
    std::array<HBITMAP, 2000> bitmaps_;
};

TEST_F(Render, APaintLeavesNoObjectBehind) {
    Fill(u".\t.\r\n...");
    Select(0, 1, 1, 1);
    Paint();
    Send(WM_PAINT);
    const TakenHandles taken;
    const uintptr_t before = NextBitmap();
    for (int i = 0; i < 50; ++i) {
        Paint();
        InvalidateRect(window_, nullptr, FALSE);
        UpdateWindow(window_);
    }
    EXPECT_LT(NextBitmap(), before + 50) << "a hundred paints";
}

// ---- measuring as the system does ----

std::u16string RandomRun(std::mt19937* random) {
    constexpr std::pair<unsigned, unsigned> kScripts[] = {
        {0x20, 0x7E}, {0xA1, 0x17F}, {0x391, 0x3C9}, {0x410, 0x44F}, {0x4E00, 0x9FA5}};
    std::u16string run;
    const unsigned length = 1 + (*random)() % 60;
    const auto& script = kScripts[(*random)() % 5];
    while (run.size() < length) {
        const auto& from = (*random)() % 4 == 0 ? kScripts[(*random)() % 5] : script;
        const unsigned unit = from.first + (*random)() % (from.second - from.first + 1);
        if (unit != 0xAD && unit != 0x3A2) run += static_cast<char16_t>(unit);
    }
    return run;
}

TEST_F(Render, WidthsAndFitsAreTheSystems) {
    std::mt19937 random(20);
    const HDC device = GetDC(window_);
    for (const char16_t* description :
         {u"Courier New\x000A", u"Courier New\x010C", u"Tahoma\x000A", u"Arial\x0210"}) {
        const FontHandle font = AcquireFont(description);
        const HGDIOBJ old = SelectObject(device, ToHfont(font));
        MeasureContext context;
        OpenMeasureContext(&context, FromHwnd(window_), font);
        for (int i = 0; i < 1000; ++i) {
            const std::u16string run = RandomRun(&random);
            const auto length = static_cast<uint32_t>(run.size());
            SIZE size = {};
            INT fits = 0;
            const int limit = static_cast<int>(random() % 500);
            GetTextExtentExPointW(device, ToWide(run.data()), static_cast<int>(length), limit, &fits, nullptr,
                                  &size);
            EXPECT_EQ(ContextTextWidth(&context, run.data(), length, -1), size.cx);
            const FitResult fit = ContextFitText(&context, run.data(), length, -1, limit);
            EXPECT_EQ(static_cast<INT>(fit.count), fits);
            EXPECT_LE(fit.width, limit);
        }
        CloseMeasureContext(&context);
        SelectObject(device, old);
        ReleaseFont(font);
    }
    ReleaseDC(window_, device);
}

}  // namespace
}  // namespace nira
