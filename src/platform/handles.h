// Opaque handles to what the operating system owns.
//
// Portable code passes these around without knowing what stands behind them: on Windows they are the system's
// own handles, cast in platform/win32; in the native build they point to plain records of platform/host.
#pragma once

#include <cstdint>

namespace nira {

struct WindowTag;
struct FontTag;
struct HeapTag;
struct FileTag;
struct RegistryTag;
struct MenuTag;
struct DeviceTag;
struct LibraryTag;

using WindowHandle = WindowTag*;
using FontHandle = FontTag*;
using HeapHandle = HeapTag*;  // null means the process's local heap
using FileHandle = FileTag*;
using RegistryHandle = RegistryTag*;
using MenuHandle = MenuTag*;
using DeviceHandle = DeviceTag*;  // something text can be measured on
using LibraryHandle = LibraryTag*;

// A colour as the system keeps it: 0x00BBGGRR.
using ColorRef = uint32_t;

}  // namespace nira
