// What nira_probe and the library that it puts into nira.exe have to agree on.
#pragma once

#include <windows.h>

#include <cstddef>

constexpr const wchar_t* kWatcherBlock = L"nira.watcher";
constexpr const wchar_t* kWatcherQuestion = L"nira.watcher.menu";
constexpr size_t kWatcherUnits = 65536;
constexpr UINT kMenuOfPopup = 0x01E1;  // MN_GETHMENU
