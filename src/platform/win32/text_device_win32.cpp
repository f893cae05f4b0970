#include "platform/text_device.h"

#include <climits>

#include "base/utf16.h"
#include "platform/win32/casts.h"

namespace nira {

namespace {

// A line may be the whole document, and the system measures all that it is handed: fitting hands it a stretch
// that will do for a row and takes a longer one when it has not. Near the end of a stretch the answer is not
// taken, because the letters beyond it may change how the last ones are joined.
constexpr uint32_t kFirstStretch = 1024;
constexpr uint32_t kStretchMargin = 64;

bool FitStretch(HDC device, const char16_t* text, uint32_t length, int32_t maxWidth, uint32_t* count) {
    SIZE size = {};
    int fitting = 0;
    if (!GetTextExtentExPointW(device, ToWide(text), static_cast<int>(length), maxWidth, &fitting, nullptr,
                               &size)) {
        return false;
    }
    *count = static_cast<uint32_t>(fitting);
    return true;
}

}  // namespace

FontHandle FontCreate(const FontDescription& description) {
    LOGFONTW font = {};
    font.lfHeight = description.height;
    font.lfWeight = description.weight;
    font.lfItalic = description.italic;
    font.lfUnderline = description.underline;
    font.lfStrikeOut = description.strikeOut;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfQuality = description.clearType ? CLEARTYPE_QUALITY : DEFAULT_QUALITY;
    Utf16Copy(FromWide(font.lfFaceName), LF_FACESIZE, description.face);
    return FromHfont(CreateFontIndirectW(&font));
}

void FontDelete(FontHandle font) {
    if (font != nullptr) DeleteObject(ToHfont(font));
}

int32_t ScreenDotsPerInch(WindowHandle window) {
    const HDC device = GetDC(ToHwnd(window));
    if (device == nullptr) return USER_DEFAULT_SCREEN_DPI;
    const int dotsPerInch = GetDeviceCaps(device, LOGPIXELSY);
    ReleaseDC(ToHwnd(window), device);
    return dotsPerInch > 0 ? dotsPerInch : USER_DEFAULT_SCREEN_DPI;
}

DeviceHandle DeviceOpen(WindowHandle window) { return FromHdc(GetDC(ToHwnd(window))); }

void DeviceClose(WindowHandle window, DeviceHandle device) {
    if (device != nullptr) ReleaseDC(ToHwnd(window), ToHdc(device));
}

FontHandle DeviceSelectFont(DeviceHandle device, FontHandle font) {
    return FromHfont(static_cast<HFONT>(SelectObject(ToHdc(device), ToHfont(font))));
}

bool DeviceTextExtent(DeviceHandle device, const char16_t* text, uint32_t length, int32_t* width) {
    SIZE size = {};
    if (length > INT_MAX) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    if (length > 0 && !GetTextExtentExPointW(ToHdc(device), ToWide(text), static_cast<int>(length), 0,
                                             nullptr, nullptr, &size)) {
        return false;
    }
    *width = size.cx;
    return true;
}

bool DeviceFitText(DeviceHandle device, const char16_t* text, uint32_t length, int32_t maxWidth,
                   uint32_t* count) {
    if (length > INT_MAX) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    // The system refuses a negative width; nothing fits into it.
    if (length == 0 || maxWidth < 0) {
        *count = 0;
        return true;
    }
    for (uint32_t stretch = kFirstStretch; stretch < length; stretch *= 2) {
        if (!FitStretch(ToHdc(device), text, stretch, maxWidth, count)) return false;
        if (*count + kStretchMargin < stretch) return true;
    }
    return FitStretch(ToHdc(device), text, length, maxWidth, count);
}

bool DeviceFontMetrics(DeviceHandle device, int32_t* height, int32_t* externalLeading) {
    TEXTMETRICW metrics = {};
    if (!GetTextMetricsW(ToHdc(device), &metrics)) return false;
    *height = metrics.tmHeight;
    *externalLeading = metrics.tmExternalLeading;
    return true;
}

}  // namespace nira
