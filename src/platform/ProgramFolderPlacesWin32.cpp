#include <windows.h>

#include <algorithm>
#include <cwchar>

#include "platform/ProgramFolderPlaces.h"

namespace skl::platform {

namespace {

constexpr const char* kRootName = "HKEY_CURRENT_USER\\";
constexpr const char* kMemoryKey = "HKEY_CURRENT_USER\\Software\\Skyloom\\Database Manager";
constexpr const wchar_t* kMemoryValue = L"ProgramFolder";

std::wstring Wide(const std::string& utf8) {
    if (utf8.empty()) return {};
    int size =
        ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring wide(static_cast<size_t>(size), L'\0');
    ::MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(),
                          size);
    return wide;
}

std::string Utf8(const std::wstring& wide) {
    if (wide.empty()) return {};
    int size = ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()),
                                     nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(size), '\0');
    ::WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), utf8.data(), size,
                          nullptr, nullptr);
    return utf8;
}

// The key below HKEY_CURRENT_USER that a memory names.
std::wstring KeyOf(const std::string& memory) {
    std::string root = kRootName;
    if (memory.compare(0, root.size(), root) != 0) return {};
    return Wide(memory.substr(root.size()));
}

std::string SystemText(DWORD error) {
    wchar_t* text = nullptr;
    ::FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, error, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::string message = text ? Utf8(text) : "error " + std::to_string(error);
    if (text) ::LocalFree(text);
    while (!message.empty() && (message.back() == '\n' || message.back() == '\r'))
        message.pop_back();
    return message;
}

std::string Environment(const wchar_t* name) {
    DWORD size = ::GetEnvironmentVariableW(name, nullptr, 0);
    if (size == 0) return {};
    std::wstring value(size, L'\0');
    DWORD got = ::GetEnvironmentVariableW(name, value.data(), size);
    value.resize(got);
    return Utf8(value);
}

std::vector<std::string> ListNames(const std::string& folder, bool folders) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW found{};
    HANDLE search = ::FindFirstFileW(Wide(folder + "\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
        std::wstring name = found.cFileName;
        if (name == L"." || name == L"..") continue;
        bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isFolder == folders) names.push_back(Utf8(name));
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
    return names;
}

}  // namespace

std::string ProgramFolderMemory() {
    return kMemoryKey;
}

std::optional<std::string> ReadProgramFolderMemory(const std::string& memory) {
    std::wstring key = KeyOf(memory);
    if (key.empty()) return std::nullopt;
    DWORD bytes = 0;
    if (::RegGetValueW(HKEY_CURRENT_USER, key.c_str(), kMemoryValue, RRF_RT_REG_SZ, nullptr,
                       nullptr, &bytes) != ERROR_SUCCESS ||
        bytes == 0)
        return std::nullopt;
    std::wstring value(bytes / sizeof(wchar_t) + 1, L'\0');
    if (::RegGetValueW(HKEY_CURRENT_USER, key.c_str(), kMemoryValue, RRF_RT_REG_SZ, nullptr,
                       value.data(), &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    value.resize(std::wcslen(value.c_str()));
    if (value.empty()) return std::nullopt;
    return Utf8(value);
}

std::string WriteProgramFolderMemory(const std::string& memory, const std::string& folder) {
    std::wstring key = KeyOf(memory);
    if (key.empty()) return "no place to remember it";
    std::wstring value = Wide(folder);
    LSTATUS status =
        ::RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), kMemoryValue, REG_SZ, value.c_str(),
                          static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    if (status != ERROR_SUCCESS)
        return "cannot write " + memory + ": " + SystemText(static_cast<DWORD>(status));
    return {};
}

std::vector<std::string> UsualWinePrefixes() {
    return {};
}

std::vector<std::string> ProgramFilesFolders() {
    std::vector<std::string> folders;
    for (const wchar_t* name : {L"ProgramW6432", L"ProgramFiles", L"ProgramFiles(x86)"}) {
        std::string folder = Environment(name);
        if (!folder.empty() && std::find(folders.begin(), folders.end(), folder) == folders.end())
            folders.push_back(folder);
    }
    return folders;
}

std::string JoinPath(const std::string& folder, const std::string& name) {
    if (folder.empty() || folder.back() == '\\' || folder.back() == '/') return folder + name;
    return folder + '\\' + name;
}

std::vector<std::string> ListSubfolderNames(const std::string& folder) {
    return ListNames(folder, true);
}

std::vector<std::string> ListFileNames(const std::string& folder) {
    return ListNames(folder, false);
}

}  // namespace skl::platform
