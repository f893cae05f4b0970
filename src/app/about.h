// The About box.
#pragma once

namespace nira {

// Shows it and waits until it is closed.
void ShowAbout();

}  // namespace nira
