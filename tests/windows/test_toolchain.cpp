// What the rest of the code takes for granted about the API and the compiler.
#include <gtest/gtest.h>
#include <windows.h>

namespace {

TEST(Toolchain, WideCharactersAreUtf16Units) {
    EXPECT_EQ(sizeof(wchar_t), sizeof(char16_t));
    EXPECT_EQ(sizeof(WCHAR), sizeof(char16_t));
}

TEST(Toolchain, ExceptionsAreCaughtInAStaticProgram) {
    int caught = 0;
    try {
        throw 1;
    } catch (int code) {
        caught = code;
    }
    EXPECT_EQ(caught, 1);
}

}  // namespace
