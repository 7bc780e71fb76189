#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/FrontEnd.h"

namespace skl::test {

// A front end that notes every call, for tests of whole runs. `CancelAt` makes
// the given call of ProcessEvents (counted from 1) a confirmed cancel.
struct RecordingFrontEnd : FrontEnd {
    std::vector<std::string> Statuses;
    std::vector<double> Percents;
    std::vector<std::string> Messages;
    int EventCalls = 0;
    int CancelAt = 0;
    bool ProgressShown = false;
    bool Unloaded = false;

    void SetStatusText(const std::string& text) override { Statuses.push_back(text); }
    void SetProgressPercent(double percent) override { Percents.push_back(percent); }
    void ShowProgress(bool visible) override { ProgressShown = visible; }
    bool ProcessEvents() override { return ++EventCalls == CancelAt; }
    MessageAnswer MessageBox(const std::string& text, MessageButtons,
                             const std::string& title) override {
        Messages.push_back(title + ": " + text);
        return MessageAnswer::Ok;
    }
    void EnableUpdate(bool) override {}
    void EnableCancel(bool) override {}
    void EnableExit(bool) override {}
    void Unload() override { Unloaded = true; }
};

}  // namespace skl::test
