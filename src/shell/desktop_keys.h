#pragma once

#include <windows.h>

// Keys as a handheld delivers them, from a desktop keyboard.
namespace shell {

// GetKeyState, but Ctrl and Shift have no toggle bit: a desktop flips it at every press, so that code testing
// the whole value for zero would take a Ctrl pressed long ago for one that is held.
SHORT KeyState(int virtualKey);

// True for a character that a desktop keyboard makes and a handheld does not: everything below 32 and 127
// (Esc, Ctrl+letter, Ctrl+Backspace, Ctrl+Enter), but for Backspace, Return, and a Tab made without Ctrl.
bool IsStrayCharacter(wchar_t character, bool ctrlHeld);

// The same for a message, with the Ctrl key as it was when the message was made. False unless it is a
// WM_CHAR.
bool IsStrayCharacterMessage(const MSG& message);

}  // namespace shell
