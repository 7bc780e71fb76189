#pragma once

#include <condition_variable>
#include <mutex>
#include <string>

namespace skl::frontend {

// The meeting point of the window thread, which asks the cancel question, and
// the worker, which takes a confirmed cancel at the one cancel point of the area
// loop. While a question is open the worker waits at that point for the answer.
class CancelGate {
  public:
    enum class Ask {
        // Show the question: its answer will be taken at the next cancel point.
        Question,
        // The area loop is over (or no run is under way): no cancel point comes.
        NoCancelPoint,
        // A question is open already.
        Open,
        // A cancel is confirmed and waits for the cancel point.
        Confirmed,
    };

    // Window thread: a run starts or has ended. The end releases a worker that
    // still waits and drops an answer that no cancel point took.
    void Start();
    void Stop();

    // Window thread: a request to cancel. Returns Question when the question is
    // to be shown; it is open from then until Answer.
    Ask BeginQuestion();
    void Answer(bool yes);

    // Worker: the cancel point. Waits while a question is open; true (once) when
    // the answer was yes.
    bool AtCancelPoint();

    // Worker: a status text of the run. The area loop shows only the search text
    // and its reading texts; any other text comes after it (or ends the run), so
    // from then on no cancel point comes.
    void NoteStatus(const std::string& text);

    bool CancelConfirmed() const;

    // Window thread: the window goes away during a run. Every cancel point from
    // now on takes a confirmed cancel, so that the run puts the old set back and
    // ends soon.
    void Abandon();

  private:
    enum class State { Idle, Asking, Confirmed };

    mutable std::mutex mutex_;
    std::condition_variable answered_;
    State state_ = State::Idle;
    bool running_ = false;
    bool loopOver_ = false;
    bool abandoned_ = false;
};

}  // namespace skl::frontend
