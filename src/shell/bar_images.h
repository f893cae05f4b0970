#pragma once

#include <windows.h>

#include <commctrl.h>

// Images of tool bars on dense screens.
//
// Bars are drawn with images of 16 x 16 pixels. Where pixels are small those are repeated a whole number of
// times in both directions: drawn for exactly this size, they stay crisp, and in any other ratio they blur.
namespace shell {

constexpr int kBarImageSize = 16;

// How often each pixel is repeated in both directions: the whole number nearest to the density, 1 or more.
int BarImageFactor(int dotsPerInch);

// The same for the screen of this session.
int ScreenImageFactor();

// An empty list for images of `factor` times the size. Null with the last error set on failure; the caller's.
HIMAGELIST CreateBarImages(int factor);

// Adds `count` images of 16 x 16 pixels, magnified: a bitmap of `instance`, or with HINST_COMMCTRL one of the
// system's. Returns the index of the first in the list, or -1 on failure.
int AddMagnified(HIMAGELIST list, int factor, HINSTANCE instance, int bitmapId, int count);

}  // namespace shell
