// Files that wait to be opened.
//
// Another instance may hand a path over while the person is answering a box or a dialog. Opening it then
// could destroy the very document that is asked about, so it waits here.
#pragma once

namespace nira {

// Keeps a copy of `path`. False when memory ran out, of which the person has been told: whoever handed the
// path over still has it.
bool PendPath(const char16_t* path);

// The path that has waited longest, now the caller's; null when none waits.
char16_t* TakePendingPath();

bool HasPendingPath();

// Between BeginBusy and EndBusy, which nest, a command or an opening runs and paths must wait.
void BeginBusy();
void EndBusy();
bool IsBusy();

}  // namespace nira
