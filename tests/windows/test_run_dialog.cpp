// Dialogs made from the program's resources.
#include <gtest/gtest.h>
#include <windows.h>

#include "app/services/resources.h"
#include "platform/messages.h"
#include "platform/win32/casts.h"
#include "resources/resource.h"
#include "windows/box_closer.h"

namespace nira {
namespace {

// Ends the dialog at once with the parameter that it was given.
intptr_t EndWithParameter(WindowHandle dialog, uint32_t message, uintptr_t, intptr_t parameter) {
    if (message == WM_INITDIALOG) EndDialog(ToHwnd(dialog), parameter);
    return FALSE;
}

std::wstring SystemText(DWORD error) {
    char16_t text[512];
    const size_t length = SystemErrorText(error, text, 512);
    return std::wstring(ToWide(text), length);
}

TEST(RunDialogs, ReturnTheirResult) {
    for (const intptr_t result : {intptr_t{0}, intptr_t{7}})
        EXPECT_EQ(RunDialog(IDD_ABOUT, nullptr, EndWithParameter, result), result);
}

TEST(RunDialogs, SayWhyTheyCannotBeMade) {
    BoxCloser box;
    EXPECT_EQ(RunDialog(65000, nullptr, EndWithParameter, 0), -1);
    EXPECT_EQ(box.Text(), SystemText(ERROR_RESOURCE_NAME_NOT_FOUND));
}

}  // namespace
}  // namespace nira
