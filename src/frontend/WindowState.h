#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "run/UpdateRun.h"
#include "run/ValidatePaths.h"

// What the window shows, decided without the window: the captions, colours and
// enabled states of each validation outcome and of the phases of a run.
namespace skl::frontend {

inline constexpr const char* kWindowCaption = "Skyloom Database Manager";
inline constexpr const char* kTitleText = "Database Manager";
inline constexpr const char* kSubtitleText = "for Flight Simulator 2004 and FlightSimulator X";
inline constexpr const char* kExplanationText =
    "This program reads Flight Simulator's Airport and Facility Data files"
    " and updates the Skyloom databases."
    " Run this program after you have installed new scenery files!!";
inline constexpr const char* kFrameCaption = "Airport Updates";
inline constexpr const char* kDirFsCaption = "Select Flight Simulator Path here!";
inline constexpr const char* kDirScenLibCaption = "Select Scenery Library Path here!";
inline constexpr const char* kInvalidPathDesignText = "Invalid path!!! Choose different path!!!";
inline constexpr const char* kUpdateDesignCaption = "Update  &Airports";
inline constexpr const char* kCancelCaption = "&Cancel";
inline constexpr const char* kExitCaption = "&Exit";
inline constexpr const char* kHelpCaption = "&Help";
inline constexpr const char* kCancelQuestion =
    "WARNING!\rCancelling this process will restore the old database files!\r"
    "Do you wish to cancel this process?";
inline constexpr const char* kHelpPage = "/Help/dbmanager.htm";

// Label colours as RGB values.
enum class Colour : uint32_t {
    Black = 0x000000,
    Blue = 0x0000FF,
    Red = 0xFF0000,
    Grey = 0x808080,
};

// What one validation outcome shows. Texts are Windows-1252 with CR line breaks.
struct OutcomeView {
    std::string InvalidPathText;
    std::string MessageText;
    // No value: the message keeps the colour it has.
    std::optional<Colour> MessageColour;
    std::string UpdateCaption;
    bool UpdateEnabled = false;
    // The right picker and the colour of its heading.
    bool LibraryPickerEnabled = false;
    Colour LibraryLabelColour = Colour::Grey;
};

OutcomeView ViewOfOutcome(const Validation& validation);

// The enabled states that the phases of a run change.
struct Controls {
    bool Update = false;
    bool Cancel = false;
    bool Exit = true;
    bool SimulatorPicker = true;
    bool LibraryPicker = true;
};

// While a run is under way nothing can start a second run or change the
// selection: the pickers, the update button and the exit button are disabled.
// The cancel button is left to the run, which enables it once its log is open.
Controls AtRunStart(const Controls& before);

// After a run that leaves the window open: the pickers come back, exit is
// enabled, cancel disabled, and the update button is what the run asked for
// (a finished run disables it) or, when it asked nothing, what it was before.
Controls AtRunEnd(const Controls& before, std::optional<bool> updateRequest);

// An abort and a failed installation check end the process once the window has
// unloaded.
bool EndsProcess(RunEnd end);

// Windows-1252 text as UTF-8 for display, a carriage return breaking the line.
std::string DisplayText(const std::string& text);

}  // namespace skl::frontend
