#pragma once

#include <string>
#include <vector>

namespace skl::cli {

struct UpdateOptions {
    std::string SimulatorFolder;
    std::string SceneryLibrary;
    std::string ProgramFolder;
    std::vector<std::string> DriveMappings;  // "X=DIR"
    bool Quiet = false;
};

// Runs `skldbm update`; returns the exit status: 0 finished, 1 aborted, 2 bad
// arguments or a selection that allows no update, 130 cancelled.
int RunUpdateCommand(const UpdateOptions& options);

}  // namespace skl::cli
