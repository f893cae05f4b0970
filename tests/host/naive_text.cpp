#include "host/naive_text.h"

#include <algorithm>
#include <iterator>

namespace nira {

namespace {

// The pieces between the breaks of a text, and how many of the breaks were CR LF.
std::vector<std::u16string> Split(std::u16string_view text, int32_t* pairs) {
    std::vector<std::u16string> pieces(1);
    *pairs = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            ++*pairs;
            ++i;
            pieces.emplace_back();
        } else if (text[i] == u'\r' || text[i] == u'\n') {
            pieces.emplace_back();
        } else {
            pieces.back() += text[i];
        }
    }
    return pieces;
}

}  // namespace

NaiveText::NaiveText(WindowHandle window, FontHandle font)
    : lines(1), window_(window), device_(DeviceOpen(window)) {
    DeviceSelectFont(device_, font);
}

NaiveText::~NaiveText() { DeviceClose(window_, device_); }

int32_t NaiveText::Insert(uint32_t line, uint32_t column, std::u16string_view text) {
    if (text.empty()) return 0;
    int32_t pairs = 0;
    const std::vector<std::u16string> pieces = Split(text, &pairs);
    const std::u16string head = lines[line].text.substr(0, column);
    const std::u16string tail = lines[line].text.substr(column);
    const auto breaks = static_cast<uint32_t>(pieces.size()) - 1;
    if (breaks == 0) {
        lines[line].text = head + pieces[0] + tail;
        LayOut(line);
        return 0;
    }
    std::vector<NaiveLine> added(breaks);
    for (uint32_t i = 0; i < breaks; ++i) added[i].text = pieces[i + 1];
    const size_t first = text.find_first_of(u"\r\n");
    if (text[first] == u'\n' && first + 1 < text.size() && text[first + 1] == u'\n') {
        added.erase(added.begin());  // the line between the two LFs
        added.emplace_back();
    }
    added.back().text += tail;
    lines[line].text = head + pieces[0];
    lines.insert(lines.begin() + line + 1, added.begin(), added.end());
    for (uint32_t i = line; i <= line + breaks; ++i) LayOut(i);
    for (int32_t& bookmark : bookmarks) {
        if (bookmark > static_cast<int32_t>(line)) bookmark += static_cast<int32_t>(breaks);
    }
    return pairs;
}

void NaiveText::Delete(uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2) {
    if (line1 == line2 && column1 == column2) return;
    const std::u16string tail = lines[line2].text.substr(column2);
    lines[line1].text = lines[line1].text.substr(0, column1) + tail;
    lines.erase(lines.begin() + line1 + 1, lines.begin() + line2 + 1);
    LayOut(line1);
    if (line1 == line2) return;
    if (line1 + 1 < lines.size()) LayOut(line1 + 1);
    for (int32_t& bookmark : bookmarks) {
        const int32_t marked = bookmark - 1;
        if (bookmark == 0 || marked < static_cast<int32_t>(line1)) continue;
        if (marked < static_cast<int32_t>(line2)) {
            bookmark = 0;
        } else {
            bookmark -= static_cast<int32_t>(line2 - line1);
        }
    }
}

int32_t NaiveText::DeleteCount(uint32_t line, uint32_t column, uint32_t count) {
    uint32_t last = line;
    uint32_t end = column;
    for (; count > 0; --count) {
        if (end < lines[last].text.size()) {
            ++end;
        } else if (last + 1 < lines.size()) {
            ++last;
            end = 0;
        } else {
            break;
        }
    }
    Delete(line, column, last, end);
    return static_cast<int32_t>(last - line);
}

std::u16string NaiveText::Copy(std::u16string_view lineEnd, uint32_t line1, uint32_t column1, uint32_t line2,
                               uint32_t column2) const {
    if (line1 > line2 || (line1 == line2 && column1 > column2)) {
        return Copy(lineEnd, line2, column2, line1, column1);
    }
    if (line1 == line2) return lines[line1].text.substr(column1, column2 - column1);
    std::u16string text = lines[line1].text.substr(column1);
    for (uint32_t i = line1 + 1; i < line2; ++i) text.append(lineEnd).append(lines[i].text);
    return text.append(lineEnd).append(lines[line2].text.substr(0, column2));
}

void NaiveText::Reset() {
    lines.assign(1, NaiveLine());
    std::fill(std::begin(bookmarks), std::end(bookmarks), 0);
}

void NaiveText::LayOutAll() {
    for (uint32_t i = 0; i < lines.size(); ++i) LayOut(i);
}

uint32_t NaiveText::Units() const {
    size_t units = 0;
    for (const NaiveLine& line : lines) units += line.text.size();
    return static_cast<uint32_t>(units);
}

uint32_t NaiveText::RowOfLine(uint32_t line) const {
    size_t row = 0;
    for (uint32_t i = 0; i < line; ++i) row += 1 + lines[i].breaks.size();
    return static_cast<uint32_t>(row);
}

int32_t NaiveText::Extent(std::u16string_view text) const {
    int32_t width = 0;
    DeviceTextExtent(device_, text.data(), static_cast<uint32_t>(text.size()), &width);
    return width;
}

int32_t NaiveText::Width(std::u16string_view text) const {
    const int32_t width = Extent(text);
    if (tabSize == -1) return width;
    const auto tabs = static_cast<int32_t>(std::count(text.begin(), text.end(), u'\t'));
    return width + tabs * (Extent(u" ") * tabSize - Extent(u"\t"));
}

uint32_t NaiveText::Fit(std::u16string_view text) const {
    uint32_t count = 0;
    DeviceFitText(device_, text.data(), static_cast<uint32_t>(text.size()), limit, &count);
    if (tabSize == -1 || text.substr(0, count).find(u'\t') == text.npos) return count;
    int32_t width = Width(text.substr(0, count));
    while (count > 0 && width > limit) {
        --count;
        width -= text[count] == u'\t' ? Extent(u" ") * tabSize : Extent(text.substr(count, 1));
    }
    return count;
}

void NaiveText::LayOut(uint32_t line) {
    NaiveLine& laid = lines[line];
    laid.width = laid.text.empty() ? 0 : Width(laid.text);
    laid.breaks.clear();
    if (laid.width <= limit) return;
    const std::u16string_view text = laid.text;
    uint32_t column = 0;
    for (;;) {
        column += std::max<uint32_t>(1, Fit(text.substr(column)));
        if (column >= text.size()) return;
        laid.breaks.push_back(column);
    }
}

std::string NaiveText::Difference(const Editor* editor) const {
    if (editor->lineCount != lines.size()) return "the number of lines";
    if (!std::equal(std::begin(bookmarks), std::end(bookmarks), editor->bookmarks)) return "the bookmarks";
    for (uint32_t i = 0; i < lines.size(); ++i) {
        const LineRecord& record = editor->lines[i];
        const NaiveLine& line = lines[i];
        const std::string where = " of line " + std::to_string(i);
        if (std::u16string_view(record.length > 0 ? record.text : u"", record.length) != line.text) {
            return "the text" + where;
        }
        if (record.width != line.width) return "the width" + where;
        if (ExtraRows(record) != line.breaks.size()) return "the number of rows" + where;
        if (!line.breaks.empty() && !std::equal(line.breaks.begin(), line.breaks.end(), record.breaks + 1)) {
            return "the breaks" + where;
        }
    }
    return {};
}

}  // namespace nira
