// A document in a window with a search over it.
#pragma once

#include <string>

#include "app/services/notices.h"
#include "host/view_fixture.h"
#include "platform/host/faults.h"
#include "platform/host/message_log.h"
#include "platform/host/shell_log.h"
#include "search/find.h"
#include "search/search_state.h"
#include "view/undo_apply.h"

namespace nira {

class SearchTest : public ViewTest {
  protected:
    using Place = std::pair<int32_t, int32_t>;

    ~SearchTest() override {
        FreeSearchState();
        TheOptions().wordSeparators = nullptr;
    }

    static void Pattern(const char16_t* pattern, const char16_t* replacement = u"") {
        SetSearchPattern(pattern);
        SetSearchReplacement(replacement);
        TheSearchState().matchCase = 1;
    }
    void Separators(const std::u16string& separators) {
        separators_ = separators;
        TheOptions().wordSeparators = separators_.data();
    }
    // The operations with a look at the document behind each.
    bool Next() const {
        const bool found = FindNext(editor_);
        Check();
        return found;
    }
    bool Replace() const {
        const bool found = ReplaceAndFind(editor_);
        Check();
        return found;
    }
    uint32_t All() const {
        const uint32_t count = ReplaceAll(editor_);
        Check();
        return count;
    }
    std::u16string Selected() const {
        uint32_t units = 0;
        char16_t* copy = SelectionCopy(editor_, &units);
        std::u16string text(copy != nullptr ? copy : u"", units);
        MemFree(nullptr, copy);
        return text;
    }
    // Another, empty document.
    void Renew() {
        EditorDestroy(editor_);
        editor_ = EditorCreate();
        TheWindowState().currentEditor = editor_;
    }

  private:
    std::u16string separators_;
};

}  // namespace nira
