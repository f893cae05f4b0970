#include "shell/bar_images.h"

#include "shell/subclass.h"

namespace shell {

namespace {

constexpr int kPlainDensity = 96;
constexpr int kGrowBy = 16;
constexpr int kPixelCount = kBarImageSize * kBarImageSize;

// The blue, green, red and opacity of one pixel, as a bitmap of 32 bits keeps them.
struct Pixel {
    BYTE blue;
    BYTE green;
    BYTE red;
    BYTE opacity;
};

// A square bitmap and its pixels, rows from the top.
struct Canvas {
    HBITMAP bitmap;
    Pixel* pixels;
};

Canvas OpenCanvas(int size) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = size;
    info.bmiHeader.biHeight = -size;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    return {bitmap, static_cast<Pixel*>(pixels)};
}

bool DrawOn(const Canvas& canvas, DWORD ground, HIMAGELIST list, int index) {
    const HDC device = CreateCompatibleDC(nullptr);
    if (!device || !canvas.bitmap) {
        DeleteDC(device);
        return false;
    }
    const HGDIOBJ before = SelectObject(device, canvas.bitmap);
    PatBlt(device, 0, 0, kBarImageSize, kBarImageSize, ground);
    const bool drawn = ImageList_Draw(list, index, device, 0, 0, ILD_TRANSPARENT) != FALSE;
    GdiFlush();
    SelectObject(device, before);
    DeleteDC(device);
    return drawn;
}

BYTE Undimmed(BYTE onBlack, BYTE opacity) {
    const int full = onBlack * 255 / opacity;
    return static_cast<BYTE>(full < 255 ? full : 255);
}

// A list tells neither its mask nor its opacities. How much lighter a pixel is on white than on black does.
Pixel Unblended(Pixel onBlack, Pixel onWhite) {
    const int through = onWhite.green - onBlack.green;
    const auto opacity = static_cast<BYTE>(through > 0 ? 255 - through : 255);
    if (opacity == 0) {
        return {};
    }
    return {Undimmed(onBlack.blue, opacity), Undimmed(onBlack.green, opacity), Undimmed(onBlack.red, opacity),
            opacity};
}

bool ReadImage(HIMAGELIST list, int index, Pixel (&image)[kPixelCount]) {
    const Canvas black = OpenCanvas(kBarImageSize);
    const Canvas white = OpenCanvas(kBarImageSize);
    const bool read = DrawOn(black, BLACKNESS, list, index) && DrawOn(white, WHITENESS, list, index);
    for (int i = 0; read && i < kPixelCount; ++i) {
        image[i] = Unblended(black.pixels[i], white.pixels[i]);
    }
    DeleteObject(black.bitmap);
    DeleteObject(white.bitmap);
    return read;
}

// One bit per pixel, set where nothing is to be drawn: for drawing that knows no opacities. Rows of this
// width end at a whole word.
HBITMAP CreateMask(const Pixel* pixels, int size) {
    const int count = size * size;
    auto* bits = static_cast<BYTE*>(AllocRecord(static_cast<size_t>(count) / 8));
    if (!bits) {
        return nullptr;
    }
    for (int i = 0; i < count; ++i) {
        if (pixels[i].opacity < 128) {
            bits[i / 8] = static_cast<BYTE>(bits[i / 8] | (0x80 >> i % 8));
        }
    }
    const HBITMAP mask = CreateBitmap(size, size, 1, 1, bits);
    FreeRecord(bits);
    return mask;
}

bool AddOne(HIMAGELIST list, int factor, HIMAGELIST source, int index) {
    Pixel image[kPixelCount];
    const int size = kBarImageSize * factor;
    const Canvas large = OpenCanvas(size);
    bool added = large.bitmap && ReadImage(source, index, image);
    for (int i = 0; added && i < size * size; ++i) {
        large.pixels[i] = image[i / size / factor * kBarImageSize + i % size / factor];
    }
    const HBITMAP mask = added ? CreateMask(large.pixels, size) : nullptr;
    added = mask && ImageList_Add(list, large.bitmap, mask) >= 0;
    DeleteObject(mask);
    DeleteObject(large.bitmap);
    return added;
}

// Never shown: a tool bar alone knows the system's own images and how to make a bitmap's background
// transparent.
HWND CreateReader() {
    INITCOMMONCONTROLSEX classes = {sizeof(classes), ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    const HWND reader = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                        GetModuleHandleW(nullptr), nullptr);
    if (reader) {
        SendMessageW(reader, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
        SendMessageW(reader, TB_SETBITMAPSIZE, 0, MAKELPARAM(kBarImageSize, kBarImageSize));
    }
    return reader;
}

}  // namespace

int BarImageFactor(int dotsPerInch) {
    const int factor = (dotsPerInch + kPlainDensity / 2) / kPlainDensity;
    return factor > 1 ? factor : 1;
}

int ScreenImageFactor() {
    const HDC screen = GetDC(nullptr);
    const int density = screen ? GetDeviceCaps(screen, LOGPIXELSX) : kPlainDensity;
    if (screen) {
        ReleaseDC(nullptr, screen);
    }
    return BarImageFactor(density);
}

HIMAGELIST CreateBarImages(int factor) {
    const int size = kBarImageSize * factor;
    return ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 0, kGrowBy);
}

int AddMagnified(HIMAGELIST list, int factor, HINSTANCE instance, int bitmapId, int count) {
    const HWND reader = CreateReader();
    if (!reader) {
        return -1;
    }
    TBADDBITMAP bitmap = {instance, static_cast<UINT_PTR>(bitmapId)};
    const int base = static_cast<int>(
        SendMessageW(reader, TB_ADDBITMAP, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(&bitmap)));
    const auto source = reinterpret_cast<HIMAGELIST>(SendMessageW(reader, TB_GETIMAGELIST, 0, 0));
    const int first = ImageList_GetImageCount(list);
    bool added = base >= 0 && source;
    for (int i = 0; added && i < count; ++i) {
        added = AddOne(list, factor, source, base + i);
    }
    DestroyWindow(reader);
    return added ? first : -1;
}

}  // namespace shell
