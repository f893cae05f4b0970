#include "platform/host/last_error.h"

namespace nira {

namespace {
thread_local uint32_t lastError = 0;
}  // namespace

void HostSetLastError(uint32_t code) { lastError = code; }

uint32_t HostLastError() { return lastError; }

}  // namespace nira
