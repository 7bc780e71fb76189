#include <gtest/gtest.h>

#include <csignal>

#include "cli/TerminalFrontEnd.h"
#include "cli/UpdateCommand.h"
#include "support/BglBuilder.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

namespace fs = std::filesystem;
using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

struct Command {
    test::TempDir Dir;
    cli::UpdateOptions Options;
    std::string Out;
    std::string Err;

    Command() {
        Options.SimulatorFolder = (Dir.Path / "sim").string();
        Options.ProgramFolder = (Dir.Path / "program").string();
        Options.Quiet = true;
        test::MakeProgramFolder(Dir.Path / "program");
    }
    int Run() {
        CaptureStdout();
        CaptureStderr();
        int status = cli::RunUpdateCommand(Options);
        Out = GetCapturedStdout();
        Err = GetCapturedStderr();
        return status;
    }
};

TEST(UpdateCommand, ExitStatusTellsHowTheRunEnded) {
    Command missingFolder;
    EXPECT_EQ(missingFolder.Run(), 2);

    Command noSimulator;
    fs::create_directories(noSimulator.Dir.Path / "sim");
    EXPECT_EQ(noSimulator.Run(), 2);
    EXPECT_EQ(noSimulator.Err, "Please select FS path in left drive and directory box!\n");

    Command noLibrary;
    test::MakeFsxFolder(noLibrary.Dir.Path / "sim");
    EXPECT_EQ(noLibrary.Run(), 2);
    EXPECT_EQ(noLibrary.Err,
              "Please select path for scenery library in right drive and directory box!\n");
    noLibrary.Options.SceneryLibrary = (noLibrary.Dir.Path / "lib").string();
    test::MakeFsxLibrary(noLibrary.Dir.Path / "lib", "", /*withStatusBin=*/false);
    EXPECT_EQ(noLibrary.Run(), 2);
    test::MakeFsxLibrary(noLibrary.Dir.Path / "lib", "");
    EXPECT_EQ(noLibrary.Run(), 0);
    EXPECT_TRUE(fs::exists(noLibrary.Dir.Path / "program" / "SKLDBM_FS10.LOG"));

    Command badMapping;
    badMapping.Options.DriveMappings = {"DD=/tmp"};
    EXPECT_EQ(badMapping.Run(), 2);

    Command finished;
    test::MakeFs9Folder(finished.Dir.Path / "sim",
                        test::SceneryCfg({{"World", "Scenery\\World", "", "1", "TRUE"}}));
    test::BglFile bgl;
    bgl.Sections = {test::Section(test::kSectionTerrain, {{test::BglRecord{1, "x"}}})};
    test::WriteFile(finished.Dir.Path / "sim/Scenery/World/scenery/a.bgl", test::BuildBgl(bgl));
    EXPECT_EQ(finished.Run(), 0);
    EXPECT_NE(finished.Out.find("BGL files read: 1\n"), std::string::npos) << finished.Out;
    EXPECT_EQ(finished.Err, "");

    Command aborted;
    test::MakeFs9Folder(aborted.Dir.Path / "sim", "");
    fs::remove(aborted.Dir.Path / "sim" / "scenery.cfg");
    EXPECT_EQ(aborted.Run(), 1);
    EXPECT_NE(aborted.Err.find("Program will now abort!"), std::string::npos);

    Command noLog;
    test::MakeFs9Folder(noLog.Dir.Path / "sim", "");
    noLog.Options.ProgramFolder = (noLog.Dir.Path / "gone").string();
    EXPECT_EQ(noLog.Run(), 1);
    EXPECT_NE(noLog.Err.find("Cannot create the log file "), std::string::npos);
}

TEST(TerminalFrontEnd, CtrlCIsACancelAtTheCancelPointAndASecondOneEndsTheProcess) {
    std::FILE* sink = std::tmpfile();
    cli::TerminalFrontEnd frontEnd(/*quiet=*/false, sink);
    EXPECT_FALSE(frontEnd.ProcessEvents());
    std::raise(SIGINT);
    EXPECT_TRUE(frontEnd.CancelPending());
    EXPECT_TRUE(frontEnd.ProcessEvents());
    EXPECT_FALSE(frontEnd.ProcessEvents());
    EXPECT_EXIT(
        {
            std::raise(SIGINT);
            std::raise(SIGINT);
        },
        testing::ExitedWithCode(130), "");
    // Status lines are plain lines when the output is no terminal.
    frontEnd.SetStatusText("AREA\r ... reading:  A.BGL");
    std::rewind(sink);
    char line[64] = {};
    ASSERT_NE(std::fgets(line, sizeof line, sink), nullptr);
    EXPECT_STREQ(line, "AREA ... reading:  A.BGL\n");
    std::fclose(sink);
}

}  // namespace
}  // namespace skl
