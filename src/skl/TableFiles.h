#pragma once

#include <cstddef>
#include <string_view>

#include "skl/ByteWriter.h"

namespace skl {

// The records of Region.skl, Country.skl, State.skl and City.skl: text fields
// of the given widths, blank-padded. Each file starts with one i32 of its own
// meaning (Region 1, Country the last index, State the last index counting the
// pairs not written, City the last airport index).
inline constexpr std::size_t kRegionSize = 30;
inline constexpr std::size_t kCountrySize = 70;
inline constexpr std::size_t kStateSize = 80;
inline constexpr std::size_t kCitySize = 120;
inline constexpr const char* kRegionName = "World";

void PutRegion(ByteWriter& out);
void PutCountry(ByteWriter& out, std::string_view country);
void PutState(ByteWriter& out, std::string_view state, std::string_view country);
void PutCity(ByteWriter& out, std::string_view key);

}  // namespace skl
