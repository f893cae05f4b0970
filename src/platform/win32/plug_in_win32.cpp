#include "platform/plug_in.h"

#include <malloc.h>
#include <windows.h>

#include "platform/win32/casts.h"
#include "platform/win32/system_path.h"

namespace nira {

namespace {

// One guarded run. It lies in the frame of the function that made it, which the entry context leads back to.
struct Guard {
    CONTEXT entry;  // the thread as it was at the run's start
    Guard* outer;
    DWORD thread;
    volatile bool armed;
    volatile bool ended;  // the entry context was gone back to
    volatile GuardedEnd end;
    volatile DWORD fault;  // the exception's code
};

Guard* innermost = nullptr;

// Everything else that can be raised (C++ exceptions above all) may be something that the library deals with
// itself; what it does not deal with arrives in PlugInEscaped.
bool IsFault(DWORD code) {
    switch (code) {
        case EXCEPTION_ACCESS_VIOLATION:
        case EXCEPTION_ARRAY_BOUNDS_EXCEEDED:
        case EXCEPTION_DATATYPE_MISALIGNMENT:
        case EXCEPTION_FLT_DENORMAL_OPERAND:
        case EXCEPTION_FLT_DIVIDE_BY_ZERO:
        case EXCEPTION_FLT_INEXACT_RESULT:
        case EXCEPTION_FLT_INVALID_OPERATION:
        case EXCEPTION_FLT_OVERFLOW:
        case EXCEPTION_FLT_STACK_CHECK:
        case EXCEPTION_FLT_UNDERFLOW:
        case EXCEPTION_ILLEGAL_INSTRUCTION:
        case EXCEPTION_IN_PAGE_ERROR:
        case EXCEPTION_INT_DIVIDE_BY_ZERO:
        case EXCEPTION_INT_OVERFLOW:
        case EXCEPTION_PRIV_INSTRUCTION:
        case EXCEPTION_STACK_OVERFLOW:
            return true;
        default:
            return false;
    }
}

// The guard that has to act on an exception of this thread; null when none has.
Guard* GuardOnDuty() {
    Guard* guard = innermost;
    return guard != nullptr && guard->armed && guard->thread == GetCurrentThreadId() ? guard : nullptr;
}

void End(Guard* guard, GuardedEnd end, DWORD fault) {
    guard->armed = false;
    guard->ended = true;
    guard->end = end;
    guard->fault = fault;
}

// Comes before every handler of the library's own, and while the stack may be beyond repair: going on from
// the entry context needs nothing of it.
LONG CALLBACK OnException(EXCEPTION_POINTERS* exception) {
    const DWORD code = exception->ExceptionRecord->ExceptionCode;
    Guard* guard = IsFault(code) ? GuardOnDuty() : nullptr;
    if (guard == nullptr) return EXCEPTION_CONTINUE_SEARCH;
    End(guard, GuardedEnd::kFaulted, code);
    *exception->ContextRecord = guard->entry;
    return EXCEPTION_CONTINUE_EXECUTION;
}

// Small enough to be left over by every stack, large enough for the handler above.
constexpr ULONG kStackForHandler = 16 * 1024;

using Operation = void (*)(void* context);

}  // namespace

// The handler of the frame below: an exception that no frame of the library's wanted.
extern "C" EXCEPTION_DISPOSITION PlugInEscaped(EXCEPTION_RECORD* record, void*, CONTEXT*, void*) {
    const bool unwinding = (record->ExceptionFlags & (EXCEPTION_UNWINDING | EXCEPTION_EXIT_UNWIND)) != 0;
    Guard* guard = unwinding ? nullptr : GuardOnDuty();
    if (guard == nullptr) return ExceptionContinueSearch;
    End(guard, GuardedEnd::kFaulted, record->ExceptionCode);
    // Some exceptions may not be continued; this is no continuing.
    RtlRestoreContext(&guard->entry, nullptr);
    return ExceptionContinueSearch;
}

// Calls operation(context) in a frame with a handler of its own, which no C++ construct gives: `catch` sees
// neither what other compilers throw nor the system's exceptions.
extern "C" void CallInHandledFrame(Operation operation, void* context);
asm(R"(
    .text
    .globl CallInHandledFrame
    .seh_proc CallInHandledFrame
CallInHandledFrame:
    subq $40, %rsp
    .seh_stackalloc 40
    .seh_endprologue
    movq %rcx, %rax
    movq %rdx, %rcx
    call *%rax
    nop
    addq $40, %rsp
    ret
    .seh_handler PlugInEscaped, @except
    .seh_endproc
)");

namespace {

// Comes back from RtlCaptureContext a second time when the run ends early; the compiler does not know, so
// what is needed then lies in the guard.
__attribute__((noinline)) GuardedEnd Run(Operation operation, void* context) {
    Guard guard;
    guard.outer = innermost;
    guard.thread = GetCurrentThreadId();
    guard.armed = false;
    guard.ended = false;
    guard.end = GuardedEnd::kReturned;
    guard.fault = 0;
    innermost = &guard;
    RtlCaptureContext(&guard.entry);
    if (!guard.ended) {
        guard.armed = true;
        CallInHandledFrame(operation, context);
        guard.armed = false;
    }
    innermost = guard.outer;
    // The page that reports the end of the stack has been used up.
    if (guard.fault == EXCEPTION_STACK_OVERFLOW) _resetstkoflw();
    return guard.end;
}

struct Loading {
    const wchar_t* path;
    HMODULE module;
};

}  // namespace

GuardedEnd RunBehindGuard(void (*operation)(void* context), void* context) {
    ULONG guaranteed = kStackForHandler;
    SetThreadStackGuarantee(&guaranteed);
    void* handler = AddVectoredExceptionHandler(1, OnException);
    const GuardedEnd end = Run(operation, context);
    RemoveVectoredExceptionHandler(handler);
    return end;
}

void SuspendGuard() {
    if (innermost != nullptr) innermost->armed = false;
}

void ResumeGuard() {
    if (innermost != nullptr) innermost->armed = true;
}

void LeaveGuard() {
    End(innermost, GuardedEnd::kLeft, 0);
    RtlRestoreContext(&innermost->entry, nullptr);
    __builtin_unreachable();
}

// The loader catches faults of a library's start itself and must get them first, because it holds locks: so
// only the frame's handler stands here.
LibraryHandle LibraryLoad(const char16_t* path) {
    if (path == nullptr || path[0] == 0) return nullptr;
    const SystemPath systemPath(path);
    if (systemPath.Get() == nullptr) return nullptr;
    Loading loading = {systemPath.Get(), nullptr};
    DWORD mode = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &mode);
    const auto load = [](void* context) {
        auto* wanted = static_cast<Loading*>(context);
        wanted->module = LoadLibraryW(wanted->path);
    };
    const GuardedEnd end = Run(load, &loading);
    SetThreadErrorMode(mode, nullptr);
    return end == GuardedEnd::kReturned ? reinterpret_cast<LibraryHandle>(loading.module) : nullptr;
}

void LibraryFree(LibraryHandle library) {
    if (library == nullptr) return;
    const auto free = [](void* context) { FreeLibrary(static_cast<HMODULE>(context)); };
    Run(free, library);
}

LibraryFunction LibraryFind(LibraryHandle library, const char* name) {
    return reinterpret_cast<LibraryFunction>(GetProcAddress(reinterpret_cast<HMODULE>(library), name));
}

}  // namespace nira
