#include "codecs/catalog.h"

#include "codecs/system.h"
#include "codecs/units.h"

namespace codecs {

namespace {

constexpr Mark kMarks[] = {
    {0, {}},                        // kAuto: what a file has is judged
    {3, {0xEF, 0xBB, 0xBF}},        // kUtf8
    {2, {0xFF, 0xFE}},              // kUtf16Le
    {2, {0xFE, 0xFF}},              // kUtf16Be
    {4, {0xFF, 0xFE, 0x00, 0x00}},  // kUtf32Le
    {4, {0x00, 0x00, 0xFE, 0xFF}},  // kUtf32Be
    {0, {}},                        // kPage
};

}  // namespace

const Entry* FindEntry(const char16_t* name) {
    for (const Entry& entry : kEntries) {
        if (CompareNames(entry.name, name) == 0) return &entry;
    }
    return nullptr;
}

const Entry* EntryOfForm(Form form, bool mark) {
    for (const Entry& entry : kEntries) {
        if (entry.form == form && entry.mark == mark) return &entry;
    }
    return nullptr;
}

const Entry* EntryOfPage(uint32_t page) {
    for (const Entry& entry : kEntries) {
        if (entry.form == Form::kPage && PageOfEntry(entry) == page) return &entry;
    }
    return nullptr;
}

uint32_t PageOfEntry(const Entry& entry) {
    if (entry.page != 0 && PageIsValid(entry.page)) return entry.page;
    return entry.otherPage != 0 && PageIsValid(entry.otherPage) ? entry.otherPage : 0;
}

bool EntryIsAvailable(const Entry& entry) { return entry.form != Form::kPage || PageOfEntry(entry) != 0; }

const Mark& MarkOfForm(Form form) { return kMarks[static_cast<uint32_t>(form)]; }

}  // namespace codecs
