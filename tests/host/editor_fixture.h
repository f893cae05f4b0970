// What the tests of the engine and the view share: a window of 480 x 640 pixels, a font of 8 pixels a unit,
// usual Options, a count of the editor's news, and a look at everything that a closed document must give
// back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/editor.h"
#include "engine/editor_check.h"
#include "engine/editor_life.h"
#include "engine/text.h"
#include "engine/window_state.h"
#include "host/files_support.h"
#include "platform/host/font_table.h"
#include "platform/host/surface_state.h"
#include "view/fonts.h"
#include "view/layout.h"

namespace nira {

// The news of the documents since the last reset.
struct EditorNews {
    int titles = 0;
    int undoStates = 0;
    int selections = 0;
    int repaints = 0;
};

inline EditorNews& News() {
    static EditorNews news;
    return news;
}

constexpr char16_t kFixed14[] = u"Fixed\x0E";   // 8 pixels a unit, 12 a tab glyph
constexpr char16_t kSerif14[] = u"Letter\x0E";  // proportional

inline std::u16string_view LineView(const Editor* editor, uint32_t line) {
    const LineRecord& record = editor->lines[line];
    return record.text != nullptr ? std::u16string_view(record.text, record.length) : std::u16string_view();
}

inline std::vector<std::u16string> Lines(const Editor* editor) {
    std::vector<std::u16string> lines;
    for (uint32_t i = 0; i < editor->lineCount; ++i) lines.emplace_back(LineView(editor, i));
    return lines;
}

// The whole text with LF between the lines.
inline std::u16string TextOf(const Editor* editor) {
    std::u16string text(LineView(editor, 0));
    for (uint32_t i = 1; i < editor->lineCount; ++i) text.append(u"\n").append(LineView(editor, i));
    return text;
}

inline std::vector<uint32_t> BreaksOf(const Editor* editor, uint32_t line) {
    const LineRecord& record = editor->lines[line];
    std::vector<uint32_t> starts;
    for (uint32_t i = 1; i <= ExtraRows(record); ++i) starts.push_back(record.breaks[i]);
    return starts;
}

inline void ExpectSound(Editor* editor) { EXPECT_STREQ(EditorCheck(editor), nullptr); }

// The operations with a look at the document behind each.
inline int32_t Insert(Editor* editor, uint32_t line, uint32_t column, std::u16string_view text) {
    const int32_t pairs = TextInsert(editor, line, column, text.data(), static_cast<uint32_t>(text.size()));
    ExpectSound(editor);
    return pairs;
}

inline bool Delete(Editor* editor, uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2) {
    const bool deleted = TextDelete(editor, line1, column1, line2, column2);
    ExpectSound(editor);
    return deleted;
}

inline int32_t DeleteCount(Editor* editor, uint32_t line, uint32_t column, uint32_t count) {
    const int32_t lines = TextDeleteCount(editor, line, column, count);
    ExpectSound(editor);
    return lines;
}

// A text of the local heap as a string; frees it.
inline std::u16string Taken(char16_t* text, uint32_t units) {
    std::u16string copy(text, units);
    MemFree(nullptr, text);
    return copy;
}

inline std::u16string CopyRange(const Editor* editor, uint32_t style, uint32_t line1, uint32_t column1,
                                uint32_t line2, uint32_t column2) {
    uint32_t units = 0;
    char16_t* text = TextCopyRange(editor, nullptr, style, line1, column1, line2, column2, &units);
    EXPECT_EQ(text[units], 0);
    return Taken(text, units);
}

class EditorTest : public ServicesTest {
  protected:
    EditorTest()
        : heaps_(HostHeapCount()),
          fonts_(HostTextDeviceCounts().fontsLive),
          devices_(HostTextDeviceCounts().devicesLive) {
        window_.client = {480, 640};
        TheWindowState() = {};
        TheWindowState().editorWindow = &window_;
        TheWindowState().clientWidth = 480;
        TheOptions().tabSize = 8;
        TheOptions().undoSize = 64;
        TheEditorEvents() = {[] { ++News().titles; }, [](Editor*) { ++News().undoStates; },
                             [](Editor*) { ++News().selections; }, [](Editor*) { ++News().repaints; }};
        News() = {};
        InitFonts(&window_);
        UseFont(kFixed14);
    }
    ~EditorTest() override {
        FaultResetAll();
        for (Editor* editor : editors_) EditorDestroy(editor);
        ShutdownFonts();
        HostSetTextShaping(false);
        HostSetDotsPerInch(96);
        LineIndexSetChunkLines(kLineIndexChunkLines);
        TheWindowState() = {};
        TheEditorEvents() = {};
        HostSurfaceReset();
        EXPECT_EQ(HostHeapCount(), heaps_) << "heaps left";
        EXPECT_EQ(HostTextDeviceCounts().fontsLive, fonts_) << "fonts left";
        EXPECT_EQ(HostTextDeviceCounts().devicesLive, devices_) << "devices left";
    }

    // The font of the Options from here on; released with the fixture.
    void UseFont(const char16_t* description) {
        TheOptions().text.font = AcquireFont(description);
        TheOptions().selection.font = TheOptions().text.font;
    }

    void UseWidth(int32_t width) {
        window_.client.width = width;
        TheWindowState().clientWidth = width;
    }

    // A document destroyed with the fixture.
    Editor* Create() {
        Editor* editor = EditorCreate();
        editors_.push_back(editor);
        ExpectSound(editor);
        return editor;
    }

    // The same with a text, of which nothing is recorded.
    Editor* Create(std::u16string_view text) {
        Editor* editor = Create();
        editor->flags |= kFlagNoUndo;
        Insert(editor, 0, 0, text);
        editor->flags &= ~kFlagNoUndo;
        return editor;
    }

    WindowTag window_;

  private:
    std::vector<Editor*> editors_;
    size_t heaps_;
    size_t fonts_;
    size_t devices_;
};

}  // namespace nira
