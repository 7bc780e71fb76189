#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "model/RunState.h"

namespace skl {

// Opens one BGL file under a free file number, walks it and logs its path when
// it was taken as a BGL file. `path` is the Windows path the log shows,
// `nativePath` the file to open.
void OpenBGLFile(RunState& state, const std::string& path, const std::string& nativePath);

// The readers of the subsections, each given the subsection's file position,
// record count and size in bytes; each positions the file itself.
void ReadNamelistSubsection(RunState& state, int32_t position, int32_t recordCount, int32_t size);
void ReadAirportSubsection(RunState& state, int32_t position, int32_t recordCount, int32_t size);
void ReadVORILSSubsection(RunState& state, int32_t position, int32_t recordCount, int32_t size);
void ReadMarkerSubsection(RunState& state, int32_t position, int32_t recordCount, int32_t size);

// Moves the position of an airport subrecord's reader by `count` bytes. A move
// back (a header size below 6) is an invalid argument (5) unless it lands where
// the airport's walk ends.
void MoveInAirportWalk(RunState& state, int64_t count);

// The readers of airport subrecords, each given the number of bytes behind the
// subrecord's header.
void ReadAirportName04(RunState& state, int32_t length);
void ReadRunway04(RunState& state, int32_t length);
void ReadComm04(RunState& state, int32_t length);
void ReadParking04(RunState& state, int32_t length);
void ReadAirportDelete04(RunState& state, int32_t length);
void ReadAirportDelete10(RunState& state, int32_t length);
// Both forms of the delete record: the fixed size read and the highest bit of
// the flag word taken apart.
void ReadAirportDelete(RunState& state, int32_t length, int32_t fixedSize, int highestBit);
void ReadApron104(RunState& state, int32_t length);
void ReadTaxiPoints04(RunState& state, int32_t length);
void ReadTaxiPath04(RunState& state, int32_t length);

// The taxi names subrecord that may stand directly behind the taxi paths:
// whether it was there, and how many names it held.
struct TaxiNames {
    bool Read = false;
    int16_t Count = 0;
};
TaxiNames ReadTaxiName04(RunState& state);

// The fields of a parking spot's packed word.
struct ParkingBits {
    uint8_t ParkingName = 0;
    uint8_t ParkingType = 0;
    uint8_t AirlineCodeCount = 0;
    int32_t ParkingNumber = 0;
};
ParkingBits GetParkingBits(uint32_t word);

// The reader of each kind of section that the walk hands subsections to.
using SubsectionReader = std::function<void(RunState&, int32_t, int32_t, int32_t)>;
struct SectionReaders {
    SubsectionReader NameList = ReadNamelistSubsection;
    SubsectionReader Airports = ReadAirportSubsection;
    SubsectionReader VorIls = ReadVORILSSubsection;
    SubsectionReader Markers = ReadMarkerSubsection;
};

// Walks the open BGL file: 0 when it was taken as a BGL file, -1 when not.
int ReadBglFile(RunState& state, const SectionReaders& readers = SectionReaders());

}  // namespace skl
