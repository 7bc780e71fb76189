#pragma once

#include <cstdint>
#include <memory>
#include <ostream>
#include <string_view>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "model/FixedText.h"

namespace skl {

// The in-memory airport model that the readers fill, the passes change and the
// writers put out. Field order is the order of the database files.

struct RunwayRecord {
    FixedText<5> Icao;
    FixedText<5> PrimaryDesignator;
    FixedText<5> SecondaryDesignator;
    float Latitude = 0;
    float Longitude = 0;
    float Heading = 0;
    int32_t AltitudeFeet = 0;
    int16_t LengthFeet = 0;
    int16_t WidthFeet = 0;
    int16_t Surface = 0;
    FixedText<5> PrimaryIlsIdent;
    FixedText<5> SecondaryIlsIdent;
    FixedText<1> RecordKind;
};

struct CommRecord {
    FixedText<5> Icao;
    FixedText<40> CommName;
    float Latitude = 0;
    float Longitude = 0;
    float FrequencyMhz = 0;
    uint8_t CommType = 0;
};

struct ParkingRecord {
    FixedText<5> Icao;
    float Latitude = 0;
    float Longitude = 0;
    int32_t ParkingNumber = 0;
    int32_t ParkingType = 0;
    int32_t ParkingName = 0;
    float Heading = 0;
};

struct IlsRecord {
    int32_t AirportIndex = 0;
    FixedText<5> Ident;
    FixedText<40> Name;
    FixedText<5> Reserved;
    float Latitude = 0;
    float Longitude = 0;
    float GsLatitude = 0;
    float GsLongitude = 0;
    float GsPitch = 0;
    float FrequencyMhz = 0;
    float Heading = 0;
    int32_t AltitudeFeet = 0;
    FixedText<15> BglFileName;
    FixedText<5> RunwayIdent;
    FixedText<1> Kind;
};

struct AirportRecord {
    int32_t AirportNumber = 0;
    FixedText<5> Icao;
    FixedText<40> AirportName;
    FixedText<40> Country;
    FixedText<40> State;
    FixedText<40> City;
    float Latitude = 0;
    float Longitude = 0;
    float TowerLatitude = 0;
    float TowerLongitude = 0;
    float AtisFrequency = 0;
    int32_t AltitudeFeet = 0;
    FixedText<15> BglFileName;
    int32_t RunwayCount = 0;
    int32_t CommCount = 0;
    int32_t IlsCount = 0;
    int32_t ParkingCount = 0;
    std::vector<RunwayRecord> Runways;
    std::vector<CommRecord> Comms;
    std::vector<IlsRecord> Ils;
    std::vector<ParkingRecord> Parkings;
};

// A string of a name list, shared by every entry that names it: an entry holds
// a pointer, not a copy, so that a list of 32767 entries naming one long string
// costs no more than the string.
class SharedText {
public:
    SharedText() = default;
    explicit SharedText(std::shared_ptr<const std::string> text) : text_(std::move(text)) {}
    std::string_view Str() const { return text_ ? std::string_view(*text_) : std::string_view(); }
    friend bool operator==(const SharedText& a, std::string_view b) { return a.Str() == b; }
    friend std::ostream& operator<<(std::ostream& out, const SharedText& t) { return out << t.Str(); }

private:
    std::shared_ptr<const std::string> text_;
};

// One airport of the name list read last.
struct NameEntry {
    SharedText Region;
    SharedText Country;
    SharedText State;
    SharedText City;
    SharedText AirportName;
    std::string Icao;
};

// An airport met outside the simulator's own Scenery folder, with the delete
// flags its delete records set.
struct AddonAirport {
    std::string Icao;
    int32_t AreaNumber = 0;
    bool ReplacesOthers = false;
    bool DeletesAprons = false;
    bool DeletesTaxiways = false;
    bool DeletesRunways = false;
};

// The values of the VOR/ILS reader that outlive a station: only the subrecord
// that carries one overwrites it.
struct IlsWorkingValues {
    std::string Name;
    float Heading = 0;
    float GsLatitude = 0;
    float GsLongitude = 0;
    float GsPitch = 0;
};

// A taxi point resolved to degrees.
struct TaxiPoint {
    float Latitude = 0;
    float Longitude = 0;
};

// One path of the Taxi file.
struct TaxiPath {
    float StartLatitude = 0;
    float StartLongitude = 0;
    float EndLatitude = 0;
    float EndLongitude = 0;
    FixedText<8> TaxiName;
    uint8_t NameIndex = 0;
    uint8_t PathType = 0;
    FixedText<5> Icao;
};

// A code as the table lookups compare it: trimmed and upper-cased.
std::string CodeKey(std::string_view code);

}  // namespace skl
