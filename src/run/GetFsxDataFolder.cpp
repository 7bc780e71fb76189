#include "platform/DriveMap.h"
#include "run/ValidatePaths.h"

namespace skl {

std::string GetFsxDataFolder(const Selection& selection, const std::string& simulatorFolder) {
    std::string folder;
    if (!selection.Drives.Identity) {
        std::string native = platform::ToNative(selection.Drives, simulatorFolder);
        if (auto prefix = platform::FindWinePrefix(native))
            folder = platform::ReadCommonAppData(*prefix);
    }
    folder += "\\Microsoft\\FSX\\";
    // A value that ends in a backslash would give a double one; the leading
    // backslashes of a network path are left alone.
    size_t twin = folder.size() > 4 ? folder.find("\\\\", 4) : std::string::npos;
    if (twin != std::string::npos) folder.erase(twin, 1);
    return folder;
}

}  // namespace skl
