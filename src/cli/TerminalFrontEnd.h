#pragma once

#include <cstdio>
#include <string>

#include "model/FrontEnd.h"

namespace skl::cli {

// The front end of skldbm: status and a progress bar on standard error (plain
// lines when it is no terminal), Ctrl-C as a confirmed cancel.
class TerminalFrontEnd : public FrontEnd {
  public:
    TerminalFrontEnd(bool quiet, std::FILE* out = stderr);
    ~TerminalFrontEnd() override;

    void SetStatusText(const std::string& text) override;
    void SetProgressPercent(double percent) override;
    void ShowProgress(bool visible) override;
    bool ProcessEvents() override;
    MessageAnswer MessageBox(const std::string& text, MessageButtons buttons,
                             const std::string& title) override;
    void EnableUpdate(bool) override {}
    void EnableCancel(bool) override {}
    void EnableExit(bool) override {}
    void Unload() override {}

    // Ends the live status line so that what follows starts on a line of its own.
    void Finish();
    // True when Ctrl-C was pressed and no cancel point took it.
    bool CancelPending() const;

  private:
    void Redraw();

    bool quiet_;
    bool terminal_;
    std::FILE* out_;
    std::string status_;
    double percent_ = 0;
    int shownPercent_ = -1;
    bool showProgress_ = false;
    bool lineOpen_ = false;
};

// Converts Windows-1252 text to UTF-8 for display, a carriage return becoming
// `lineBreak`.
std::string DisplayText(const std::string& text, const std::string& lineBreak);

}  // namespace skl::cli
