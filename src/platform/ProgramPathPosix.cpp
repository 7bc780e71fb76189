// The running program's folder on Linux, from /proc/self/exe.
#include <filesystem>

#include "platform/ProgramPath.h"

namespace skl::platform {

std::string ExecutableFolder() {
    namespace fs = std::filesystem;
    std::error_code ec;
    fs::path self = fs::read_symlink("/proc/self/exe", ec);
    return ec ? fs::current_path(ec).string() : self.parent_path().string();
}

}  // namespace skl::platform
