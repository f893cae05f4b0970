#include "platform/system_colors.h"

namespace nira {

// Four different colours, so that a test sees one taken for another.
ColorRef SystemColor(SystemColorIndex index) {
    switch (index) {
        case SystemColorIndex::kWindow:
            return 0x00FFFFFF;
        case SystemColorIndex::kWindowText:
            return 0x00000000;
        case SystemColorIndex::kHighlight:
            return 0x00D77800;
        case SystemColorIndex::kHighlightText:
            return 0x00FEFEFE;
    }
    return 0;
}

}  // namespace nira
