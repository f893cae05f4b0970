// What every measurement starts from: the product's code on the native platform, with a window of the
// reference screen's size and text measured in a stored proportional font.
#pragma once

#include <string>

#include "engine/editor.h"

namespace nira {

// Options at their defaults, a proportional font, a 480 x 640 window. Once a process.
void SetUpBench();

// Generated inputs in the folder named by the environment variable NIRA_BENCH_DIR, which bench/run fills.
std::u16string BenchFile(const char* name);

// A document loaded from such a file as UTF-8; ends the process when it cannot be.
Editor* LoadBench(const char* name);

}  // namespace nira
