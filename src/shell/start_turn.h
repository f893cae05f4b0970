#pragma once

#include <windows.h>

// Turns at starting. Of two instances that start at the same moment neither would find the other running;
// one after the other, the second finds the first.
namespace shell {

// Waits until it is this instance's turn among those that use the same name in this session, at most
// `patience` milliseconds. Returns what EndStartTurn takes; null when it could not be had, which is no reason
// not to start. A turn also ends with the thread that has it.
HANDLE WaitForStartTurn(const wchar_t* name, DWORD patience);

// Lets the next one begin. Null is ignored. To be called by the thread that waited.
void EndStartTurn(HANDLE turn);

}  // namespace shell
