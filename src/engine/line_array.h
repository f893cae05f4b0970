// The array of a document's line records: making and closing gaps in it.
//
// The block behind `lines` grows geometrically, whatever `lineCapacity` reports, and every record behind
// lineCount is zero. Records are moved with one block move, never one by one.
#pragma once

#include <cstdint>

#include "engine/editor.h"

namespace nira {

// The lineCapacity that this number of lines leads to.
uint32_t LineArrayCapacityFor(uint32_t count);

// Makes room so that inserting `count` records cannot fail. May unwind; changes nothing that shows.
void ReserveLines(Editor* editor, uint32_t count);

// Inserts `count` records in front of record `line` and counts them in the sums. ReserveLines has run. Behind
// the last line `records` may be the place itself.
void InsertLines(Editor* editor, uint32_t line, const LineRecord* records, uint32_t count);

// Removes records first..first+count-1, whose memory has been freed.
void RemoveLines(Editor* editor, uint32_t first, uint32_t count);

}  // namespace nira
