#pragma once

#include <cstddef>

#include "model/Records.h"
#include "model/RunState.h"
#include "skl/ByteWriter.h"

namespace skl {

// Packed sizes of the records of Airport.skl (and of the ILS record of Ils.skl).
inline constexpr std::size_t kAirportFixedSize = 224;
inline constexpr std::size_t kRunwaySize = 48;
inline constexpr std::size_t kCommSize = 58;
inline constexpr std::size_t kParkingSize = 29;
inline constexpr std::size_t kIlsSize = 107;

// Each record put out field by field, little-endian.
void PutRunway(ByteWriter& out, const RunwayRecord& runway);
void PutComm(ByteWriter& out, const CommRecord& comm);
void PutParking(ByteWriter& out, const ParkingRecord& parking);
void PutIls(ByteWriter& out, const IlsRecord& ils);
void PutAirport(ByteWriter& out, const AirportRecord& airport);

// Writes AirportTable to the Airport file: the number of the last airport, then
// every airport not withdrawn (a "#" first in its code), renumbered densely from
// 0. No handler: an error goes to the driver's.
void WriteAirports2File(RunState& state);

}  // namespace skl
