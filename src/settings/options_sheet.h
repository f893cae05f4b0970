// The Options sheet: a window of four pages that covers the main window, with tabs along its bottom edge and
// a bar with OK and Cancel. What the pages decide is in settings/options_pages.h.
#pragma once

namespace nira {

// Runs the sheet over the main window. Greater than 0 when it was confirmed: the Options have changed, and
// the person has been told if they could not be stored. 0 when it was cancelled, could not be made, or is
// open already: nothing has changed then.
int RunOptionsSheet();

}  // namespace nira
