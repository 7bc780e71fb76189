#pragma once

#include <cstdint>
#include <string>

#include "model/RunState.h"

namespace skl {

// The code packed in a 32-bit value: up to five base-38 digits, the last
// character in the lowest digit (0 and 1 no character, 2-11 "0"-"9", 12-37
// "A"-"Z"). A shifted field keeps the digits above 5 low bits.
std::string GetIcaoCode04(RunState& state, int32_t value, bool shifted);

// Packed positions: latitude 0 at the North Pole, 2^29 per 180 degrees south;
// longitude 0 at 180 west, 3 * 2^28 per 360 degrees east. 64-bit arithmetic.
double DecodeLatitude(int32_t value);
double DecodeLongitude(int32_t value);

// Altitude of airports, ILS stations and markers from thousandths of a metre:
// whole metres by floor, then feet rounded half to even.
int32_t AltitudeFeetRounded(int32_t millimetres);

// Runway altitude, length and width: the value in feet rounded down, checked
// against 32 bits.
int32_t FloorFeet(double metres);

// MHz from Hz: the first six characters of the frequency's decimal text, read
// back as a number and divided by 1000 (118027500 gives 118.027).
float FrequencyMhz(int32_t hertz);

// Drops every NUL character and trims blanks at both ends.
std::string StripNulls(std::string_view text);

// Capitalises a name: the first character upper-cased, every further one
// lower-cased after an input character of code 65 or more, upper-cased
// otherwise (after a blank, digit, hyphen, point or apostrophe).
std::string ProperCase(std::string_view text);

}  // namespace skl
