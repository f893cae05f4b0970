#include "app/app_state.h"

namespace nira {

AppState& TheAppState() {
    static AppState state;
    return state;
}

}  // namespace nira
