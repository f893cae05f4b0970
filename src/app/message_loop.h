// The one loop that runs while the program does.
#pragma once

namespace nira {

// Until the quit message, whose code is the result.
int RunMessageLoop();

}  // namespace nira
