#pragma once

#include <cstdio>

namespace skl::platform {

// True when the stream writes to a terminal (a console on Windows).
bool IsTerminal(std::FILE* stream);

// Ctrl-C from now on is counted instead of ending the process: the first press
// waits until TakeInterrupt takes it; a second one before that ends the process
// at once with status 130.
void CatchInterrupts();
// Gives Ctrl-C back its default: it ends the process.
void ReleaseInterrupts();

// True when Ctrl-C was pressed and not taken yet; takes it.
bool TakeInterrupt();
// True when Ctrl-C was pressed and not taken yet.
bool InterruptPending();

}  // namespace skl::platform
