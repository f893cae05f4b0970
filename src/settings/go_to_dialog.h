// Asking for a line number.
#pragma once

#include <cstddef>
#include <cstdint>

namespace nira {

// Runs the "Go to..." dialog over the main window. Returns the number that was entered, counted from 1 and
// possibly beyond the last line; 0 when the person cancelled, when no document is shown, or when the dialog
// cannot be made, which is reported.
uint32_t RunGoToDialog();

// A line number as people type it: blanks before it are skipped, and it ends at the first unit that is no
// digit. 0 when no digit stands there, as behind a sign. A larger number gives INT32_MAX, which is beyond
// every last line and the most that a dialog can result in.
uint32_t ReadLineNumber(const char16_t* text);

// "(1-LINES)", terminated and cut to `room` units.
void LineRangeText(char16_t* target, size_t room, int32_t lineCount);

}  // namespace nira
