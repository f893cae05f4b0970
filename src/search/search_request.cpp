#include "search/search_request.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "app/services/notices.h"
#include "base/utf16.h"
#include "engine/window_state.h"
#include "platform/messages.h"
#include "resources/resource.h"
#include "search/find.h"
#include "search/search_state.h"

namespace nira {

namespace {

// The string table's text with the number in place of its "%d".
struct CountText {
    char16_t units[80];

    explicit CountText(uint32_t count) {
        const char16_t* format = LoadResString(IDS_OCCURRENCES_REPLACED);
        const char16_t* mark = Utf16Find(format, u'%');
        const auto number = static_cast<int>(std::min<uint32_t>(count, std::numeric_limits<int>::max()));
        size_t used = std::min(static_cast<size_t>(mark - format), std::size(units) - 1);
        std::copy_n(format, used, units);
        used += Utf16FromInt(units + used, std::size(units) - used, number);
        Utf16Copy(units + used, std::size(units) - used, mark + 2);
    }
};

}  // namespace

bool AcceptSearch(const SearchRequest& request) {
    if (Utf16Length(request.pattern) == 0) return false;
    if (request.replacement != nullptr) SetSearchReplacement(request.replacement);
    SetSearchPattern(request.pattern);
    SearchState& state = TheSearchState();
    state.matchCase = request.matchCase ? 1 : 0;
    state.wholeWord = request.wholeWord ? 1 : 0;
    state.up = request.up ? 1 : 0;
    return true;
}

void ReplaceAllAndTell(WindowHandle owner) {
    const uint32_t count = ReplaceAll(TheWindowState().currentEditor);
    ShowMessage(owner, CountText(count).units, LoadResString(IDS_INFORMATION), MessageKind::kInformation);
}

}  // namespace nira
