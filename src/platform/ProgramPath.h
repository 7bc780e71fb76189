#pragma once

#include <string>

namespace skl::platform {

// The native folder that holds the running program; the current folder when
// the system cannot tell.
std::string ExecutableFolder();

}  // namespace skl::platform
