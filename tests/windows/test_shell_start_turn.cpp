// Turns at starting, between threads as between programs.
#include <gtest/gtest.h>
#include <windows.h>

#include "shell/start_turn.h"

namespace {

constexpr const wchar_t* kName = L"NIRA test of turns";

// Waits for a turn in a thread of its own and ends it at once, or leaves it to its own end.
struct Second {
    DWORD patience;
    bool endsTurn;
    bool had;
};

DWORD WINAPI Take(void* argument) {
    auto* second = static_cast<Second*>(argument);
    const HANDLE turn = shell::WaitForStartTurn(kName, second->patience);
    second->had = turn != nullptr;
    if (second->endsTurn) shell::EndStartTurn(turn);
    return 0;
}

void Wait(HANDLE thread) {
    EXPECT_EQ(WaitForSingleObject(thread, 10000), WAIT_OBJECT_0);
    CloseHandle(thread);
}

TEST(ShellStartTurn, ComesWhenTheOneBeforeHasEnded) {
    const HANDLE first = shell::WaitForStartTurn(kName, 0);
    ASSERT_NE(first, nullptr);
    Second second = {10000, true, false};
    const HANDLE thread = CreateThread(nullptr, 0, Take, &second, 0, nullptr);
    EXPECT_EQ(WaitForSingleObject(thread, 100), static_cast<DWORD>(WAIT_TIMEOUT));
    shell::EndStartTurn(first);
    Wait(thread);
    EXPECT_TRUE(second.had);
}

TEST(ShellStartTurn, IsNotWaitedForWithoutAnEnd) {
    const HANDLE first = shell::WaitForStartTurn(kName, 0);
    Second second = {50, true, true};
    Wait(CreateThread(nullptr, 0, Take, &second, 0, nullptr));
    EXPECT_FALSE(second.had);
    shell::EndStartTurn(first);
}

TEST(ShellStartTurn, ComesAfterOneThatEndedInItsTurn) {
    Second second = {0, false, false};
    Wait(CreateThread(nullptr, 0, Take, &second, 0, nullptr));
    EXPECT_TRUE(second.had);
    const HANDLE next = shell::WaitForStartTurn(kName, 1000);
    EXPECT_NE(next, nullptr);
    shell::EndStartTurn(next);
}

}  // namespace
