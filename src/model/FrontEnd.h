#pragma once

#include <string>

namespace skl {

enum class MessageButtons { Ok, YesNo };
enum class MessageAnswer { Ok, Yes, No };

// What the run needs of a front end: the window and the terminal front end both
// implement it. Texts are Windows-1252; a carriage return in a status text
// breaks the line.
class FrontEnd {
public:
    virtual ~FrontEnd() = default;
    virtual void SetStatusText(const std::string& text) = 0;
    virtual void SetProgressPercent(double percent) = 0;
    virtual void ShowProgress(bool visible) = 0;
    // The one cancel point of a run. Handles pending user events once and
    // returns true when the user has confirmed a cancel.
    virtual bool ProcessEvents() = 0;
    virtual MessageAnswer MessageBox(const std::string& text, MessageButtons buttons,
                                     const std::string& title) = 0;
    virtual void EnableUpdate(bool enabled) = 0;
    virtual void EnableCancel(bool enabled) = 0;
    virtual void EnableExit(bool enabled) = 0;
    // Unloads the window on the abort path (the window writes its ini file).
    virtual void Unload() = 0;
};

}  // namespace skl
