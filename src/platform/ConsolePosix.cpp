// The terminal on POSIX: isatty and the SIGINT handler.
#include <unistd.h>

#include <csignal>

#include "platform/Console.h"

namespace skl::platform {

namespace {

// Ctrl-C presses, counted by the signal handler. A signal handler can only
// reach state like this.
volatile std::sig_atomic_t interrupts = 0;

extern "C" void OnInterrupt(int) {
    interrupts = interrupts + 1;
    if (interrupts >= 2) ::_exit(130);
}

}  // namespace

bool IsTerminal(std::FILE* stream) {
    return ::isatty(::fileno(stream)) != 0;
}

void CatchInterrupts() {
    interrupts = 0;
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
}

void ReleaseInterrupts() {
    std::signal(SIGINT, SIG_DFL);
}

bool TakeInterrupt() {
    if (interrupts == 0) return false;
    interrupts = 0;
    return true;
}

bool InterruptPending() {
    return interrupts != 0;
}

}  // namespace skl::platform
