#include "shell/desktop_keys.h"

namespace shell {

namespace {

bool HasNoToggle(int virtualKey) {
    switch (virtualKey) {
        case VK_CONTROL:
        case VK_LCONTROL:
        case VK_RCONTROL:
        case VK_SHIFT:
        case VK_LSHIFT:
        case VK_RSHIFT:
            return true;
        default:
            return false;
    }
}

}  // namespace

SHORT KeyState(int virtualKey) {
    const SHORT state = GetKeyState(virtualKey);
    return HasNoToggle(virtualKey) ? static_cast<SHORT>(state & ~1) : state;
}

bool IsStrayCharacter(wchar_t character, bool ctrlHeld) {
    if (character == L'\b' || character == L'\r') {
        return false;
    }
    if (character == L'\t') {
        return ctrlHeld;
    }
    return character < 32 || character == 127;
}

bool IsStrayCharacterMessage(const MSG& message) {
    return message.message == WM_CHAR &&
           IsStrayCharacter(static_cast<wchar_t>(message.wParam), KeyState(VK_CONTROL) < 0);
}

}  // namespace shell
