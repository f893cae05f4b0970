// Libraries that others wrote, and the guard that their functions run behind.
//
// A fault inside such a function (memory that is not there, an unknown instruction, a division by zero, a
// stack that is used up, an exception that nobody in the library catches) must not end the program and take
// unsaved text with it. The guard leaves the function there and then: what stands on the stack between the
// guard and the fault is dropped as it is, so nothing in the library is cleaned up, and the library must not
// be called or freed any more. What the guard cannot stop: a function that never returns, one that ends the
// process, and one that wrote over memory of the program before it faulted.
#pragma once

#include "platform/handles.h"

namespace nira {

using LibraryFunction = void (*)();

// Loads a library from its path. Null when there is none, when it is no library, or when its own start fails;
// the system shows no box of its own. A library that is loaded already gives the same handle again.
LibraryHandle LibraryLoad(const char16_t* path);

// Takes one LibraryLoad back. Null is ignored.
void LibraryFree(LibraryHandle library);

// An exported function; null when there is none.
LibraryFunction LibraryFind(LibraryHandle library, const char* name);

enum class GuardedEnd {
    kReturned,
    kFaulted,
    kLeft,  // by LeaveGuard
};

// Runs operation(context), which calls one function of a library and does nothing else: no object with a
// destructor may live in it.
GuardedEnd RunBehindGuard(void (*operation)(void* context), void* context);

// For a function of the program that a library calls back: the guard is off between the two, because a fault
// there is the program's own and not to be hidden. They do not nest. Without effect outside a guarded run.
void SuspendGuard();
void ResumeGuard();

// Leaves the innermost guarded run from a function that the library called back. Objects of the program
// between the two are not destroyed: call it where none is left.
[[noreturn]] void LeaveGuard();

}  // namespace nira
