#include "fuzz_fixture.h"

#include <cstdio>
#include <cstdlib>

#include "app/services/memory.h"
#include "engine/editor_check.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "files/codecs.h"
#include "platform/host/surface_state.h"
#include "settings/options_store.h"
#include "view/fonts.h"

namespace nira {

void SetUpFuzz() {
    static WindowTag window;
    window.client = {120, 100};
    TheWindowState().editorWindow = &window;
    TheWindowState().clientWidth = window.client.width;
    LineIndexSetChunkLines(3);
    Must(InitCodecs() != 0 && InitFonts(&window) != 0 && LoadOptions() != 0, "set up");
    const FontHandle font = AcquireFont(u"Proportional\x000E");
    OptionsTextStyle()->font = font;
    OptionsSelectionStyle()->font = font;
    TheOptions().undoSize = 100000;
}

void Must(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

void MustHold(Editor* editor) {
    const char* fault = EditorCheck(editor);
    Must(fault == nullptr, fault);
}

std::u16string WholeText(const Editor* editor) {
    const uint32_t last = editor->lineCount - 1;
    uint32_t units = 0;
    char16_t* text =
        TextCopyRange(editor, nullptr, kLineEndLf, 0, 0, last, editor->lines[last].length, &units);
    const std::u16string copy(text, units);
    MemFree(nullptr, text);
    return copy;
}

}  // namespace nira
