// The run on the worker thread: starting it, its end, the cancel question (from the
// cancel button or from closing the window during a run), and the front end's
// operations as they arrive on the window thread.
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <cmath>

#include "frontend/WindowFrontEnd.h"
#include "frontend/WindowText.h"
#include "frontend/frmMain.h"

namespace skl::frontend {

void frmMain::SetCancelPointObserver(std::function<void()> observer) {
    frontEnd_->Observer = std::move(observer);
}

void frmMain::cmdWorld_Click() {
    if (running_ || !controls_.Update) return;
    if (worker_.joinable()) worker_.join();
    beforeRun_ = controls_;
    updateRequest_.reset();
    closeAfterRun_ = false;
    frontEnd_->UnloadRequested = false;
    controls_ = AtRunStart(controls_);
    ApplyControls();
    running_ = true;
    gate_.Start();
    workerDone_ = false;
    try {
        StartWorker();
    } catch (...) {
        // No thread for the run: the window comes back as it was.
        workerDone_ = true;
        OnRunEnded(std::nullopt);
    }
}

void frmMain::StartWorker() {
    worker_ = std::thread([this] {
        std::optional<RunEnd> end;
        try {
            end = ::skl::cmdWorld_Click(*state_, *frontEnd_);
        } catch (...) {
            // Nothing of the run escapes its handlers; should anything, the
            // files are closed and the window comes back as after a refused run.
            state_->Files.Table.CloseAll();
        }
        if (!abandoned_)
            QMetaObject::invokeMethod(
                this, [this, end] { OnRunEnded(end); }, Qt::QueuedConnection);
        workerDone_ = true;
    });
}

void frmMain::OnRunEnded(std::optional<RunEnd> end) {
    if (worker_.joinable()) worker_.join();
    if (abandoned_) return;
    running_ = false;
    gate_.Stop();
    if ((end && EndsProcess(*end)) || frontEnd_->UnloadRequested) {
        Form_Unload();
        hide();
        end_(1);
        return;
    }
    controls_ = AtRunEnd(beforeRun_, updateRequest_);
    ApplyControls();
    ShowBar(false);
    if (closeAfterRun_) {
        closeAfterRun_ = false;
        close();
    }
}

bool frmMain::AskCancelQuestion(bool evenWithoutCancelPoint) {
    const CancelGate::Ask ask = gate_.BeginQuestion();
    if (ask == CancelGate::Ask::Open) return false;
    if (ask == CancelGate::Ask::Confirmed) return true;
    if (ask == CancelGate::Ask::NoCancelPoint && !evenWithoutCancelPoint) return false;
    const QMessageBox::StandardButton answer =
        ask_(this, Shown(kCancelQuestion), QMessageBox::Yes | QMessageBox::No,
             QMessageBox::Critical, QString::fromLatin1(kTitleText));
    ShowBar(false);
    const bool yes = answer == QMessageBox::Yes;
    if (ask == CancelGate::Ask::Question) gate_.Answer(yes);
    // A second request after a confirmed cancel has nothing left to cancel.
    if (yes && running_) {
        controls_.Cancel = false;
        ApplyControls();
    }
    return yes;
}

void frmMain::cmdCancel_Click() {
    if (running_) AskCancelQuestion(false);
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (running_) {
        event->ignore();
        if (closeAfterRun_ || !AskCancelQuestion(true)) return;
        // The window closes once the worker has stopped, unless the run ended
        // while the question was open.
        if (running_) {
            closeAfterRun_ = true;
            return;
        }
    }
    Form_Unload();
    event->accept();
}

void frmMain::ShowStatus(const std::string& text) {
    lblExplain_->setText(Shown(text));
}

void frmMain::ShowPercent(double percent) {
    if (!std::isfinite(percent)) return;
    const double clamped = percent < 0 ? 0 : (percent > 100 ? 100 : percent);
    showBar_->setValue(static_cast<int>(std::lround(clamped * 10)));
}

void frmMain::ShowBar(bool visible) {
    showBar_->setVisible(visible);
}

MessageAnswer frmMain::ShowMessage(const std::string& text, MessageButtons buttons,
                                   const std::string& title) {
    if (abandoned_) return buttons == MessageButtons::Ok ? MessageAnswer::Ok : MessageAnswer::No;
    const bool yesNo = buttons == MessageButtons::YesNo;
    const QMessageBox::StandardButton answer =
        ask_(this, Shown(text), yesNo ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok,
             QMessageBox::NoIcon, Shown(title));
    if (!yesNo) return MessageAnswer::Ok;
    return answer == QMessageBox::Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

void frmMain::RunEnablesUpdate(bool enabled) {
    if (running_) {
        updateRequest_ = enabled;
        return;
    }
    controls_.Update = enabled;
    ApplyControls();
}

void frmMain::RunEnablesCancel(bool enabled) {
    controls_.Cancel = running_ && enabled && !gate_.CancelConfirmed();
    ApplyControls();
}

}  // namespace skl::frontend
