// The two scroll bars of the editor window: the horizontal one counts pixels, the vertical one display rows.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// Positions alone, or positions with ranges from 0 to the maxima.
void SetScrollPositions(int32_t x, int32_t row);
void SetScrollRanges(int32_t x, int32_t row, int32_t xMax, int32_t rowMax);

// The size of the thumbs.
void SetVerticalPage(int32_t rows);
void SetHorizontalPage(int32_t pixels);

// Ranges and positions from the document and the client area. A text narrower than the window is scrolled
// back.
void UpdateScrollBars(Editor* editor);

}  // namespace nira
