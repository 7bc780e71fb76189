#include "cli/TerminalFrontEnd.h"

#include <cmath>

#include "platform/Console.h"
#include "platform/Win1252.h"

namespace skl::cli {

std::string DisplayText(const std::string& text, const std::string& lineBreak) {
    std::string shown;
    for (char c : text) {
        if (c == '\r')
            shown += lineBreak;
        else
            shown += c;
    }
    return Win1252ToUtf8(shown);
}

TerminalFrontEnd::TerminalFrontEnd(bool quiet, std::FILE* out)
    : quiet_(quiet), terminal_(platform::IsTerminal(out)), out_(out) {
    // The first Ctrl-C is a confirmed cancel, taken at the next cancel point; a
    // second one ends the process at once (the next run heals the database set).
    platform::CatchInterrupts();
}

TerminalFrontEnd::~TerminalFrontEnd() {
    platform::ReleaseInterrupts();
}

void TerminalFrontEnd::SetStatusText(const std::string& text) {
    status_ = DisplayText(text, "");
    if (quiet_) return;
    if (terminal_) {
        Redraw();
    } else {
        std::fprintf(out_, "%s\n", status_.c_str());
    }
}

void TerminalFrontEnd::SetProgressPercent(double percent) {
    percent_ = percent;
    int whole = static_cast<int>(std::floor(percent));
    if (quiet_ || whole == shownPercent_) return;
    shownPercent_ = whole;
    if (terminal_)
        Redraw();
    else if (showProgress_)
        std::fprintf(out_, "Progress: %d%%\n", whole);
}

void TerminalFrontEnd::ShowProgress(bool visible) {
    showProgress_ = visible;
    if (!quiet_ && terminal_) Redraw();
}

bool TerminalFrontEnd::ProcessEvents() {
    return platform::TakeInterrupt();
}

bool TerminalFrontEnd::CancelPending() const {
    return platform::InterruptPending();
}

MessageAnswer TerminalFrontEnd::MessageBox(const std::string& text, MessageButtons buttons,
                                           const std::string& title) {
    Finish();
    std::fprintf(out_, "%s: %s\n", DisplayText(title, "").c_str(), DisplayText(text, "\n").c_str());
    return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
}

void TerminalFrontEnd::Redraw() {
    constexpr int kBarWidth = 30;
    std::string line = status_;
    if (showProgress_) {
        int filled = static_cast<int>(std::lround(percent_ / 100.0 * kBarWidth));
        filled = filled < 0 ? 0 : (filled > kBarWidth ? kBarWidth : filled);
        line = "[" + std::string(static_cast<size_t>(filled), '#') +
               std::string(static_cast<size_t>(kBarWidth - filled), ' ') + "] " +
               std::to_string(static_cast<int>(std::floor(percent_))) + "% " + line;
    }
    // Clear the line and write it again, cut to a common terminal width.
    if (line.size() > 120) line.resize(120);
    std::fprintf(out_, "\r\033[K%s", line.c_str());
    std::fflush(out_);
    lineOpen_ = true;
}

void TerminalFrontEnd::Finish() {
    if (lineOpen_) std::fprintf(out_, "\n");
    lineOpen_ = false;
}

}  // namespace skl::cli
