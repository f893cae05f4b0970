// The encodings that this library has, by the names that people choose them by.
//
// A name is a promise: documents' settings and the registry refer to it, so a name is never changed.
#pragma once

#include <cstdint>
#include <iterator>

namespace codecs {

// How bytes and text correspond. The forms of Unicode are exact: every stream of bytes comes back as it was.
enum class Form : uint8_t { kAuto, kUtf8, kUtf16Le, kUtf16Be, kUtf32Le, kUtf32Be, kPage };

struct Entry {
    const char16_t* name;
    Form form;
    bool mark;           // files begin with a byte-order mark
    uint16_t page;       // kPage: the system's code page
    uint16_t otherPage;  // the one to take where the system has not that; 0 for none
};

inline constexpr Entry kEntries[] = {
    {u"Auto", Form::kAuto, false, 0, 0},
    {u"UTF-8 exact", Form::kUtf8, false, 0, 0},
    {u"UTF-8 exact with mark", Form::kUtf8, true, 0, 0},
    {u"UTF-16 LE exact", Form::kUtf16Le, false, 0, 0},
    {u"UTF-16 LE exact with mark", Form::kUtf16Le, true, 0, 0},
    {u"UTF-16 BE exact", Form::kUtf16Be, false, 0, 0},
    {u"UTF-16 BE exact with mark", Form::kUtf16Be, true, 0, 0},
    {u"UTF-32 LE exact", Form::kUtf32Le, false, 0, 0},
    {u"UTF-32 LE exact with mark", Form::kUtf32Le, true, 0, 0},
    {u"UTF-32 BE exact", Form::kUtf32Be, false, 0, 0},
    {u"UTF-32 BE exact with mark", Form::kUtf32Be, true, 0, 0},
    {u"Windows-1250", Form::kPage, false, 1250, 0},
    {u"Windows-1251", Form::kPage, false, 1251, 0},
    {u"Windows-1252", Form::kPage, false, 1252, 0},
    {u"Windows-1253", Form::kPage, false, 1253, 0},
    {u"Windows-1254", Form::kPage, false, 1254, 0},
    {u"Windows-1255", Form::kPage, false, 1255, 0},
    {u"Windows-1256", Form::kPage, false, 1256, 0},
    {u"Windows-1257", Form::kPage, false, 1257, 0},
    {u"Windows-1258", Form::kPage, false, 1258, 0},
    {u"Windows-874", Form::kPage, false, 874, 0},
    {u"ISO-8859-1", Form::kPage, false, 28591, 0},
    {u"ISO-8859-2", Form::kPage, false, 28592, 0},
    {u"ISO-8859-3", Form::kPage, false, 28593, 0},
    {u"ISO-8859-4", Form::kPage, false, 28594, 0},
    {u"ISO-8859-5", Form::kPage, false, 28595, 0},
    {u"ISO-8859-6", Form::kPage, false, 28596, 0},
    {u"ISO-8859-7", Form::kPage, false, 28597, 0},
    {u"ISO-8859-8", Form::kPage, false, 28598, 0},
    {u"ISO-8859-9", Form::kPage, false, 28599, 0},
    {u"ISO-8859-10", Form::kPage, false, 28600, 0},
    {u"ISO-8859-13", Form::kPage, false, 28603, 0},
    {u"ISO-8859-14", Form::kPage, false, 28604, 0},
    {u"ISO-8859-15", Form::kPage, false, 28605, 0},
    {u"ISO-8859-16", Form::kPage, false, 28606, 0},
    {u"KOI8-R", Form::kPage, false, 20866, 0},
    {u"KOI8-U", Form::kPage, false, 21866, 0},
    {u"Macintosh", Form::kPage, false, 10000, 0},
    {u"CP437", Form::kPage, false, 437, 0},
    {u"CP737", Form::kPage, false, 737, 0},
    {u"CP775", Form::kPage, false, 775, 0},
    {u"CP850", Form::kPage, false, 850, 0},
    {u"CP852", Form::kPage, false, 852, 0},
    {u"CP855", Form::kPage, false, 855, 0},
    {u"CP857", Form::kPage, false, 857, 0},
    {u"CP858", Form::kPage, false, 858, 0},
    {u"CP860", Form::kPage, false, 860, 0},
    {u"CP861", Form::kPage, false, 861, 0},
    {u"CP862", Form::kPage, false, 862, 0},
    {u"CP863", Form::kPage, false, 863, 0},
    {u"CP864", Form::kPage, false, 864, 0},
    {u"CP865", Form::kPage, false, 865, 0},
    {u"CP866", Form::kPage, false, 866, 0},
    {u"CP869", Form::kPage, false, 869, 0},
    {u"Shift_JIS", Form::kPage, false, 932, 0},
    {u"EUC-JP", Form::kPage, false, 51932, 20932},
    {u"GBK", Form::kPage, false, 936, 0},
    {u"GB18030", Form::kPage, false, 54936, 0},
    {u"Big5", Form::kPage, false, 950, 0},
    {u"Windows-949", Form::kPage, false, 949, 0},
    {u"EUC-KR", Form::kPage, false, 51949, 949},
    {u"Johab", Form::kPage, false, 1361, 0},
};
inline constexpr uint32_t kEntryCount = static_cast<uint32_t>(std::size(kEntries));

// The entry with exactly this name; null when there is none.
const Entry* FindEntry(const char16_t* name);

// The entry of a form of Unicode, with or without a mark.
const Entry* EntryOfForm(Form form, bool mark);

// The entry of a code page; null when the page has none here.
const Entry* EntryOfPage(uint32_t page);

// The code page of a kPage entry that the system has; 0 when it has none.
uint32_t PageOfEntry(const Entry& entry);

// Whether the encoding can be used on this system.
bool EntryIsAvailable(const Entry& entry);

// A mark's bytes and their number: at most 4.
struct Mark {
    uint32_t size;
    uint8_t bytes[4];
};

// The byte-order mark of a form; size 0 for the forms that have none.
const Mark& MarkOfForm(Form form);

}  // namespace codecs
