#include <gtest/gtest.h>

#include "skl/AirportFile.h"
#include "support/ExpectedBytes.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

using test::Le;

// Runs WriteAirports2File over a table into a file of its own.
std::string Written(RunState& state, test::TempDir& dir) {
    platform::FileTable& table = state.Files.Table;
    state.Files.AirportFile = static_cast<int16_t>(table.FreeFile());
    table.OpenOutput(state.Files.AirportFile, (dir.Path / "Airport.skl").string());
    WriteAirports2File(state);
    table.Close(state.Files.AirportFile);
    return test::ReadBytes(dir.Path / "Airport.skl");
}

AirportRecord Airport(const char* icao, const char* name) {
    AirportRecord a;
    a.Icao = icao;
    a.AirportName = name;
    a.Country = "United States";
    a.State = "Washington";
    a.City = "Seattle";
    a.Latitude = 47.44898f;
    a.Longitude = -122.3093f;
    a.TowerLatitude = 47.4f;
    a.TowerLongitude = -122.3f;
    a.AltitudeFeet = 433;
    a.BglFileName = "AP_KSEA.bgl";
    return a;
}

std::string Fixed(int32_t number, const char* icao, const char* name, int32_t runways,
                  int32_t comms, int32_t ils, int32_t parkings) {
    Le le;
    le.I32(number).Text(icao, 5).Text(name, 40).Text("United States", 40).Text("Washington", 40);
    le.Text("Seattle", 40).F32(47.44898f).F32(-122.3093f).F32(47.4f).F32(-122.3f).F32(0.0f);
    le.I32(433).Text("AP_KSEA.bgl", 15).I32(runways).I32(comms).I32(ils).I32(parkings);
    return le.B;
}

TEST(WriteAirports2File, WritesAirportsDenselyWithTheirBlocksInFileOrder) {
    test::TempDir dir;
    RunState state;
    EXPECT_EQ(Written(state, dir), "\xff\xff\xff\xff");

    AirportRecord ksea = Airport("KSEA", "Seattle-Tacoma Intl");
    AirportRecord gone = Airport("#BFI", "Boeing Field");
    AirportRecord kpae = Airport("KPAE", "Snohomish County");
    RunwayRecord runway;
    runway.Icao = "KPAE";
    runway.PrimaryDesignator = "16R";
    runway.SecondaryDesignator = "34L";
    runway.Heading = 160.5f;
    runway.LengthFeet = 9010;
    runway.WidthFeet = 150;
    runway.Surface = 4;
    runway.PrimaryIlsIdent = "IPAE";
    runway.RecordKind = "R";
    CommRecord comm;  // a comm without a name keeps NULs
    comm.Icao = "KPAE";
    comm.FrequencyMhz = 132.95f;
    comm.CommType = 6;
    ParkingRecord parking;
    parking.Icao = "KPAE";
    parking.ParkingNumber = 7;
    parking.Heading = 90.0f;
    IlsRecord ils;
    ils.AirportIndex = 2;
    ils.Ident = "IPAE";
    ils.Kind = "I";
    kpae.Runways = {runway};
    kpae.Comms = {comm};
    kpae.Parkings = {parking, parking};
    kpae.Ils = {ils};
    kpae.RunwayCount = 1;
    kpae.CommCount = 1;
    kpae.ParkingCount = 2;
    kpae.IlsCount = 1;
    state.Tables.AirportTable = {ksea, gone, kpae};
    state.Tables.AirportTop = 2;

    Le runwayBytes;
    runwayBytes.Text("KPAE", 5).Text("16R", 5).Text("34L", 5).F32(0).F32(0).F32(160.5f).I32(0);
    runwayBytes.I16(9010).I16(150).I16(4).Text("IPAE", 5).Text("", 5, '\0').Text("R", 1);
    Le commBytes;
    commBytes.Text("KPAE", 5).Text("", 40, '\0').F32(0).F32(0).F32(132.95f).Text("\x06", 1);
    Le parkingBytes;
    parkingBytes.Text("KPAE", 5).F32(0).F32(0).I32(7).I32(0).I32(0).F32(90.0f);
    Le ilsBytes;
    ilsBytes.I32(2).Text("IPAE", 5).Text("", 40, '\0').Text("", 5, '\0');
    for (int i = 0; i < 7; ++i) ilsBytes.F32(0);
    ilsBytes.I32(0).Text("", 15, '\0').Text("", 5, '\0').Text("I", 1);
    ASSERT_EQ(runwayBytes.B.size(), 48u);
    ASSERT_EQ(commBytes.B.size(), 58u);
    ASSERT_EQ(parkingBytes.B.size(), 29u);
    ASSERT_EQ(ilsBytes.B.size(), 107u);

    std::string expected = Le().I32(1).B + Fixed(0, "KSEA", "Seattle-Tacoma Intl", 0, 0, 0, 0) +
                           Fixed(1, "KPAE", "Snohomish County", 1, 1, 1, 2) + runwayBytes.B +
                           commBytes.B + parkingBytes.B + parkingBytes.B + ilsBytes.B;
    EXPECT_EQ(Written(state, dir), expected);
    EXPECT_EQ(state.Tables.AirportTable[2].AirportNumber, 1);  // renumbered at write time
}

}  // namespace
}  // namespace skl
