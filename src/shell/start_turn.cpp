#include "shell/start_turn.h"

namespace shell {

HANDLE WaitForStartTurn(const wchar_t* name, DWORD patience) {
    const HANDLE turn = CreateMutexW(nullptr, FALSE, name);
    if (!turn) {
        return nullptr;
    }
    // One that ended in its turn has left it to the next.
    const DWORD got = WaitForSingleObject(turn, patience);
    if (got == WAIT_OBJECT_0 || got == WAIT_ABANDONED) {
        return turn;
    }
    CloseHandle(turn);
    return nullptr;
}

void EndStartTurn(HANDLE turn) {
    if (turn) {
        ReleaseMutex(turn);
        CloseHandle(turn);
    }
}

}  // namespace shell
