#include <algorithm>
#include <vector>

#include "scenery/SceneryCfg.h"

namespace skl {

std::string ResolveRelativePath(std::string path, std::string base) {
    std::replace(path.begin(), path.end(), '/', '\\');
    std::replace(base.begin(), base.end(), '/', '\\');
    if (path.find("..\\") == std::string::npos) return path;

    int count = 0;
    while (count < 999 && path.rfind("..\\", 0) == 0) {
        path.erase(0, 3);
        ++count;
    }
    // The base's parts keep their trailing backslash; text behind the last
    // backslash is dropped.
    std::vector<std::string> parts;
    size_t start = 0;
    for (size_t slash = base.find('\\'); slash != std::string::npos;
         slash = base.find('\\', start)) {
        parts.push_back(base.substr(start, slash - start + 1));
        start = slash + 1;
    }
    int last = static_cast<int>(parts.size()) - 1;
    if (count > last) return "";
    std::string joined;
    for (int i = 0; i <= last - count; ++i) joined += parts[static_cast<size_t>(i)];
    return joined + path;
}

}  // namespace skl
