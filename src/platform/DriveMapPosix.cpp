// The kind of drive behind a folder on POSIX: a network file system or a local
// one, told by statfs.
#include <sys/statfs.h>

#include <cstdint>

#include "platform/DriveMap.h"
#include "platform/FileSystem.h"

namespace skl::platform {

bool IsNetworkFolder(const std::string& nativeFolder) {
    struct statfs info {};
    if (::statfs(nativeFolder.c_str(), &info) != 0) return false;
    // The magic numbers of the network file systems (linux/magic.h and the
    // file systems' own headers). fuse mounts such as sshfs cannot be told apart.
    switch (static_cast<uint32_t>(info.f_type)) {
        case 0x6969:      // NFS
        case 0x517B:      // SMB
        case 0xFF534D42:  // CIFS
        case 0xFE534D42:  // SMB2
        case 0x564C:      // NCP
        case 0x5346414F:  // AFS
        case 0x73757245:  // CODA
            return true;
        default:
            return false;
    }
}

int DriveType(const DriveMap& map, char letter) {
    constexpr int kNoRootDir = 1;
    constexpr int kFixed = 3;
    constexpr int kRemote = 4;
    int index = -1;
    if (letter >= 'a' && letter <= 'z') index = letter - 'a';
    if (letter >= 'A' && letter <= 'Z') index = letter - 'A';
    if (index < 0) return kNoRootDir;
    const std::string& folder = map.Folders[index];
    if (folder.empty() || !IsDirectory(folder)) return kNoRootDir;
    return IsNetworkFolder(folder) ? kRemote : kFixed;
}

}  // namespace skl::platform
