#pragma once

#include <string>
#include <string_view>

namespace skl {

// Text in the run is bytes of the Windows-1252 code page. Upper and lower case
// of the codes 128 to 255 follow that code page.
char ToUpper1252(char c);
char ToLower1252(char c);
std::string Upper1252(std::string_view text);
std::string Lower1252(std::string_view text);

// Removes blanks (only blanks) at both ends.
std::string TrimBlanks(std::string_view text);

// Native names are UTF-8. A character that Windows-1252 cannot hold becomes '?'.
// Bytes that are no valid UTF-8 are taken as Windows-1252 bytes as they stand.
std::string Utf8ToWin1252(std::string_view utf8);
std::string Win1252ToUtf8(std::string_view text);

// Appends the UTF-8 form of one Unicode code point (used where escaped text such
// as a registry value is turned into a native name first).
void AppendUtf8(std::string& out, char32_t codePoint);

}  // namespace skl
