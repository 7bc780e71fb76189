#pragma once

#include <string_view>

namespace skl {

// The leading number of a text as a double: blanks are ignored, no number is 0.
double LeadingNumber(std::string_view text);

}  // namespace skl
