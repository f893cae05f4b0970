#pragma once

#include <windows.h>

#include <commctrl.h>

// Images of tool bars: large enough to be seen, and in buttons that a finger hits.
//
// Bars are drawn with pictures of 16 x 16 pixels. Where pixels are small those are repeated a whole number of
// times in both directions: drawn for exactly this size, they stay crisp, and in any other ratio they blur.
// A tool bar makes its buttons a few pixels larger than its images, and not every one lets that be changed;
// so it is the image that is as large as the button needs, with the picture in its middle.
namespace shell {

constexpr int kBarPictureSize = 16;

// Sizes in pixels, for one density.
struct BarImageFormat {
    int factor;  // how often each pixel of a picture is repeated in both directions, 1 or more
    int width;   // of an image; no less than the picture
    int height;
};

BarImageFormat BarImagesFor(int dotsPerInch);

// An empty list for such images. Null with the last error set on failure; the caller's.
HIMAGELIST CreateBarImages(const BarImageFormat& format);

// Adds `count` images made of pictures of 16 x 16 pixels: those of a bitmap of `instance`, or with
// HINST_COMMCTRL of one of the system's. Returns the index of the first in the list, or -1 on failure, when
// none has been added.
int AddBarImages(HIMAGELIST list, const BarImageFormat& format, HINSTANCE instance, int bitmapId, int count);

}  // namespace shell
