#include "engine/window_state.h"

namespace nira {

WindowState& TheWindowState() {
    static WindowState state;
    return state;
}

}  // namespace nira
