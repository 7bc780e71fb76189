#include "frontend/CancelGate.h"

namespace skl::frontend {

namespace {

constexpr const char* kSearchText = "Searching for *.bgl files!";
constexpr const char* kReadingMark = "\r ... reading:  ";

}  // namespace

void CancelGate::Start() {
    std::lock_guard lock(mutex_);
    state_ = State::Idle;
    running_ = true;
    loopOver_ = false;
}

void CancelGate::Stop() {
    {
        std::lock_guard lock(mutex_);
        state_ = State::Idle;
        running_ = false;
    }
    answered_.notify_all();
}

CancelGate::Ask CancelGate::BeginQuestion() {
    std::lock_guard lock(mutex_);
    if (state_ == State::Asking) return Ask::Open;
    if (state_ == State::Confirmed) return Ask::Confirmed;
    if (!running_ || loopOver_) return Ask::NoCancelPoint;
    state_ = State::Asking;
    return Ask::Question;
}

void CancelGate::Answer(bool yes) {
    {
        std::lock_guard lock(mutex_);
        if (state_ != State::Asking) return;
        state_ = yes ? State::Confirmed : State::Idle;
    }
    answered_.notify_all();
}

bool CancelGate::AtCancelPoint() {
    std::unique_lock lock(mutex_);
    answered_.wait(lock, [this] { return state_ != State::Asking || !running_ || abandoned_; });
    if (abandoned_) return true;
    if (state_ != State::Confirmed || !running_) return false;
    state_ = State::Idle;
    return true;
}

void CancelGate::NoteStatus(const std::string& text) {
    if (text == kSearchText || text.find(kReadingMark) != std::string::npos) return;
    std::lock_guard lock(mutex_);
    loopOver_ = true;
}

void CancelGate::Abandon() {
    {
        std::lock_guard lock(mutex_);
        abandoned_ = true;
    }
    answered_.notify_all();
}

bool CancelGate::CancelConfirmed() const {
    std::lock_guard lock(mutex_);
    return state_ == State::Confirmed;
}

}  // namespace skl::frontend
