// Images of bars on dense screens.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "shell/bar_images.h"

namespace {

TEST(ShellBarImages, GrowByTheWholeNumberNearestToTheDensity) {
    for (const auto& [density, factor] :
         {std::pair{0, 1}, {96, 1}, {120, 1}, {143, 1}, {144, 2}, {192, 2}, {288, 3}})
        EXPECT_EQ(shell::BarImagesFor(density).factor, factor) << density;
}

TEST(ShellBarImages, FillTheButtonThatAFingerHits) {
    EXPECT_EQ(shell::BarImagesFor(96).width, 16);
    EXPECT_EQ(shell::BarImagesFor(96).height, 18);
    EXPECT_EQ(shell::BarImagesFor(192).width, 40);
    EXPECT_EQ(shell::BarImagesFor(192).height, 42);
    EXPECT_EQ(shell::BarImagesFor(144).width, 32) << "no less than the picture";
    EXPECT_EQ(shell::BarImagesFor(144).height, 32);
}

// What a list draws on a white ground, as colours of size x size pixels.
class Picture {
  public:
    Picture(HIMAGELIST list, int index, int size) : size_(size) {
        const HDC screen = GetDC(nullptr);
        device_ = CreateCompatibleDC(screen);
        bitmap_ = CreateCompatibleBitmap(screen, size, size);
        ReleaseDC(nullptr, screen);
        before_ = SelectObject(device_, bitmap_);
        PatBlt(device_, 0, 0, size, size, WHITENESS);
        ImageList_Draw(list, index, device_, 0, 0, ILD_TRANSPARENT);
    }
    ~Picture() {
        SelectObject(device_, before_);
        DeleteObject(bitmap_);
        DeleteDC(device_);
    }
    COLORREF At(int x, int y) const { return GetPixel(device_, x, y); }
    int Drawn() const {
        int drawn = 0;
        for (int i = 0; i < size_ * size_; ++i) drawn += At(i % size_, i / size_) != RGB(255, 255, 255);
        return drawn;
    }

  private:
    int size_;
    HDC device_;
    HBITMAP bitmap_;
    HGDIOBJ before_;
};

// The greatest difference of one of the three colours.
int Distance(COLORREF one, COLORREF other) {
    const int red = std::abs(GetRValue(one) - GetRValue(other));
    const int green = std::abs(GetGValue(one) - GetGValue(other));
    const int blue = std::abs(GetBValue(one) - GetBValue(other));
    return std::max({red, green, blue});
}

// Every pixel of every image that a tool bar draws fills its square in the middle, those that let the
// ground through included.
void ExpectSquares(HINSTANCE instance, int bitmap, int count, int factor) {
    const HWND bar = CreateWindowExW(0, TOOLBARCLASSNAMEW, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                     GetModuleHandleW(nullptr), nullptr);
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(bar, TB_SETBITMAPSIZE, 0, MAKELPARAM(16, 16));
    TBADDBITMAP images = {instance, static_cast<UINT_PTR>(bitmap)};
    SendMessageW(bar, TB_ADDBITMAP, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(&images));
    const auto plain = reinterpret_cast<HIMAGELIST>(SendMessageW(bar, TB_GETIMAGELIST, 0, 0));
    const int side = 16 * factor;
    const HIMAGELIST large = shell::CreateBarImages({factor, side + 8, side + 6});
    ASSERT_EQ(shell::AddBarImages(large, {factor, side + 8, side + 6}, instance, bitmap, count), 0);
    ASSERT_EQ(ImageList_GetImageCount(large), count);
    for (int i = 0; i < count; ++i) {
        const Picture small(plain, i, 16);
        const Picture big(large, i, side + 8);
        EXPECT_GT(small.Drawn(), 8) << i;
        EXPECT_LT(small.Drawn(), 250) << i;
        int wrong = 0;
        for (int p = 0; p < side * side; ++p) {
            const COLORREF wanted = small.At(p % side / factor, p / side / factor);
            wrong += Distance(big.At(4 + p % side, 3 + p / side), wanted) > 2;
        }
        EXPECT_EQ(wrong, 0) << i;
        EXPECT_LE(big.Drawn(), small.Drawn() * factor * factor) << i << ": nothing around it";
    }
    ImageList_Destroy(large);
    DestroyWindow(bar);
}

TEST(ShellBarImages, RepeatThePixelsOfAProgramsBitmap) {
    ExpectSquares(GetModuleHandleW(nullptr), 6002, 13, 2);
}

TEST(ShellBarImages, RepeatThePixelsOfTheSystemsImages) {
    ExpectSquares(HINST_COMMCTRL, IDB_STD_SMALL_COLOR, 15, 3);
}

TEST(ShellBarImages, AddToThoseThatAreThere) {
    const shell::BarImageFormat format = shell::BarImagesFor(192);
    const HIMAGELIST list = shell::CreateBarImages(format);
    EXPECT_EQ(shell::AddBarImages(list, format, GetModuleHandleW(nullptr), 6002, 13), 0);
    EXPECT_EQ(shell::AddBarImages(list, format, HINST_COMMCTRL, IDB_STD_SMALL_COLOR, 15), 13);
    EXPECT_EQ(shell::AddBarImages(list, format, GetModuleHandleW(nullptr), 1, 5), -1)
        << "there is no such bitmap";
    EXPECT_EQ(ImageList_GetImageCount(list), 28);
    int width = 0;
    int height = 0;
    EXPECT_TRUE(ImageList_GetIconSize(list, &width, &height));
    EXPECT_EQ(width, format.width);
    EXPECT_EQ(height, format.height);
    ImageList_Destroy(list);
}

}  // namespace
