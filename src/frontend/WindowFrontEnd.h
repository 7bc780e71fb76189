#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <utility>

#include "frontend/frmMain.h"
#include "model/FrontEnd.h"

namespace skl::frontend {

// The front end as the run on the worker thread sees it: every call is queued to
// the window, a message box waits for its answer, and the cancel point waits at
// the gate while the cancel question is open.
class WindowFrontEnd : public FrontEnd {
  public:
    explicit WindowFrontEnd(frmMain& window) : window_(window) {}

    void SetStatusText(const std::string& text) override {
        window_.gate_.NoteStatus(text);
        Post([w = &window_, text] { w->ShowStatus(text); });
    }
    void SetProgressPercent(double percent) override {
        Post([w = &window_, percent] { w->ShowPercent(percent); });
    }
    void ShowProgress(bool visible) override {
        Post([w = &window_, visible] { w->ShowBar(visible); });
    }
    bool ProcessEvents() override {
        if (Observer) Observer();
        return window_.gate_.AtCancelPoint();
    }
    MessageAnswer MessageBox(const std::string& text, MessageButtons buttons,
                             const std::string& title) override {
        MessageAnswer answer =
            buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
        if (window_.abandoned_) return answer;
        QMetaObject::invokeMethod(
            &window_, [&] { answer = window_.ShowMessage(text, buttons, title); },
            Qt::BlockingQueuedConnection);
        return answer;
    }
    void EnableUpdate(bool enabled) override {
        Post([w = &window_, enabled] { w->RunEnablesUpdate(enabled); });
    }
    void EnableCancel(bool enabled) override {
        Post([w = &window_, enabled] { w->RunEnablesCancel(enabled); });
    }
    // The window holds exit disabled for the whole run and enables it when the
    // run has ended.
    void EnableExit(bool) override {}
    // The window unloads on the window thread once the run has returned.
    void Unload() override { UnloadRequested = true; }

    std::function<void()> Observer;
    std::atomic<bool> UnloadRequested{false};

  private:
    template <typename Call>
    void Post(Call&& call) {
        if (!window_.abandoned_)
            QMetaObject::invokeMethod(&window_, std::forward<Call>(call), Qt::QueuedConnection);
    }

    frmMain& window_;
};

}  // namespace skl::frontend
