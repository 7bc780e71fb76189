#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "cli/DumpCommand.h"
#include "platform/Win1252.h"
#include "skl/DumpFile.h"
#include "support/ExpectedBytes.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

using test::Le;

std::string Airport(int32_t number, const char* icao, const char* name, float latitude,
                    float longitude, float towerLatitude, float towerLongitude, int32_t runways,
                    int32_t comms, int32_t ils, int32_t parkings) {
    Le le;
    le.I32(number).Text(icao, 5).Text(name, 40).Text("United States", 40).Text("Washington", 40);
    le.Text("Seattle", 40).F32(latitude).F32(longitude).F32(towerLatitude).F32(towerLongitude);
    le.F32(118.0f).I32(433).Text("AP_KSEA.bgl", 15).I32(runways).I32(comms).I32(ils).I32(parkings);
    return le.B;
}

std::string Runway() {
    Le le;
    le.Text("KSEA", 5).Text("16L", 5).Text("34R", 5).F32(47.46f).F32(-122.31f).F32(163.5f);
    le.I32(433).I16(11901).I16(150).I16(4).Text("ISNQ", 5).Text("", 5, '\0').Text("R", 1);
    return le.B;
}

std::string Comm() {
    Le le;
    le.Text("KSEA", 5).Text("Seattle Tower", 40).F32(47.45f).F32(-122.3f).F32(119.9f);
    return le.Text("\x08", 1).B;
}

std::string Parking() {
    return Le().Text("KSEA", 5).F32(47.44f).F32(-122.29f).I32(12).I32(3).I32(14).F32(180.0f).B;
}

std::string Ils() {
    Le le;
    le.I32(1).Text("ISNQ", 5).Text("Seattle 16L", 40).Text("", 5, '\0').F32(47.47f).F32(-122.31f);
    le.F32(47.45f).F32(-122.3f).F32(3.0f).F32(110.3f).F32(163.5f).I32(433);
    return le.Text("AP_KSEA.bgl", 15).Text("16L", 5).Text("I", 1).B;
}

// KBFI without blocks, then KSEA with one runway, comm, parking spot and ILS.
std::string TwoAirports() {
    return Le().I32(1).B +
           Airport(0, "KBFI", "Boeing Field", 47.53f, -122.302f, 0.5f, 100.0f, 0, 0, 0, 0) +
           Airport(1, "KSEA", "Seattle-Tacoma Intl", 47.44889f, -122.3094f, 1e-5f, 12345678.0f, 1,
                   1, 1, 1) +
           Runway() + Comm() + Parking() + Ils();
}

struct Dumped {
    std::string Out;
    DumpOutcome Outcome;
};

Dumped Dump(const std::string& bytes, std::string_view name, DumpFormat format) {
    std::ostringstream out;
    std::span<const uint8_t> span(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    DumpOutcome outcome = DumpFile(span, name, format, out);
    return {out.str(), outcome};
}

size_t Lines(const std::string& text) {
    return std::ranges::count(text, '\n');
}

TEST(DumpFile, AirportFileInEachFormat) {
    const std::string bytes = TwoAirports();
    ASSERT_EQ(bytes.size(), 4u + 2 * 224 + 48 + 58 + 29 + 107);

    Dumped text = Dump(bytes, "Airport.skl", DumpFormat::Text);
    EXPECT_EQ(text.Outcome.ExitStatus, 0);
    EXPECT_EQ(text.Outcome.Error, "");
    EXPECT_EQ(
        text.Out,
        "Airport AirportNumber=0 Icao=\"KBFI\" AirportName=\"Boeing Field\" Country=\"United "
        "States\" State=\"Washington\" City=\"Seattle\" Latitude=47.53 Longitude=-122.302 "
        "TowerLatitude=0.5 TowerLongitude=100 AtisFrequency=118 AltitudeFeet=433 "
        "BglFileName=\"AP_KSEA.bgl\" RunwayCount=0 CommCount=0 IlsCount=0 ParkingCount=0\n"
        "Airport AirportNumber=1 Icao=\"KSEA\" AirportName=\"Seattle-Tacoma Intl\" "
        "Country=\"United States\" State=\"Washington\" City=\"Seattle\" Latitude=47.44889 "
        "Longitude=-122.3094 TowerLatitude=1E-05 TowerLongitude=1.234568E+07 AtisFrequency=118 "
        "AltitudeFeet=433 BglFileName=\"AP_KSEA.bgl\" RunwayCount=1 CommCount=1 IlsCount=1 "
        "ParkingCount=1\n"
        "    Runway Icao=\"KSEA\" PrimaryDesignator=\"16L\" SecondaryDesignator=\"34R\" "
        "Latitude=47.46 Longitude=-122.31 Heading=163.5 AltitudeFeet=433 LengthFeet=11901 "
        "WidthFeet=150 Surface=4 PrimaryIlsIdent=\"ISNQ\" SecondaryIlsIdent=\"\" "
        "RecordKind=\"R\"\n"
        "    Comm Icao=\"KSEA\" CommName=\"Seattle Tower\" Latitude=47.45 Longitude=-122.3 "
        "FrequencyMhz=119.9 CommType=8\n"
        "    Parking Icao=\"KSEA\" Latitude=47.44 Longitude=-122.29 ParkingNumber=12 "
        "ParkingType=3 ParkingName=14 Heading=180\n"
        "    Ils AirportIndex=1 Ident=\"ISNQ\" Name=\"Seattle 16L\" Reserved=\"\" Latitude=47.47 "
        "Longitude=-122.31 GsLatitude=47.45 GsLongitude=-122.3 GsPitch=3 FrequencyMhz=110.3 "
        "Heading=163.5 AltitudeFeet=433 BglFileName=\"AP_KSEA.bgl\" RunwayIdent=\"16L\" "
        "Kind=\"I\"\n");

    Dumped csv = Dump(bytes, "Airport.skl", DumpFormat::Csv);
    EXPECT_EQ(csv.Outcome.ExitStatus, 0);
    EXPECT_EQ(csv.Out,
              "AirportNumber,Icao,AirportName,Country,State,City,Latitude,Longitude,TowerLatitude,"
              "TowerLongitude,AtisFrequency,AltitudeFeet,BglFileName,RunwayCount,CommCount,"
              "IlsCount,ParkingCount\n"
              "0,KBFI,Boeing Field,United States,Washington,Seattle,47.53,-122.302,0.5,100,118,"
              "433,AP_KSEA.bgl,0,0,0,0\n"
              "1,KSEA,Seattle-Tacoma Intl,United States,Washington,Seattle,47.44889,-122.3094,"
              "1E-05,1.234568E+07,118,433,AP_KSEA.bgl,1,1,1,1\n"
              "\n# runways\n"
              "AirportNumber,Icao,PrimaryDesignator,SecondaryDesignator,Latitude,Longitude,"
              "Heading,AltitudeFeet,LengthFeet,WidthFeet,Surface,PrimaryIlsIdent,"
              "SecondaryIlsIdent,RecordKind\n"
              "1,KSEA,16L,34R,47.46,-122.31,163.5,433,11901,150,4,ISNQ,,R\n"
              "\n# comms\n"
              "AirportNumber,Icao,CommName,Latitude,Longitude,FrequencyMhz,CommType\n"
              "1,KSEA,Seattle Tower,47.45,-122.3,119.9,8\n"
              "\n# parkings\n"
              "AirportNumber,Icao,Latitude,Longitude,ParkingNumber,ParkingType,ParkingName,"
              "Heading\n"
              "1,KSEA,47.44,-122.29,12,3,14,180\n"
              "\n# ils\n"
              "AirportNumber,AirportIndex,Ident,Name,Reserved,Latitude,Longitude,GsLatitude,"
              "GsLongitude,GsPitch,FrequencyMhz,Heading,AltitudeFeet,BglFileName,RunwayIdent,"
              "Kind\n"
              "1,1,ISNQ,Seattle 16L,,47.47,-122.31,47.45,-122.3,3,110.3,163.5,433,AP_KSEA.bgl,"
              "16L,I\n");

    Dumped json = Dump(bytes, "Airport.skl", DumpFormat::Json);
    EXPECT_EQ(json.Outcome.ExitStatus, 0);
    EXPECT_EQ(
        json.Out,
        "[\n"
        "  {\"AirportNumber\": 0, \"Icao\": \"KBFI\", \"AirportName\": \"Boeing Field\", "
        "\"Country\": \"United States\", \"State\": \"Washington\", \"City\": \"Seattle\", "
        "\"Latitude\": 47.53, \"Longitude\": -122.302, \"TowerLatitude\": 0.5, "
        "\"TowerLongitude\": 100, \"AtisFrequency\": 118, \"AltitudeFeet\": 433, "
        "\"BglFileName\": \"AP_KSEA.bgl\", \"RunwayCount\": 0, \"CommCount\": 0, "
        "\"IlsCount\": 0, \"ParkingCount\": 0,\n"
        "   \"runways\": [],\n   \"comms\": [],\n   \"parkings\": [],\n   \"ils\": []},\n"
        "  {\"AirportNumber\": 1, \"Icao\": \"KSEA\", \"AirportName\": \"Seattle-Tacoma Intl\", "
        "\"Country\": \"United States\", \"State\": \"Washington\", \"City\": \"Seattle\", "
        "\"Latitude\": 47.44889, \"Longitude\": -122.3094, \"TowerLatitude\": 1E-05, "
        "\"TowerLongitude\": 1.234568E+07, \"AtisFrequency\": 118, \"AltitudeFeet\": 433, "
        "\"BglFileName\": \"AP_KSEA.bgl\", \"RunwayCount\": 1, \"CommCount\": 1, "
        "\"IlsCount\": 1, \"ParkingCount\": 1,\n"
        "   \"runways\": [\n"
        "    {\"Icao\": \"KSEA\", \"PrimaryDesignator\": \"16L\", \"SecondaryDesignator\": "
        "\"34R\", \"Latitude\": 47.46, \"Longitude\": -122.31, \"Heading\": 163.5, "
        "\"AltitudeFeet\": 433, \"LengthFeet\": 11901, \"WidthFeet\": 150, \"Surface\": 4, "
        "\"PrimaryIlsIdent\": \"ISNQ\", \"SecondaryIlsIdent\": \"\", \"RecordKind\": \"R\"}\n"
        "   ],\n"
        "   \"comms\": [\n"
        "    {\"Icao\": \"KSEA\", \"CommName\": \"Seattle Tower\", \"Latitude\": 47.45, "
        "\"Longitude\": -122.3, \"FrequencyMhz\": 119.9, \"CommType\": 8}\n"
        "   ],\n"
        "   \"parkings\": [\n"
        "    {\"Icao\": \"KSEA\", \"Latitude\": 47.44, \"Longitude\": -122.29, \"ParkingNumber\": "
        "12, \"ParkingType\": 3, \"ParkingName\": 14, \"Heading\": 180}\n"
        "   ],\n"
        "   \"ils\": [\n"
        "    {\"AirportIndex\": 1, \"Ident\": \"ISNQ\", \"Name\": \"Seattle 16L\", \"Reserved\": "
        "\"\", \"Latitude\": 47.47, \"Longitude\": -122.31, \"GsLatitude\": 47.45, "
        "\"GsLongitude\": -122.3, \"GsPitch\": 3, \"FrequencyMhz\": 110.3, \"Heading\": 163.5, "
        "\"AltitudeFeet\": 433, \"BglFileName\": \"AP_KSEA.bgl\", \"RunwayIdent\": \"16L\", "
        "\"Kind\": \"I\"}\n"
        "   ]}\n"
        "]\n");

    // The backup of the set is read the same way; Ils.skl is a plain run of ILS records.
    EXPECT_EQ(Dump(bytes, "AIRPORTSKL.OLD", DumpFormat::Text).Out, text.Out);
    Dumped ils = Dump(Ils() + Ils(), "Ilsskl.old", DumpFormat::Text);
    EXPECT_EQ(ils.Outcome.ExitStatus, 0);
    EXPECT_EQ(Lines(ils.Out), 2u);
    EXPECT_TRUE(ils.Out.starts_with("Ils AirportIndex=1 Ident=\"ISNQ\" Name=\"Seattle 16L\""));
}

TEST(DumpFile, BlocksFollowInTheirOwnOrder) {
    // The counts stand runway, comm, ILS, parking; the blocks follow runway,
    // comm, parking, ILS. A parking spot without ILS and an ILS without parking:
    std::string parkingOnly =
        Le().I32(0).B + Airport(0, "KSEA", "A", 0, 0, 0, 0, 0, 0, 0, 1) + Parking();
    EXPECT_TRUE(Dump(parkingOnly, "Airport.skl", DumpFormat::Text)
                    .Out.find("\n    Parking Icao=\"KSEA\" Latitude=47.44 ") != std::string::npos);
    std::string ilsOnly = Le().I32(0).B + Airport(0, "KSEA", "A", 0, 0, 0, 0, 0, 0, 1, 0) + Ils();
    Dumped ils = Dump(ilsOnly, "Airport.skl", DumpFormat::Text);
    EXPECT_EQ(ils.Outcome.ExitStatus, 0);
    EXPECT_TRUE(ils.Out.find("\n    Ils AirportIndex=1 Ident=\"ISNQ\"") != std::string::npos);

    // A negative count holds no records; the blocks behind it are still read.
    std::string negative =
        Le().I32(0).B + Airport(0, "KSEA", "A", 0, 0, 0, 0, -3, 1, 0, 0) + Comm();
    Dumped comm = Dump(negative, "Airport.skl", DumpFormat::Csv);
    EXPECT_EQ(comm.Outcome.ExitStatus, 0);
    EXPECT_TRUE(comm.Out.find("\n0,KSEA,Seattle Tower,") != std::string::npos);
}

TEST(DumpFile, FilesWithoutRecords) {
    const std::string empty = "\xFF\xFF\xFF\xFF";
    Dumped text = Dump(empty, "Airport.skl", DumpFormat::Text);
    EXPECT_EQ(text.Out, "");
    EXPECT_EQ(text.Outcome.ExitStatus, 0);
    EXPECT_EQ(Dump(empty, "Airport.skl", DumpFormat::Json).Out, "[]\n");
    Dumped csv = Dump(empty, "Airport.skl", DumpFormat::Csv);
    EXPECT_EQ(Lines(csv.Out), 1u + 4 * 3);  // the header rows of the five tables only
    EXPECT_TRUE(csv.Out.starts_with("AirportNumber,Icao,AirportName,"));
    EXPECT_TRUE(csv.Out.ends_with(",BglFileName,RunwayIdent,Kind\n"));  // the ILS table

    EXPECT_EQ(Dump("", "Ils.skl", DumpFormat::Text).Out, "");
    EXPECT_EQ(Dump("", "Ils.skl", DumpFormat::Json).Out, "[]\n");
    EXPECT_EQ(Lines(Dump("", "Ils.skl", DumpFormat::Csv).Out), 1u);

    // The files written while reading, and the four tables with their header.
    for (const char* name : {"Taxi.skl", "Poly.skl", "Marker.skl", "Region.skl", "State.skl",
                             "Country.skl", "City.skl"}) {
        EXPECT_EQ(Dump("", name, DumpFormat::Text).Out, "") << name;
        EXPECT_EQ(Dump("", name, DumpFormat::Json).Out, "[]\n") << name;
        EXPECT_EQ(Dump("", name, DumpFormat::Json).Outcome.ExitStatus, 0) << name;
    }
    std::string marker = "OM" + std::string("\x00\x00\x80\x3F", 4) +
                         std::string("\x00\x00\x00\x40", 4) + std::string("\x9C\x01\x00\x00", 4);
    EXPECT_EQ(Dump(marker, "Markerskl.old", DumpFormat::Text).Out,
              "Marker MarkerKind=\"OM\" Latitude=1 Longitude=2 AltitudeFeet=412\n");
    std::string country = std::string("\x01\x00\x00\x00", 4) + "Austria" + std::string(33, ' ') +
                          "World" + std::string(25, ' ');
    EXPECT_EQ(Dump(country, "Country.skl", DumpFormat::Text).Out,
              "LastIndex=1\nCountry Country=\"Austria\" Region=\"World\"\n");
    EXPECT_EQ(Dump(country, "Country.skl", DumpFormat::Json).Out,
              "{\"LastIndex\": 1, \"records\": [\n  {\"Country\": \"Austria\", \"Region\": \"World\"}\n]}\n");
    EXPECT_EQ(Dump(std::string("\xFF\xFF\xFF\xFF", 4), "City.skl", DumpFormat::Csv).Out,
              "# LastAirportIndex=-1\nCity,State,Country\n");
    EXPECT_EQ(Dump(std::string(33, 'x'), "Taxi.skl", DumpFormat::Text).Outcome.ExitStatus, 1);
}

TEST(DumpFile, CutFilePrintsWhatIsComplete) {
    const std::string full = TwoAirports();
    // Where each record ends: header, KBFI, KSEA's fixed part, runway, comm, parking, ILS.
    const size_t ends[] = {4, 228, 452, 500, 558, 587, 694};
    const std::string fullText = Dump(full, "Airport.skl", DumpFormat::Text).Out;
    for (size_t size = 0; size < full.size(); ++size) {
        std::string cut = full.substr(0, size);
        size_t complete = std::ranges::count_if(ends, [&](size_t end) { return end <= size; });
        Dumped text = Dump(cut, "Airport.skl", DumpFormat::Text);
        ASSERT_EQ(text.Outcome.ExitStatus, 1) << size;
        ASSERT_EQ(text.Outcome.Error,
                  "Airport.skl ends inside a record at byte " + std::to_string(size));
        ASSERT_EQ(Lines(text.Out), complete == 0 ? 0 : complete - 1) << size;
        ASSERT_TRUE(fullText.starts_with(text.Out)) << size;
        Dumped json = Dump(cut, "Airport.skl", DumpFormat::Json);
        ASSERT_TRUE(json.Out.ends_with("]\n")) << size;  // still a closed array
        ASSERT_EQ(std::ranges::count(json.Out, '{'), std::ranges::count(json.Out, '}')) << size;
    }
    // Cut inside the ILS block: everything before it stands, the ILS array is empty.
    Dumped json = Dump(full.substr(0, full.size() - 1), "Airport.skl", DumpFormat::Json);
    EXPECT_TRUE(json.Out.ends_with("\"Heading\": 180}\n   ],\n   \"ils\": []}\n]\n"));

    // A count far behind the end of the file.
    std::string huge =
        Le().I32(0).B + Airport(0, "KSEA", "A", 0, 0, 0, 0, 0x7FFFFFFF, 0, 0, 0) + Runway();
    Dumped runway = Dump(huge, "Airport.skl", DumpFormat::Text);
    EXPECT_EQ(runway.Outcome.Error, "Airport.skl ends inside a record at byte 276");
    EXPECT_EQ(Lines(runway.Out), 2u);
    Dumped many = Dump(Le().I32(0x7FFFFFFF).B, "Airport.skl", DumpFormat::Csv);
    EXPECT_EQ(many.Outcome.ExitStatus, 1);

    Dumped ils = Dump(Ils() + Ils().substr(0, 50), "dir/Ils.skl", DumpFormat::Csv);
    EXPECT_EQ(ils.Outcome.Error, "dir/Ils.skl ends inside a record at byte 157");
    EXPECT_EQ(Lines(ils.Out), 2u);  // header and the one complete record

    Dumped trailing = Dump(full + "xx", "Airport.skl", DumpFormat::Text);
    EXPECT_EQ(trailing.Outcome.ExitStatus, 1);
    EXPECT_EQ(trailing.Outcome.Error, "Airport.skl holds 2 bytes behind its last record");
    EXPECT_EQ(trailing.Out, Dump(full, "Airport.skl", DumpFormat::Text).Out);
}

TEST(DumpFile, KindComesFromTheName) {
    // In the order of DatabaseKind: live name, upper case, backup, lower-case backup.
    const char* stems[] = {"Airport", "Ils",   "Taxi",    "Poly", "Marker",
                           "Region",  "State", "Country", "City"};
    for (int i = 0; i < 9; ++i) {
        std::string stem = stems[i];
        for (std::string name : {stem + ".skl", Upper1252(stem + ".skl"), stem + "skl.old",
                                 Lower1252(stem + "Skl.old")})
            EXPECT_EQ(KindFromFileName(name), static_cast<DatabaseKind>(i)) << name;
    }
    EXPECT_EQ(KindFromFileName("/data/set/Airport.skl"), DatabaseKind::Airport);
    EXPECT_EQ(KindFromFileName("C:\\Skyloom\\Database\\cityskl.old"), DatabaseKind::City);
    for (const char* name : {"", "Airport", "Airport.sk", "Airports.skl", "Airport.skl.old",
                             "Airport.old", "World.skl", "Airport.skl/", "skl.old"})
        EXPECT_EQ(KindFromFileName(name), std::nullopt) << name;

    Dumped unknown = Dump(TwoAirports(), "World.skl", DumpFormat::Text);
    EXPECT_EQ(unknown.Outcome.ExitStatus, 2);
    EXPECT_EQ(unknown.Outcome.Error, "cannot tell the kind of World.skl from its name");
    EXPECT_EQ(unknown.Out, "");
}

TEST(DumpFile, TextIsShownAsUtf8) {
    // "Aéroport "Nord", 5€" with a tab, a City in Windows-1252 and a Country
    // never assigned (all NUL).
    Le le;
    le.I32(0).I32(0).Text("LFXX", 5).Text("A\xE9roport \"Nord\",\t5\x80", 40).Text("", 40, '\0');
    le.Text("\xCEle-de-France  ", 40, '\0').Text("Z\xFCrich", 40);
    for (int i = 0; i < 5; ++i) le.F32(0);
    le.I32(0).Text("", 15, '\0').I32(0).I32(0).I32(0).I32(0);

    Dumped text = Dump(le.B, "Airport.skl", DumpFormat::Text);
    EXPECT_TRUE(text.Out.find(" AirportName=\"A\xC3\xA9roport \\\"Nord\\\",\\u00095\xE2\x82\xAC\" "
                              "Country=\"\" State=\"\xC3\x8Ele-de-France\" "
                              "City=\"Z\xC3\xBCrich\" ") != std::string::npos)
        << text.Out;
    Dumped csv = Dump(le.B, "Airport.skl", DumpFormat::Csv);
    EXPECT_TRUE(csv.Out.find("\n0,LFXX,\"A\xC3\xA9roport \"\"Nord\"\",\t5\xE2\x82\xAC\",,"
                             "\xC3\x8Ele-de-France,Z\xC3\xBCrich,0,") != std::string::npos)
        << csv.Out;
    Dumped json = Dump(le.B, "Airport.skl", DumpFormat::Json);
    EXPECT_TRUE(json.Out.find("\"AirportName\": \"A\xC3\xA9roport \\\"Nord\\\",\\u00095\xE2\x82\xAC"
                              "\", \"Country\": \"\", \"State\": \"\xC3\x8Ele-de-France\", ") !=
                std::string::npos)
        << json.Out;
}

TEST(DumpCommand, ExitStatusAndStreams) {
    test::TempDir dir;
    test::WriteFile(dir.Path / "Airport.skl", "\xFF\xFF\xFF\xFF");
    test::WriteFile(dir.Path / "Ilsskl.old", Ils() + "abc");
    test::WriteFile(dir.Path / "World.skl", "");
    auto run = [](const std::filesystem::path& file, const std::string& format, std::string& out,
                  std::string& err) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        int status = cli::RunDumpCommand(file.string(), format);
        out = testing::internal::GetCapturedStdout();
        err = testing::internal::GetCapturedStderr();
        return status;
    };
    std::string out;
    std::string err;
    EXPECT_EQ(run(dir.Path / "Airport.skl", "json", out, err), 0);
    EXPECT_EQ(out, "[]\n");
    EXPECT_EQ(err, "");

    const std::string ils = (dir.Path / "Ilsskl.old").string();
    EXPECT_EQ(run(ils, "text", out, err), 1);
    EXPECT_EQ(Lines(out), 1u);
    EXPECT_EQ(err, "skldbm: " + ils + " ends inside a record at byte 110\n");

    const std::string world = (dir.Path / "World.skl").string();
    EXPECT_EQ(run(world, "text", out, err), 2);
    EXPECT_EQ(out, "");
    EXPECT_EQ(err, "skldbm: cannot tell the kind of " + world + " from its name\n");

    EXPECT_EQ(run(dir.Path / "Airport.skl", "xml", out, err), 2);
    EXPECT_EQ(err, "skldbm: unknown format xml (text, csv or json)\n");
    EXPECT_EQ(run(dir.Path / "City.skl", "csv", out, err), 2);  // no such file
    EXPECT_TRUE(err.starts_with("skldbm: cannot read ")) << err;
}

}  // namespace
}  // namespace skl
