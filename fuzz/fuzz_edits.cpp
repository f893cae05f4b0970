// Bytes as operations on one document: what a person can do to text, in any order, with any characters. Every
// invariant holds after each, undoing all of it leaves the empty document, and redoing all of it the last
// text.
#include <fuzzer/FuzzedDataProvider.h>

#include "engine/editor_check.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "fuzz_fixture.h"
#include "platform/host/surface_state.h"
#include "view/clipboard_editing.h"
#include "view/editing.h"
#include "view/indentation.h"
#include "view/navigation.h"
#include "view/scroll.h"
#include "view/undo_apply.h"

namespace nira {

namespace {

// Mostly the characters that the code treats specially.
char16_t Unit(FuzzedDataProvider* bytes) {
    constexpr char16_t kSpecial[] = {u'\t', u' ',   u'a',   u'i',   u'W',   u'.',
                                     0,     0x0301, 0x0627, 0xD83D, 0xDE00, 0x4E2D};
    if (bytes->ConsumeBool()) return bytes->PickValueInArray(kSpecial);
    return bytes->ConsumeIntegral<char16_t>();
}

std::u16string Text(FuzzedDataProvider* bytes) {
    std::u16string text;
    for (int i = bytes->ConsumeIntegralInRange(0, 40); i > 0; --i) {
        const int kind = bytes->ConsumeIntegralInRange(0, 5);
        if (kind == 0) {
            text += u"\r\n";
            continue;
        }
        const char16_t unit = Unit(bytes);
        text += unit;
    }
    return text;
}

using Move = void (*)(Editor*, bool);
constexpr Move kMoves[] = {MoveLeft,   MoveRight,    MoveWordLeft, MoveWordRight, MoveRowUp,   MoveRowDown,
                           MovePageUp, MovePageDown, MoveHome,     MoveEnd,       MoveToStart, MoveToEnd};

void Resize(Editor* editor, int32_t width, int32_t height) {
    WindowHandle window = TheWindowState().editorWindow;
    window->client = {width, height};
    TheWindowState().clientWidth = width;
    ViewResized(editor);
}

void Step(Editor* editor, FuzzedDataProvider* bytes) {
    switch (bytes->ConsumeIntegralInRange(0, 15)) {
        case 0:
            TypeChar(editor, Unit(bytes));
            break;
        case 1:
            NewLine(editor);
            break;
        case 2:
            DeleteBackward(editor);
            break;
        case 3:
            DeleteForward(editor);
            break;
        case 4: {
            const std::u16string text = Text(bytes);
            InsertAtCaret(editor, text.data(), static_cast<uint32_t>(text.size()));
            break;
        }
        case 5:
            bytes->PickValueInArray(kMoves)(editor, bytes->ConsumeBool());
            break;
        case 6:
            UndoApply(editor, bytes->ConsumeBool(), bytes->ConsumeBool());
            break;
        case 7:
            ToggleWrap(editor);
            break;
        case 8:
            Resize(editor, bytes->ConsumeIntegralInRange(0, 200), bytes->ConsumeIntegralInRange(0, 200));
            break;
        case 9:
            TapAt(editor, bytes->ConsumeIntegralInRange(-50, 250), bytes->ConsumeIntegralInRange(-50, 250));
            break;
        case 10:
            DragTo(editor, bytes->ConsumeIntegralInRange(-50, 250), bytes->ConsumeIntegralInRange(-50, 250));
            break;
        case 11: {
            const std::u16string text = Text(bytes);
            TheOptions().smartBase = bytes->ConsumeBool() ? 1 : 0;
            PasteText(editor, text.data(), static_cast<uint32_t>(text.size()), bytes->ConsumeBool());
            break;
        }
        case 12:
            IncreaseIndent(editor);
            break;
        case 13:
            DecreaseIndent(editor);
            break;
        case 14:
            MarkStart(editor);
            break;
        default:
            SelectAll(editor);
            break;
    }
}

void CheckAll(Editor* editor) {
    MustHold(editor);
    const char* fault = EditorCheckPositions(editor);
    Must(fault == nullptr, fault);
}

}  // namespace

void FuzzEdits(const uint8_t* data, size_t size) {
    FuzzedDataProvider bytes(data, size);
    Editor* editor = EditorCreate();
    TheWindowState().currentEditor = editor;
    TheOptions().keepIndent = bytes.ConsumeBool() ? 1 : 0;
    constexpr uint32_t kTabSizes[] = {0, 1, 3, 8, 64};
    TheOptions().tabSize = bytes.PickValueInArray(kTabSizes);
    while (bytes.remaining_bytes() > 0) {
        Step(editor, &bytes);
        CheckAll(editor);
    }
    while (CanRedo(editor->undo)) UndoApply(editor, false, false);
    const std::u16string text = WholeText(editor);
    while (CanUndo(editor->undo)) UndoApply(editor, true, false);
    CheckAll(editor);
    Must(WholeText(editor).empty(), "undoing everything leaves the empty document");
    Must(editor->modified == 0, "undoing everything leaves it unmodified");
    while (CanRedo(editor->undo)) UndoApply(editor, false, false);
    CheckAll(editor);
    Must(WholeText(editor) == text, "redoing everything gives the last text");
    TheWindowState().currentEditor = nullptr;
    EditorDestroy(editor);
}

}  // namespace nira

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    nira::SetUpFuzz();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    nira::FuzzEdits(data, size);
    return 0;
}
