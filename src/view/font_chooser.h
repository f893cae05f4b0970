// Asking for the font of the text: a dialog that shows the faces of the screen, their sizes, the styles, and
// what the choice looks like.
#pragma once

#include "platform/handles.h"

namespace nira {

// Runs "Choose font" over `owner`, beginning with the font description `current` (view/fonts.h), which is not
// changed. Returns the description chosen, on the local heap and owned by the caller; null when the person
// cancelled or the dialog cannot be made, which is reported.
char16_t* ChooseFontSpec(WindowHandle owner, const char16_t* current);

}  // namespace nira
