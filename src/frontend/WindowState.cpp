#include "frontend/WindowState.h"

#include "platform/Win1252.h"

namespace skl::frontend {

OutcomeView ViewOfOutcome(const Validation& validation) {
    OutcomeView view;
    view.InvalidPathText = validation.InvalidPathText;
    view.MessageText = validation.MessageText;
    view.UpdateCaption = validation.UpdateCaption;
    view.UpdateEnabled = validation.UpdateEnabled;
    switch (validation.Result) {
        case Outcome::NoSimulator:
        case Outcome::Fs2004:
        case Outcome::FsxReady:
            view.MessageColour = Colour::Blue;
            break;
        case Outcome::FsxLibraryMissing:
            view.MessageColour = Colour::Blue;
            view.LibraryPickerEnabled = true;
            view.LibraryLabelColour = Colour::Black;
            break;
        case Outcome::FsxNetworkReady:
            break;
        case Outcome::FsxNetworkCopyMissing:
            view.MessageColour = Colour::Red;
            break;
    }
    return view;
}

Controls AtRunStart(const Controls& before) {
    Controls during = before;
    during.Update = false;
    during.Exit = false;
    during.SimulatorPicker = false;
    during.LibraryPicker = false;
    return during;
}

Controls AtRunEnd(const Controls& before, std::optional<bool> updateRequest) {
    Controls after = before;
    after.Update = updateRequest.value_or(before.Update);
    after.Cancel = false;
    after.Exit = true;
    after.SimulatorPicker = true;
    return after;
}

bool EndsProcess(RunEnd end) {
    return end == RunEnd::Aborted || end == RunEnd::Stopped;
}

std::string DisplayText(const std::string& text) {
    std::string shown = text;
    for (char& c : shown) {
        if (c == '\r') c = '\n';
    }
    return Win1252ToUtf8(shown);
}

}  // namespace skl::frontend
