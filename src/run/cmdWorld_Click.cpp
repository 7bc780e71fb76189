// The update run: log, scenery configuration, the area loop from the highest
// layer down, and the closing of the files. Every statement runs under the
// block handler: an error is logged as a block and the run goes on with the next
// statement, but 75 and 52 end the run.
#include <string>

#include "bgl/BglReaders.h"
#include "consolidation/Consolidation.h"
#include "run/DatabaseFiles.h"
#include "skl/AirportFile.h"
#include "platform/Win1252.h"
#include "model/RunLog.h"
#include "run/UpdateRun.h"
#include "scenery/BglEnumeration.h"
#include "scenery/SceneryCfg.h"

namespace skl {

namespace {

constexpr const char* kProcedure = "cmdWorld_Click";

// What the run left behind: every table empty, every file closed. A second run
// in one process gives the same files as a first one.
void ResetRun(RunState& state) {
    state.Files.Table.CloseAll();
    state.Files.LogFile = 0;
    state.Reading = Reading();
    state.Tables = Tables();
}

// The area loop: slots from the highest layer down, the BGL files of each in
// name order. Returns false when the user cancelled at the cancel point.
bool ReadAllAreas(RunState& state, FrontEnd& frontEnd) {
    Reading& reading = state.Reading;
    auto statement = [&](const std::function<void()>& body) {
        return BlockStatement(state, kProcedure, body);
    };
    for (int i = reading.AreaCount - 1; i >= 0; --i) {
        if (i != 0) {
            double areaCount = reading.AreaCount;
            frontEnd.SetProgressPercent(100.0 - 100.0 / (areaCount / i));
        }
        std::string directory = reading.AreaDirectories[static_cast<size_t>(i)];
        if (directory.empty()) continue;
        const std::string& title = reading.AreaTitles[static_cast<size_t>(i)];
        reading.StockScenery = IsStockScenery(state.Selection.StockSceneryPath, directory);
        statement([&] {
            reading.CurrentBglFile = state.Selection.NetworkDrive
                                         ? FindBglOnNetworkDrives(state, directory)
                                         : FirstMatch(state, directory);
        });
        reading.AreaNumber = i + 1;
        if (reading.CurrentBglFile.empty()) continue;
        auto status = [&] { return title + "\r ... reading:  " + reading.CurrentBglFile; };
        frontEnd.SetStatusText(status());
        OpenBGLFile(state, directory + reading.CurrentBglFile, MatchNativePath(state));
        ++reading.BglFilesRead;
        for (;;) {
            statement([&] { reading.CurrentBglFile = NextMatch(state); });
            if (reading.CurrentBglFile.empty()) break;
            frontEnd.SetStatusText(status());
            if (frontEnd.ProcessEvents()) CancelRun(state);
            if (!reading.RunActive) {
                frontEnd.SetStatusText(" ");
                frontEnd.EnableExit(true);
                return false;
            }
            OpenBGLFile(state, directory + reading.CurrentBglFile, MatchNativePath(state));
            ++reading.BglFilesRead;
        }
    }
    return true;
}

// Steps after the last BGL file: the passes over the tables and the writers of
// the files derived from them, each followed by its success line whether it
// failed or not.
void ConsolidateAndWrite(RunState& state, FrontEnd& frontEnd) {
    auto statement = [&](const std::function<void()>& body) {
        return BlockStatement(state, kProcedure, body);
    };
    auto pass = [&](const char* name, const std::function<void()>& body) {
        statement(body);
        statement([&] { LogLine(state, std::string(name) + " successfull"); });
    };
    pass("AssignIls2Airport", [&] { AssignIls2Airport(state, frontEnd); });
    pass("RemoveIllegalState", [&] { RemoveIllegalState(state); });
    pass("Check4ILSDoubles", [&] { Check4ILSDoubles(state); });
    const Tables& tables = state.Tables;
    if (tables.DoubleAddonTop() > 0) {
        statement([&] { MergeDoubleAirports(state); });
        const std::string banner(37, '=');
        statement([&] { LogLine(state, banner); });
        statement([&] { LogLine(state, "Maybe some double AFCAD file found!!!"); });
        for (int32_t m = 1; m <= tables.DoubleAddonTop(); ++m) {
            statement([&] {
                LogLine(state, "AFCAD Airport: " +
                                   TrimBlanks(tables.DoubleAddonIcaos[static_cast<size_t>(m)]) +
                                   " found!!!");
            });
        }
        statement([&] { LogLine(state, banner); });
    }
    pass("WriteAirports2File", [&] { WriteAirports2File(state); });
    pass("FillRegionTable", [&] { FillRegionTable(state); });
    pass("FillCountryTable", [&] { FillCountryTable(state, frontEnd); });
    pass("FillStateTable", [&] { FillStateTable(state, frontEnd); });
    pass("FillCityTable", [&] { FillCityTable(state, frontEnd); });
}

}  // namespace

bool IsStockScenery(const std::string& stockSceneryPath, const std::string& directory) {
    return Upper1252(directory).find(Upper1252(stockSceneryPath)) != std::string::npos;
}

void CancelRun(RunState& state) {
    // Errors are ignored here: the cancel must always get the user back to the
    // set they had.
    if (state.Reading.RunActive) RestoreOldDatabases(state);
    try {
        LogLine(state, "Terminated via User!!!");
    } catch (...) {
    }
    state.Files.Table.Close(state.Files.LogFile);
}

RunEnd cmdWorld_Click(RunState& state, FrontEnd& frontEnd) {
    ResetRun(state);
    if (DatabaseSetBusy(state)) {
        frontEnd.SetStatusText("Another update of this database is running");
        return RunEnd::Busy;
    }
    OpenLogFile(state, state.Selection.IsFsx ? "SKLDBM_FS10.LOG" : "SKLDBM_FS09.LOG");
    if (!state.Files.Table.IsOpen(state.Files.LogFile)) {
        frontEnd.SetStatusText("Cannot create the log file " + state.Files.LogFilePath);
        state.Files.Table.CloseAll();
        return RunEnd::LogNotCreated;
    }
    auto statement = [&](const std::function<void()>& body) {
        return BlockStatement(state, kProcedure, body);
    };
    try {
        statement([&] { state.Reading.RunActive = true; });
        statement([&] { frontEnd.SetStatusText("Searching for *.bgl files!"); });
        statement([&] {
            frontEnd.EnableCancel(true);
            frontEnd.EnableExit(false);
        });
        statement([&] { GetBGLFileDirectories(state); });
        statement([&] { OpenDatabaseFiles(state, frontEnd); });
        statement([&] { frontEnd.ShowProgress(true); });
        bool finished = true;
        statement([&] { finished = ReadAllAreas(state, frontEnd); });
        if (!finished) return RunEnd::Cancelled;
        ConsolidateAndWrite(state, frontEnd);
        Files& files = state.Files;
        for (int16_t Files::*handle :
             {&Files::TaxiFile, &Files::PolyFile, &Files::MarkerFile, &Files::RegionFile,
              &Files::StateFile, &Files::CountryFile, &Files::CityFile, &Files::AirportFile,
              &Files::IlsFile, &Files::LogFile})
            statement([&] { files.Table.Close(files.*handle); });
        ReleaseDatabaseSet(state);
        statement([&] { frontEnd.SetStatusText("Finished!"); });
        statement([&] {
            frontEnd.EnableCancel(false);
            frontEnd.EnableExit(true);
            frontEnd.EnableUpdate(false);
        });
        return RunEnd::Finished;
    } catch (const RunStopped&) {
        state.Files.Table.CloseAll();
        DropDatabaseLock(state);
        return RunEnd::Stopped;
    } catch (...) {
        // 75 or 52 in a top procedure, or a log that can no longer be written:
        // no rollback, every file is closed and the process is to end. The
        // marker stays, so that the next run heals the set.
        frontEnd.MessageBox(kAbortText, MessageButtons::Ok, kMessageTitle);
        frontEnd.Unload();
        state.Files.Table.CloseAll();
        DropDatabaseLock(state);
        return RunEnd::Aborted;
    }
}

}  // namespace skl
