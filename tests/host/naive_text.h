// The plainest text that can be thought of, to compare documents with: a list of strings, a list of
// bookmarks, and widths and rows asked of the measuring device, with no sums, caches or reserves.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/editor.h"
#include "platform/text_device.h"

namespace nira {

struct NaiveLine {
    std::u16string text;
    int32_t width = 0;
    std::vector<uint32_t> breaks;
};

class NaiveText {
  public:
    NaiveText(WindowHandle window, FontHandle font);
    ~NaiveText();
    NaiveText(const NaiveText&) = delete;
    NaiveText& operator=(const NaiveText&) = delete;

    // The edits, by the rules of TextInsert, TextDelete and TextDeleteCount. Each lays out the lines that it
    // touches, with the limit and tab size of the moment.
    int32_t Insert(uint32_t line, uint32_t column, std::u16string_view text);
    void Delete(uint32_t line1, uint32_t column1, uint32_t line2, uint32_t column2);
    int32_t DeleteCount(uint32_t line, uint32_t column, uint32_t count);
    std::u16string Copy(std::u16string_view lineEnd, uint32_t line1, uint32_t column1, uint32_t line2,
                        uint32_t column2) const;
    void Reset();
    void LayOutAll();

    uint32_t Units() const;
    uint32_t RowOfLine(uint32_t line) const;

    // What of `editor` differs from this, in plain words; empty when nothing does.
    std::string Difference(const Editor* editor) const;

    std::vector<NaiveLine> lines;
    int32_t bookmarks[kBookmarks] = {};
    int32_t limit = 3000;  // pixels of a row
    int32_t tabSize = 8;   // -1: as the glyph

  private:
    int32_t Extent(std::u16string_view text) const;
    int32_t Width(std::u16string_view text) const;
    uint32_t Fit(std::u16string_view text) const;
    void LayOut(uint32_t line);

    WindowHandle window_;
    DeviceHandle device_;
};

}  // namespace nira
