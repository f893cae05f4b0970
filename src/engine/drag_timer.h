// The timer that goes on scrolling while a selection is dragged at the edge of the window.
#pragma once

#include <cstdint>

namespace nira {

constexpr uint32_t kDragTimer = 32;
constexpr uint32_t kDragTimerMilliseconds = 5;

// Each does nothing when the timer is in that state already.
void StartDragTimer();
void StopDragTimer();

}  // namespace nira
