#include "engine/render.h"

#include <algorithm>

#include "engine/render_rows.h"
#include "engine/window_state.h"
#include "platform/surface.h"
#include "platform/win32/casts.h"
#include "view/measure.h"

namespace nira {

namespace {

constexpr int kNoTabs = -1;  // row texts come with their tabs expanded

// One paint: where it draws, and what it has to put back.
struct Painter {
    Editor* editor;
    HWND window;
    HDC screen;
    HDC memory;  // the back buffer, one row high, or null when it could not be had
    HBITMAP bitmap;
    HGDIOBJ oldBitmap;
    RECT client;
    MeasureContext context;
};

HDC Target(const Painter& painter) { return painter.memory != nullptr ? painter.memory : painter.screen; }

void OpenBackBuffer(Painter* painter) {
    painter->memory = CreateCompatibleDC(painter->screen);
    if (painter->memory == nullptr) return;
    painter->bitmap = CreateCompatibleBitmap(painter->screen, std::max<LONG>(1, painter->client.right),
                                             painter->editor->lineHeight);
    if (painter->bitmap == nullptr) {
        DeleteDC(painter->memory);
        painter->memory = nullptr;
        return;
    }
    painter->oldBitmap = SelectObject(painter->memory, painter->bitmap);
}

void CloseBackBuffer(Painter* painter) {
    if (painter->memory == nullptr) return;
    SelectObject(painter->memory, painter->oldBitmap);
    DeleteObject(painter->bitmap);
    DeleteDC(painter->memory);
}

// Fills the rectangle with the style's background and draws the text in its foreground.
void DrawPiece(HDC device, const TextStyle& style, int x, const RECT& area, const char16_t* text,
               uint32_t units) {
    SetTextColor(device, style.fore);
    SetBkColor(device, style.back);
    ExtTextOutW(device, x, area.top, ETO_OPAQUE | ETO_CLIPPED, &area, ToWide(text), units, nullptr);
}

// Draws one piece of a row from x on and returns where the next begins. The last piece fills the row to the
// edge.
int DrawNextPiece(Painter* painter, const TextStyle& style, int x, int top, const char16_t* text,
                  uint32_t units, bool last) {
    const int width = ContextTextWidth(&painter->context, text, units, kNoTabs);
    const LONG right = last ? painter->client.right : static_cast<LONG>(x + width);
    const RECT area = {x, top, std::max<LONG>(right, x), top + painter->editor->lineHeight};
    if (last || width > 0) DrawPiece(Target(*painter), style, x, area, text, units);
    return x + width;
}

void DrawRowText(Painter* painter, const RowText& row, int top) {
    const Editor* editor = painter->editor;
    int x = -editor->scrollX;
    if (row.selectionEnd <= row.selectionStart && !row.selectedToEdge) {
        DrawNextPiece(painter, *editor->textStyle, x, top, row.text, row.length, true);
        return;
    }
    x = DrawNextPiece(painter, *editor->textStyle, x, top, row.text, row.selectionStart, false);
    x = DrawNextPiece(painter, *editor->selStyle, x, top, row.text + row.selectionStart,
                      row.selectionEnd - row.selectionStart, row.selectedToEdge);
    if (row.selectedToEdge) return;
    DrawNextPiece(painter, *editor->textStyle, x, top, row.text + row.selectionEnd,
                  row.length - row.selectionEnd, true);
}

void DrawRow(Painter* painter, const RowPos& position, const SelectionSpan& selection) {
    const Editor* editor = painter->editor;
    const int y = position.row * editor->lineHeight - editor->scrollY;
    if (editor->lines[position.line].text == nullptr) {
        const RECT area = {0, y, painter->client.right, y + editor->lineHeight};
        DrawPiece(painter->screen, *editor->textStyle, -editor->scrollX, area, u"", 0);
        return;
    }
    RowText row = MakeRowText(editor, position, selection, OptionsTabSize());
    DrawRowText(painter, row, painter->memory != nullptr ? 0 : y);
    FreeRowText(&row);
    if (painter->memory == nullptr) return;
    BitBlt(painter->screen, 0, y, painter->client.right, editor->lineHeight, painter->memory, 0, 0, SRCCOPY);
}

RowPos NextRow(const Editor* editor, RowPos position) {
    ++position.row;
    if (static_cast<uint32_t>(position.subRow) < ExtraRows(editor->lines[position.line])) {
        ++position.subRow;
    } else {
        ++position.line;
        position.subRow = 0;
    }
    return position;
}

void FillBelow(const Painter& painter, int y) {
    if (y >= painter.client.bottom) return;
    const RECT area = {0, y, painter.client.right, painter.client.bottom};
    const HBRUSH brush = CreateSolidBrush(painter.editor->textStyle->back);
    FillRect(painter.screen, &area, brush);
    DeleteObject(brush);
}

void DrawRows(Painter* painter) {
    const Editor* editor = painter->editor;
    const SelectionSpan selection = SelectionSpanOf(editor);
    const HDC target = Target(*painter);
    OpenMeasureContextOnDevice(&painter->context, FromHdc(target), editor->textStyle->font);
    if (target != painter->screen) SelectObject(painter->screen, ToHfont(editor->textStyle->font));
    RowPos position = editor->top;
    for (; position.row <= editor->bottomRow; position = NextRow(editor, position)) {
        DrawRow(painter, position, selection);
    }
    CloseMeasureContextOnDevice(&painter->context);
    FillBelow(*painter, position.row * editor->lineHeight - editor->scrollY);
}

void DrawOn(Editor* editor, HWND window, HDC screen) {
    Painter painter = {};
    painter.editor = editor;
    painter.window = window;
    painter.screen = screen;
    GetClientRect(window, &painter.client);
    const int saved = SaveDC(screen);
    OpenBackBuffer(&painter);
    DrawRows(&painter);
    CloseBackBuffer(&painter);
    RestoreDC(screen, saved);
}

// Painting outside WM_PAINT: the system draws its caret by inverting pixels, so it must be away meanwhile.
void PaintNow(Editor* editor, HWND window) {
    const HDC screen = GetDC(window);
    if (screen == nullptr) return;
    HideCaret(window);
    DrawOn(editor, window, screen);
    if ((editor->flags & kFlagCaretElsewhere) != 0) {
        SetCaretPos(editor->caretX - editor->scrollX, editor->caretY - editor->scrollY);
        editor->flags &= ~kFlagCaretElsewhere;
    }
    ShowCaret(window);
    ReleaseDC(window, screen);
}

}  // namespace

void PaintEditor(Editor* editor, int fromPaintMessage) {
    if ((editor->flags & kFlagPaintDeferred) != 0) {
        editor->flags |= kFlagRepaintPending;
        return;
    }
    const HWND window = ToHwnd(TheWindowState().editorWindow);
    if (window == nullptr) return;
    if (fromPaintMessage == 0) {
        PaintNow(editor, window);
        return;
    }
    PAINTSTRUCT paint;
    const HDC screen = BeginPaint(window, &paint);
    if (screen != nullptr) DrawOn(editor, window, screen);
    EndPaint(window, &paint);
}

void PlaceCaret(Editor* editor) {
    SurfaceMoveCaret(editor->caretX - editor->scrollX, editor->caretY - editor->scrollY);
    SurfaceShowCaret(TheWindowState().editorWindow);
}

}  // namespace nira
