#include "shell/bar_images.h"

#include "shell/density.h"
#include "shell/subclass.h"

namespace shell {

namespace {

constexpr int kGrowBy = 16;
constexpr int kTouchSize = 24;  // of a button, both ways, at the plain density
// What a tool bar adds around an image.
constexpr int kAround = 8;
constexpr int kAboveAndBelow = 6;
constexpr int kPixelCount = kBarPictureSize * kBarPictureSize;

// The blue, green, red and opacity of one pixel, as a bitmap of 32 bits keeps them.
struct Pixel {
    BYTE blue;
    BYTE green;
    BYTE red;
    BYTE opacity;
};

// A bitmap and its pixels, rows from the top, none set.
struct Canvas {
    HBITMAP bitmap;
    Pixel* pixels;
};

Canvas OpenCanvas(int width, int height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
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
    PatBlt(device, 0, 0, kBarPictureSize, kBarPictureSize, ground);
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

bool ReadPicture(HIMAGELIST list, int index, Pixel (&picture)[kPixelCount]) {
    const Canvas black = OpenCanvas(kBarPictureSize, kBarPictureSize);
    const Canvas white = OpenCanvas(kBarPictureSize, kBarPictureSize);
    const bool read = DrawOn(black, BLACKNESS, list, index) && DrawOn(white, WHITENESS, list, index);
    for (int i = 0; read && i < kPixelCount; ++i) {
        picture[i] = Unblended(black.pixels[i], white.pixels[i]);
    }
    DeleteObject(black.bitmap);
    DeleteObject(white.bitmap);
    return read;
}

// Repeats the pixels of a picture in the middle of an image.
void Magnify(const Pixel (&picture)[kPixelCount], const BarImageFormat& format, Pixel* image) {
    const int size = kBarPictureSize * format.factor;
    const int left = (format.width - size) / 2;
    const int top = (format.height - size) / 2;
    for (int i = 0; i < size * size; ++i) {
        const int x = i % size;
        const int y = i / size;
        image[(top + y) * format.width + left + x] =
            picture[y / format.factor * kBarPictureSize + x / format.factor];
    }
}

// One bit per pixel, set where nothing is to be drawn: for drawing that knows no opacities.
HBITMAP CreateMask(const Pixel* image, const BarImageFormat& format) {
    const int rowBytes = (format.width + 15) / 16 * 2;
    auto* bits = static_cast<BYTE*>(AllocRecord(static_cast<size_t>(rowBytes * format.height)));
    if (!bits) {
        return nullptr;
    }
    for (int i = 0; i < format.width * format.height; ++i) {
        const int x = i % format.width;
        BYTE& eight = bits[i / format.width * rowBytes + x / 8];
        if (image[i].opacity < 128) {
            eight = static_cast<BYTE>(eight | (0x80 >> x % 8));
        }
    }
    const HBITMAP mask = CreateBitmap(format.width, format.height, 1, 1, bits);
    FreeRecord(bits);
    return mask;
}

bool AddOne(HIMAGELIST list, const BarImageFormat& format, HIMAGELIST source, int index) {
    Pixel picture[kPixelCount];
    const Canvas image = OpenCanvas(format.width, format.height);
    bool added = image.bitmap && ReadPicture(source, index, picture);
    if (added) {
        Magnify(picture, format, image.pixels);
    }
    const HBITMAP mask = added ? CreateMask(image.pixels, format) : nullptr;
    added = mask && ImageList_Add(list, image.bitmap, mask) >= 0;
    DeleteObject(mask);
    DeleteObject(image.bitmap);
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
        SendMessageW(reader, TB_SETBITMAPSIZE, 0, MAKELPARAM(kBarPictureSize, kBarPictureSize));
    }
    return reader;
}

int Larger(int one, int other) { return one > other ? one : other; }

}  // namespace

BarImageFormat BarImagesFor(int dotsPerInch) {
    const int nearest = (dotsPerInch + kPlainDensity / 2) / kPlainDensity;
    const int factor = nearest > 1 ? nearest : 1;
    const int picture = kBarPictureSize * factor;
    const int button = MulDiv(kTouchSize, dotsPerInch, kPlainDensity);
    return {factor, Larger(picture, button - kAround), Larger(picture, button - kAboveAndBelow)};
}

HIMAGELIST CreateBarImages(const BarImageFormat& format) {
    return ImageList_Create(format.width, format.height, ILC_COLOR32 | ILC_MASK, 0, kGrowBy);
}

int AddBarImages(HIMAGELIST list, const BarImageFormat& format, HINSTANCE instance, int bitmapId, int count) {
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
        added = AddOne(list, format, source, base + i);
    }
    DestroyWindow(reader);
    if (!added) {
        ImageList_SetImageCount(list, static_cast<UINT>(first));
        return -1;
    }
    return first;
}

}  // namespace shell
