// A document and a folder for the tests of loading and saving.
#pragma once

#include <string>
#include <vector>

#include "engine/editor.h"
#include "engine/editor_check.h"
#include "engine/text.h"
#include "host/files_support.h"
#include "settings/options_store.h"
#include "view/fonts.h"

namespace nira {

inline std::vector<std::u16string> Lines(const Editor* editor) {
    std::vector<std::u16string> lines;
    for (uint32_t i = 0; i < editor->lineCount; ++i) {
        const LineRecord& line = editor->lines[i];
        lines.emplace_back(line.text != nullptr ? line.text : u"", line.length);
    }
    return lines;
}

// All text with one unit U+000A for each line end.
inline std::u16string Text(const Editor* editor) {
    std::u16string text;
    for (const std::u16string& line : Lines(editor)) text += line + u"\n";
    text.pop_back();
    return text;
}

// Fonts, codecs and Options from an empty registry, and a new document. Byte-order marks are off unless a
// test turns them on.
class DocumentTest : public ServicesTest {
  protected:
    DocumentTest() {
        InitFonts(nullptr);
        InitCodecs();
        LoadOptions();
        TheOptions().bomSave = 0;
        titleChanges = 0;
        TheEditorEvents() = {};
        TheEditorEvents().titleChanged = [] { ++titleChanges; };
        editor = EditorCreate();
    }
    ~DocumentTest() override {
        EXPECT_STREQ(EditorCheck(editor), nullptr);
        EditorDestroy(editor);
        FreeOptions();
        TheEditorEvents() = {};
        ShutdownFonts();
    }

    void Renew() {
        EXPECT_STREQ(EditorCheck(editor), nullptr);
        EditorDestroy(editor);
        editor = EditorCreate();
    }

    // Exactly one message since the last look, with this text; and none while a file was open.
    void ExpectMessage(const char16_t* text) {
        ASSERT_EQ(MessageLog().size(), 1u);
        EXPECT_EQ(MessageLog()[0].text, text);
        EXPECT_EQ(MessageLog()[0].caption, u"Error");
        EXPECT_EQ(MessageLog()[0].kind, MessageKind::kError);
        EXPECT_EQ(MessageLog()[0].openFiles, 0u) << "a box stood while a file was open";
        MessageLogReset();
    }

    static int TitleChanges() { return titleChanges; }

    TempFolder folder;
    Editor* editor;

  private:
    inline static int titleChanges = 0;
};

}  // namespace nira
