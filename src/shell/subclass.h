#pragma once

#include <windows.h>

#include <commctrl.h>

// A record tied to a window, together with a procedure that sees the window's messages first.
namespace shell {

// Gives `window` the record `name` (a constant that outlives it) and puts `procedure` in front of its own,
// with the record as reference data. The record stays the caller's. False with the last error set on failure;
// nothing has changed then.
bool AttachRecord(HWND window, SUBCLASSPROC procedure, const wchar_t* name, void* record);

// The record `name` of a window; null when it has none or is no window.
void* FindRecord(HWND window, const wchar_t* name);

// Undoes AttachRecord, at WM_NCDESTROY at the latest. Returns the record, for freeing.
void* DetachRecord(HWND window, SUBCLASSPROC procedure, const wchar_t* name);

// A zeroed block for a record, or null with ERROR_NOT_ENOUGH_MEMORY. Freed with FreeRecord; null is allowed
// there.
void* AllocRecord(size_t size);
void FreeRecord(void* record);

}  // namespace shell
