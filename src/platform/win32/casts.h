// The one place where opaque handles and UTF-16 text become the system's own types and back.
#pragma once

#include <windows.h>

#include "platform/handles.h"

namespace nira {

inline HWND ToHwnd(WindowHandle window) { return reinterpret_cast<HWND>(window); }
inline WindowHandle FromHwnd(HWND window) { return reinterpret_cast<WindowHandle>(window); }
inline HMENU ToHmenu(MenuHandle menu) { return reinterpret_cast<HMENU>(menu); }
inline MenuHandle FromHmenu(HMENU menu) { return reinterpret_cast<MenuHandle>(menu); }
inline HFONT ToHfont(FontHandle font) { return reinterpret_cast<HFONT>(font); }
inline FontHandle FromHfont(HFONT font) { return reinterpret_cast<FontHandle>(font); }
inline HDC ToHdc(DeviceHandle device) { return reinterpret_cast<HDC>(device); }
inline DeviceHandle FromHdc(HDC device) { return reinterpret_cast<DeviceHandle>(device); }

// The same units: wchar_t is 16 bits wide on Windows.
inline const wchar_t* ToWide(const char16_t* text) { return reinterpret_cast<const wchar_t*>(text); }
inline wchar_t* ToWide(char16_t* text) { return reinterpret_cast<wchar_t*>(text); }
inline const char16_t* FromWide(const wchar_t* text) { return reinterpret_cast<const char16_t*>(text); }
inline char16_t* FromWide(wchar_t* text) { return reinterpret_cast<char16_t*>(text); }

}  // namespace nira
