#include <gtest/gtest.h>

#include "consolidation/Consolidation.h"
#include "support/ExpectedBytes.h"
#include "support/RecordingFrontEnd.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

using Lines = std::vector<std::string>;

AirportRecord Airport(const char* icao, const char* country = "", const char* state = "",
                      const char* city = "") {
    AirportRecord a;
    a.Icao = icao;
    a.AirportName = std::string(icao) + " Field";
    a.Country = country;
    a.State = state;
    a.City = city;
    return a;
}

RunwayRecord Runway(float lat, float lon, const char* primary, const char* primaryIls,
                    const char* secondary, const char* secondaryIls) {
    RunwayRecord r;
    r.Latitude = lat;
    r.Longitude = lon;
    r.PrimaryDesignator = primary;
    r.PrimaryIlsIdent = primaryIls;
    r.SecondaryDesignator = secondary;
    r.SecondaryIlsIdent = secondaryIls;
    return r;
}

IlsRecord Ils(const char* ident, float lat, float lon, int32_t index = -1) {
    IlsRecord i;
    i.AirportIndex = index;
    i.Ident = ident;
    i.Name = std::string("ILS ") + ident;
    i.Latitude = lat;
    i.Longitude = lon;
    i.BglFileName = "nav.bgl";
    i.Kind = "I";
    return i;
}

// A run state with the log and the Ils file open, over a given table.
struct Passes : test::LoggedState {
    test::RecordingFrontEnd FrontEnd;
    void Table(std::vector<AirportRecord> airports) {
        for (AirportRecord& a : airports) {
            a.RunwayCount = static_cast<int32_t>(a.Runways.size());
            a.IlsCount = static_cast<int32_t>(a.Ils.size());
        }
        State.Tables.AirportTop = static_cast<int32_t>(airports.size()) - 1;
        State.Tables.AirportTable = std::move(airports);
        Files& files = State.Files;
        files.IlsFile = static_cast<int16_t>(files.Table.FreeFile());
        files.Table.OpenOutput(files.IlsFile, (Dir.Path / "Ils.skl").string());
    }
    const AirportRecord& At(int i) { return State.Tables.AirportTable.at(static_cast<size_t>(i)); }
    std::string IlsFile() {
        State.Files.Table.Close(State.Files.IlsFile);
        return test::ReadBytes(Dir.Path / "Ils.skl");
    }
};

TEST(AssignIls2Airport, BindsEveryNearRunwayEndAndListsUnboundAddonIls) {
    Passes p;
    AirportRecord a = Airport("KAAA");
    a.Runways = {Runway(47.0f, -122.0f, "16R", " isnq", "34L", "ISNQ"),  // both ends
                 Runway(47.0f, -122.0f, "09", "I", "27", "")};           // too short to count
    AirportRecord b = Airport("KBBB");
    b.Runways = {Runway(47.1f, -122.0f, "04", "ISNQ", "22", "IFAR")};
    AirportRecord far = Airport("KFAR");
    // 20.0 nm and more do not bind: 20 minutes of latitude to the south.
    far.Runways = {Runway(47.0f - 20.0f / 60.0f, -121.0f, "01", "IFAR", "19", "")};
    p.Table({a, b, far});
    p.State.Tables.IlsTable = {Ils("ISNQ", 47.01f, -122.0f), Ils("IFAR", 47.0f, -121.0f),
                               Ils("I", 47.0f, -122.0f), Ils("IXXX", 0, 0, -2)};
    AssignIls2Airport(p.State, p.FrontEnd);

    const auto& table = p.State.Tables.IlsTable;
    ASSERT_EQ(p.At(0).IlsCount, 2);
    EXPECT_EQ(p.At(0).Ils[0].RunwayIdent.Str(), "16R  ");
    EXPECT_EQ(p.At(0).Ils[1].RunwayIdent.Str(), "34L  ");
    // The copy keeps the index of before its binding: -1 first, then the airport.
    EXPECT_EQ(p.At(0).Ils[0].AirportIndex, -1);
    EXPECT_EQ(p.At(0).Ils[1].AirportIndex, 0);
    ASSERT_EQ(p.At(1).IlsCount, 1);
    EXPECT_EQ(p.At(1).Ils[0].AirportIndex, 0);
    EXPECT_EQ(table[0].AirportIndex, 1);  // the later airport of the two
    EXPECT_EQ(p.At(2).IlsCount, 0);
    EXPECT_EQ(table[1].AirportIndex, -1);
    EXPECT_EQ(table[2].AirportIndex, -1);  // a one-character ident never binds
    EXPECT_EQ(table[3].AirportIndex, -2);

    // Unbound add-on ILS go to the Ils file and the log; a stock one to neither.
    test::Le ils;
    for (const IlsRecord* r : {&table[1], &table[2]}) {
        ils.I32(-1).Text(r->Ident.Str(), 5).Text(r->Name.Str(), 40).Text("", 5, '\0');
        ils.F32(r->Latitude).F32(r->Longitude).F32(0).F32(0).F32(0).F32(0).F32(0).I32(0);
        ils.Text("nav.bgl", 15).Text("", 5, '\0').Text("I", 1);
    }
    EXPECT_EQ(p.IlsFile(), ils.B);
    const std::string banner(37, '=');
    EXPECT_EQ(p.Lines(),
              (Lines{banner, "Undefined ILS'es found: ", "",
                     "nav.bgl          -  IFAR   -  ILS IFAR" + std::string(32, ' ') +
                         "  -  47  -  -121",
                     "nav.bgl          -  I      -  ILS I" + std::string(35, ' ') + "  -  47  -  -122",
                     banner, ""}));
    EXPECT_EQ(p.FrontEnd.Statuses, (Lines{"   ...assigning ILS to runways and airports!   "}));
}

TEST(ConsolidationPasses, StatesIlsDoublesAndMergedAirports) {
    Passes p;
    AirportRecord brisbane = Airport("YBBN", "Australia", "Queensland", "Brisbane");
    AirportRecord texas = Airport("KDFW", "UNITED STATES ", "Texas", "Dallas");
    AirportRecord maine = Airport("KPWM", "United States", "Maine", "Portland");
    AirportRecord other = Airport("EDDF", "Germany", "Hessen", "Frankfurt");
    AirportRecord usa = Airport("KXXX", "USA", "Texas", "Other");
    // ILS doubles: same ident (case ignored) and runway end.
    auto bound = [](const char* ident, const char* runway) {
        IlsRecord r = Ils(ident, 0, 0);
        r.RunwayIdent = runway;
        return r;
    };
    other.Ils = {bound("IFRA", "25L"), bound("ifra", "25L"), bound("IFRB", "25L"),
                 bound("IFRA", "25L"), bound("IFRA", "07R")};
    p.Table({brisbane, texas, maine, other, usa});
    RemoveIllegalState(p.State);
    EXPECT_EQ(p.At(0).State.Str().substr(0, 10), "Queensland");
    EXPECT_EQ(p.At(1).State.Str().substr(0, 5), "Texas");  // same country as Maine's
    EXPECT_EQ(p.At(3).State.Str(), "0" + std::string(39, ' '));
    EXPECT_EQ(p.At(4).State.Str(), "0" + std::string(39, ' '));  // another form of the name
    Check4ILSDoubles(p.State);
    ASSERT_EQ(p.At(3).IlsCount, 3);
    EXPECT_EQ(p.At(3).Ils[0].Ident.Str(), "IFRA ");
    EXPECT_EQ(p.At(3).Ils[1].Ident.Str(), "IFRB ");
    EXPECT_EQ(p.At(3).Ils[2].RunwayIdent.Str(), "07R  ");

    // Two records of one code from one area, and a third: all folded, the
    // last non-empty values win, the altitude is the highest.
    Passes m;
    AirportRecord first = Airport("LOWI", "Austria", "Tirol", "Innsbruck");
    first.AltitudeFeet = 1900;
    first.Latitude = 47.26f;
    first.Longitude = 11.34f;
    first.TowerLatitude = 47.2f;
    first.TowerLongitude = 11.3f;
    first.Runways = {Runway(47.26f, 11.34f, "08", "", "26", "")};
    first.AtisFrequency = 126.0f;
    AirportRecord second = Airport("LOWI", "Austria", "0", "");
    second.AltitudeFeet = 300;
    second.Latitude = 0;
    second.Longitude = 8;
    second.Runways = {Runway(1, 1, "09", "", "27", "")};
    AirportRecord lszh = Airport("LSZH", "Switzerland", "0", "Zurich");
    m.Table({first, lszh, second});
    m.State.Tables.DoubleAddonIcaos = {"", "LOWI "};
    MergeDoubleAirports(m.State);
    ASSERT_EQ(m.State.Tables.AirportTop, 3);
    const AirportRecord& r = m.At(3);
    EXPECT_EQ(r.Icao.Str(), "LOWI ");
    EXPECT_EQ(r.AirportNumber, 3);
    EXPECT_EQ(r.City.Str().substr(0, 9), "Innsbruck");  // a blank city does not count
    EXPECT_EQ(r.State.Str().substr(0, 2), "0 ");        // "0" is a value
    EXPECT_EQ(r.AltitudeFeet, 1900);
    EXPECT_EQ(r.Latitude, 0.0f);  // latitude 0 with longitude 8 counts
    EXPECT_EQ(r.Longitude, 8.0f);
    EXPECT_EQ(r.TowerLatitude, 47.2f);
    EXPECT_EQ(r.AtisFrequency, 126.0f);
    ASSERT_EQ(r.RunwayCount, 2);
    EXPECT_EQ(r.Runways[1].PrimaryDesignator.Str(), "09   ");
    EXPECT_EQ(m.At(0).Icao.Str(), "#LOWI");
    EXPECT_EQ(m.At(2).Icao.Str(), "#LOWI");
    EXPECT_EQ(m.At(1).Icao.Str(), "LSZH ");
}

TEST(FillTables, CountriesStatesAndCitiesFromTheTable) {
    Passes p;
    std::vector<AirportRecord> airports = {
        Airport("LOWW", "Austria", "0", "Wien"),      Airport("LOXX", "AUSTRIA ", "0", "WIEN"),
        Airport("LOWX", "Austria", "0", "Wien"),      Airport("CYYZ", "Canada", "Ontario", "Toronto"),
        Airport("CYOW", "CANADA", "ONTARIO", "Ottawa"), Airport("#XXX", "Narnia", "0", "Aslan"),
    };
    p.Table(airports);
    Files& files = p.State.Files;
    for (auto [handle, name] : {std::pair{&Files::RegionFile, "Region.skl"},
                                {&Files::CountryFile, "Country.skl"},
                                {&Files::StateFile, "State.skl"}, {&Files::CityFile, "City.skl"}}) {
        files.*handle = static_cast<int16_t>(files.Table.FreeFile());
        files.Table.OpenOutput(files.*handle, (p.Dir.Path / name).string());
    }
    FillRegionTable(p.State);
    FillCountryTable(p.State, p.FrontEnd);
    FillStateTable(p.State, p.FrontEnd);
    FillCityTable(p.State, p.FrontEnd);
    files.Table.CloseAll();
    EXPECT_EQ(test::ReadBytes(p.Dir.Path / "Country.skl"),
              test::Le().I32(2).Text("Austria", 40).Text("World", 30).Text("Canada", 40)
                  .Text("World", 30).Text("Narnia", 40).Text("World", 30).B);
    // Pairs: (0, Austria), (Ontario, Canada), (0, Narnia): the header counts all.
    EXPECT_EQ(test::ReadBytes(p.Dir.Path / "State.skl"),
              test::Le().I32(2).Text("Ontario", 40).Text("Canada", 40).B);
    auto key = [](const char* city, const char* state, const char* country) {
        return test::Le().Text(city, 40).Text(state, 40).Text(country, 40).B;
    };
    EXPECT_EQ(test::ReadBytes(p.Dir.Path / "City.skl"),
              test::Le().I32(5).B + key("Aslan", "0", "Narnia") +
                  key("Ottawa", "ONTARIO", "CANADA") + key("Toronto", "Ontario", "Canada") +
                  key("WIEN", "0", "AUSTRIA ") + key("Wien", "0", "Austria"));
    EXPECT_FALSE(p.FrontEnd.ProgressShown);
}

}  // namespace
}  // namespace skl
