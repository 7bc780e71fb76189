// Reads scenery.cfg into the area table: slot layer - 1 holds the BGL folder
// ("...\scenery\") and the title of the area of that layer. The first pass
// copies every item into the log and finds the highest layer; the second pass
// collects the active areas. Both run under one block handler that goes on with
// the next statement after an error.
#include <cmath>
#include <cstdlib>

#include "model/LeadingNumber.h"
#include "model/RunLog.h"
#include "platform/Checked.h"
#include "platform/Win1252.h"
#include "scenery/SceneryCfg.h"

namespace skl {

namespace {

constexpr const char* kProcedure = "GetBGLFileDirectories";

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// Converts an ACTIVE= value: TRUE or a non-zero number is true, FALSE or zero
// false; anything else is a type mismatch.
bool ToBoolean(const std::string& text) {
    std::string value = TrimBlanks(Upper1252(text));
    if (value == "TRUE") return true;
    if (value == "FALSE") return false;
    if (value.empty()) throw RunError(kTypeMismatch);
    char* end = nullptr;
    double number = std::strtod(value.c_str(), &end);
    if (end == value.c_str() || *end != '\0' || value.find_first_of("XPIN") != std::string::npos)
        throw RunError(kTypeMismatch);
    return number != 0.0;
}

}  // namespace

void GetBGLFileDirectories(RunState& state) {
    Reading& reading = state.Reading;
    const Selection& selection = state.Selection;
    std::string item;
    std::string title;
    int fileNumber = 0;
    auto extraLines = [&] {
        LogLine(state, item + " ===> " + title);
        LogLine(state, "FileNum: " + NumberWithSign(fileNumber) + " / " +
                           NumberWithSign(state.Files.LogFile));
    };
    auto statement = [&](const std::function<void()>& body) {
        return BlockStatement(state, kProcedure, body, extraLines);
    };
    std::string cfgPath = selection.CfgFolder + selection.CfgFileName;
    std::string nativeCfg = platform::ToNative(selection.Drives, cfgPath);
    auto openCfg = [&] {
        statement([&] { fileNumber = state.Files.Table.FreeFile(); });
        statement([&] { state.Files.Table.OpenInput(fileNumber, nativeCfg); });
    };

    statement([&] { LogLine(state, ""); });
    statement([&] { LogLine(state, "based on: " + cfgPath); });
    statement([&] { LogLine(state, std::string(95, '=')); });
    statement([&] { LogLine(state, ""); });
    statement([&] {
        LogLine(state, selection.IsFsx ? "===== start FSX scenery.cfg ====="
                                       : "===== start FS9 scenery.cfg =====");
    });
    statement([&] { LogLine(state, ""); });

    // First pass: copy the items into the log and size the table.
    reading.AreaCount = 0;
    openCfg();
    std::string bytes;
    statement([&] { bytes = state.Files.Table.ReadInput(fileNumber); });
    CfgItemReader reader{bytes};
    auto atEnd = [&] {
        bool end = true;
        statement([&] {
            state.Files.Table.InputDescriptor(fileNumber);  // a file that is not open is 52
            end = reader.AtEnd();
        });
        return end;
    };
    while (!atEnd()) {
        statement([&] { item = reader.Next(); });
        statement([&] { LogLine(state, item); });
        if (StartsWith(Upper1252(item.substr(0, 6)), "LAYER=")) {
            statement([&] {
                int16_t layer = Round16(LeadingNumber(item.substr(6)));
                if (layer > reading.AreaCount) reading.AreaCount = layer;
            });
        }
    }
    statement([&] { LogLine(state, "===== end scenery.cfg ====="); });
    statement([&] { LogLine(state, ""); });
    statement([&] { LogLine(state, "=== start all bgl files ==="); });
    statement([&] { LogLine(state, ""); });
    statement([&] { state.Files.Table.Close(fileNumber); });
    statement([&] {
        size_t slots = reading.AreaCount > 0 ? static_cast<size_t>(reading.AreaCount) : 0;
        reading.AreaDirectories.assign(slots, std::string());
        reading.AreaTitles.assign(slots, std::string());
    });

    // Second pass: collect the areas. Layer and active run on from one section
    // into the next; path and title are cleared only after a store.
    int16_t layer = 0;
    std::string path;
    bool active = false;
    title.clear();
    auto storeArea = [&] {
        std::string directory = path.size() >= 3 && path.substr(1, 2) == ":\\"
                                    ? path + "\\scenery\\"
                                    : selection.SimulatorFolder + path + "\\scenery\\";
        statement([&] { At(reading.AreaDirectories, layer - 1) = directory; });
        statement([&] { At(reading.AreaTitles, layer - 1) = title; });
    };
    openCfg();
    statement([&] { bytes = state.Files.Table.ReadInput(fileNumber); });
    reader = CfgItemReader{bytes};
    while (!atEnd()) {
        statement([&] { item = CleanCfgItem(reader.Next()); });
        if (StartsWith(item, "LAYER="))
            statement([&] { layer = Round16(LeadingNumber(item.substr(6))); });
        if (StartsWith(item, "LOCAL=") && item.size() > 6) path = item.substr(6);
        if (StartsWith(item, "REMOTE=") && item.size() > 7) path = item.substr(7);
        if (StartsWith(item, "ACTIVE=")) statement([&] { active = ToBoolean(item.substr(7)); });
        if (StartsWith(item, "TITLE=")) title = item.substr(6);
        if (!path.empty()) path = ResolveRelativePath(path, selection.SimulatorFolder);
        if (StartsWith(item, "[AREA.") && layer != 0 && active && !path.empty()) {
            storeArea();
            path.clear();
            title.clear();
        }
    }
    if (!path.empty() && layer != 0 && active) storeArea();
    statement([&] { state.Files.Table.Close(fileNumber); });
}

}  // namespace skl
