// The last error code of the native build, with the numbers that Windows uses.
//
// The host's files, registry, fonts and memory leave their reason here just as the system's calls do;
// platform/messages.h reads it.
#pragma once

#include <cstdint>

namespace nira {

constexpr uint32_t kErrorFileNotFound = 2;
constexpr uint32_t kErrorPathNotFound = 3;
constexpr uint32_t kErrorAccessDenied = 5;
constexpr uint32_t kErrorInvalidHandle = 6;
constexpr uint32_t kErrorNotEnoughMemory = 8;
constexpr uint32_t kErrorBadChecksum = 23;
constexpr uint32_t kErrorSharingViolation = 32;
constexpr uint32_t kErrorFileExists = 80;
constexpr uint32_t kErrorDiskFull = 112;
constexpr uint32_t kErrorInsufficientBuffer = 122;
constexpr uint32_t kErrorInvalidName = 123;
constexpr uint32_t kErrorBadPathName = 161;
constexpr uint32_t kErrorAlreadyExists = 183;
constexpr uint32_t kErrorFileNameTooLong = 206;
constexpr uint32_t kErrorMoreData = 234;
constexpr uint32_t kErrorNoMoreItems = 259;
constexpr uint32_t kErrorIoDevice = 1117;

void HostSetLastError(uint32_t code);
uint32_t HostLastError();

}  // namespace nira
