// Replacing many places of one line at the cost of one pass over it.
//
// Places are replaced from left to right. While that goes on the line's block holds the new text at its
// start, then a gap, then the rest that has not been passed yet; a replacement thus moves what lies between
// it and the one before, never all that is behind. Until EndLineRewrite the record is not valid for anyone
// else. Each replacement is recorded for undo as a deletion and an insertion of their own.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

struct LineRewrite {
    Editor* editor;
    uint32_t line;
    uint32_t done;  // units of the new text: the column that has been reached
    uint32_t rest;  // the rest is units rest..end-1 of the block
    uint32_t end;
    uint32_t room;  // units that the block holds, the terminator not counted
};

// Begins at a column of a line that has text.
void BeginLineRewrite(LineRewrite* rewrite, Editor* editor, uint32_t line, uint32_t column);

// Keeps the first `kept` units of the rest and puts `count` units of `text`, which hold no line break, in
// place of the next `removed`, of which there is at least one. False when memory ran out: nothing has changed
// then.
bool RewriteInLine(LineRewrite* rewrite, uint32_t kept, uint32_t removed, const char16_t* text,
                   uint32_t count);

// Closes the gap and lays the line out again. The application has heard nothing but that the document is
// modified; that the undo state changed is the caller's to tell. False when memory ran out for the layout:
// the line then is one row.
bool EndLineRewrite(LineRewrite* rewrite);

}  // namespace nira
