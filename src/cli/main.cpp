// skldbm: the command-line front end. Runs the same update as the window and
// writes the same files, for scripts, servers and tests.
#include <CLI/CLI.hpp>
#include <cstdio>

#include "cli/DumpCommand.h"
#include "cli/UpdateCommand.h"
#include "model/RunLog.h"

int main(int argc, char** argv) {
    CLI::App app{"Rebuilds the Skyloom airport and navigation databases from simulator scenery."};
    app.require_subcommand(0, 1);
    bool showVersion = false;
    app.add_flag("--version", showVersion, "Print the version and exit");

    skl::cli::UpdateOptions update;
    CLI::App* updateCommand = app.add_subcommand(
        "update", "Read the simulator's scenery and write the nine database files and the log");
    updateCommand->add_option("SIMULATOR_FOLDER", update.SimulatorFolder,
                              "Folder holding fs9.exe or fsx.exe")
        ->required();
    updateCommand->add_option("--scenery-library", update.SceneryLibrary,
                              "FSX scenery library folder (holds scenery.cfg, scenerystatus.bin)");
    updateCommand->add_option(
        "--program-folder", update.ProgramFolder,
        "Skyloom program folder (default: the folder of this program, else the "
        "one remembered or found in the Wine prefix)");
    updateCommand->add_option("--map-drive", update.DriveMappings,
                              "Map a drive letter to a folder, as X=DIR (repeatable)");
    updateCommand->add_flag("--quiet", update.Quiet, "No status or progress on standard error");

    std::string dumpFile;
    std::string dumpFormat = "text";
    CLI::App* dumpCommand = app.add_subcommand(
        "dump", "Print the records of one of the nine database files, live or backup");
    dumpCommand->add_option("FILE", dumpFile, "Airport.skl, Airportskl.old, Ils.skl, ...")
        ->required();
    dumpCommand->add_option("--format", dumpFormat, "Output format: text, csv or json")
        ->check(CLI::IsMember({"text", "csv", "json"}))
        ->capture_default_str();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        int code = app.exit(e);
        return e.get_exit_code() == 0 ? 0 : (code == 0 ? 0 : 2);
    }
    if (showVersion) {
        std::printf("Database Manager %s\n", skl::kVersionLine);
        return 0;
    }
    if (updateCommand->parsed()) return skl::cli::RunUpdateCommand(update);
    if (dumpCommand->parsed()) return skl::cli::RunDumpCommand(dumpFile, dumpFormat);
    std::fputs(app.help().c_str(), stdout);
    return 2;
}
