// What both fuzz targets start from, and the property they check.
#pragma once

#include <string>

#include "engine/editor.h"

namespace nira {

// Options at their defaults with an undo limit that is never reached, a proportional font, a small window.
// Once a process; index chunks are tiny, so that few lines cross their boundaries.
void SetUpFuzz();

// Ends the process with the reason when the document breaks an invariant.
void MustHold(Editor* editor);

// The whole text with LF between lines.
std::u16string WholeText(const Editor* editor);

// Ends the process with `what` when the condition is false.
void Must(bool condition, const char* what);

}  // namespace nira
