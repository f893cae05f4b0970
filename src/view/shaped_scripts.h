// Which characters the system draws by shaping whole runs.
#pragma once

namespace nira {

// True for units whose width depends on their neighbours: combining marks, the scripts that join or reorder
// their letters (Hebrew points, Arabic, Syriac, the Indic scripts, Thai, Lao, Tibetan, Burmese, Hangul
// letters, Khmer, Mongolian and their kin), format characters, variation selectors and the halves of
// surrogate pairs. The blocks are those of the Unicode character database; where a block holds both kinds it
// counts as shaped.
bool IsShapedUnit(char16_t unit);

}  // namespace nira
