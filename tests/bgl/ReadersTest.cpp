#include <gtest/gtest.h>

#include <cstring>

#include "bgl/BglReaders.h"
#include "bgl/Decoders.h"
#include "skl/ByteWriter.h"
#include "support/BglBuilder.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

using test::BglFile;
using test::BglRecord;
using test::NameListEntry;
using test::Section;
using Lines = std::vector<std::string>;

// Reads BGL files into one run state, as the area loop would: the log is open,
// the area number and the stock flag are what the test says.
struct Reader : test::LoggedState {
    void Read(const std::string& bytes, int32_t area = 5, bool stock = false,
              const std::string& name = "ap_test.bgl") {
        Reading& reading = State.Reading;
        reading.CurrentBglFile = name;
        reading.AreaNumber = area;
        reading.StockScenery = stock;
        reading.Bgl = platform::ByteReader::FromBytes(std::vector<uint8_t>(bytes.begin(), bytes.end()));
        ReadBglFile(State);
    }
    const AirportRecord& Airport(int i) const { return State.Tables.AirportTable.at(static_cast<size_t>(i)); }
    std::string Icao(int i) const { return Airport(i).Icao.Str(); }
};

std::vector<NameListEntry> Names() {
    return {
        {"KSEA", "SEATTLE-TACOMA INTL", "SEATTLE", "WASHINGTON", "UNITED STATES", "NORTH AMERICA"},
        {"KSEA", "NOT THIS ONE", "SEATTLE", "WASHINGTON", "UNITED STATES", "NORTH AMERICA"},
        {"KBFI", "BOEING FIELD/KING COUNTY INTL", "SEATTLE", "WASHINGTON", "UNITED STATES", "NORTH AMERICA"},
        {"LSZH", "ZURICH", "ZURICH", "", "SWITZERLAND", "EUROPE"},
        {"LOWI", "INNSBRUCK", "INNSBRUCK", "  ", "AUSTRIA", "EUROPE"},
    };
}

BglRecord Unknown(uint16_t id, size_t bodySize) { return BglRecord{id, std::string(bodySize, '\x5a')}; }

std::string File(std::vector<std::vector<BglRecord>> airportSubsections,
                 std::vector<NameListEntry> names = Names()) {
    BglFile file;
    // The name list stands behind the airports and is read first all the same.
    file.Sections = {Section(test::kSectionAirport, airportSubsections),
                     Section(test::kSectionNameList, {{test::NameList(names)}})};
    return test::BuildBgl(file);
}

TEST(Decoders, CodesPositionsAltitudesAndProperCase) {
    test::LoggedState run;
    RunState& s = run.State;
    EXPECT_EQ(GetIcaoCode04(s, ((((37 * 38 + 37) * 38 + 37) * 38 + 37)) << 5, true), "ZZZZ");
    EXPECT_EQ(GetIcaoCode04(s, (12 * 38 + 13) * 38 + 14, false), "ABC");
    EXPECT_EQ(GetIcaoCode04(s, ((12 * 38 + 1) * 38 + 14) * 32, true), "AC");  // digit 1 dropped
    EXPECT_EQ(GetIcaoCode04(s, (12 * 38 + 13) * 38 + 14, true), "CN");  // the flag belongs to the field
    EXPECT_EQ(GetIcaoCode04(s, 0, true), "");
    EXPECT_EQ(GetIcaoCode04(s, -5, false), "");
    EXPECT_EQ(GetIcaoCode04(s, INT32_MIN, true), "");
    EXPECT_EQ(DecodeLatitude(268435456), 0.0);
    EXPECT_EQ(DecodeLongitude(402653184), 0.0);
    EXPECT_EQ(DecodeLatitude(0), 90.0);
    EXPECT_EQ(DecodeLongitude(0), -180.0);
    EXPECT_EQ(DecodeLatitude(536870912), -90.0);
    EXPECT_EQ(DecodeLongitude(805306368), 180.0);
    EXPECT_EQ(AltitudeFeetRounded(123456), 404);
    EXPECT_EQ(AltitudeFeetRounded(-500), -3);
    EXPECT_EQ(AltitudeFeetRounded(1000), 3);
    EXPECT_EQ(ProperCase("SEATTLE-TACOMA INTL"), "Seattle-Tacoma Intl");
    EXPECT_EQ(ProperCase("O'HARE ST.JOHN 2ND"), "O'Hare St.John 2Nd");
    EXPECT_EQ(ProperCase("Z\xdcRICH [X]"), "Z\xfcrich [x]");  // '[' is code 91: the next is lowered
    EXPECT_EQ(ProperCase(""), "");
    EXPECT_TRUE(run.Lines().empty());
}

TEST(ReadAirportSubsection, StoresNamedAirportsOfBothFormsAndGivesBlindOnesBack) {
    Reader r;
    BglRecord ksea = test::Airport(3, "KSEA", 47.449, -122.309, 132588,
                                   {test::AirportName("Seattle"), Unknown(0x99, 4),
                                    Unknown(0x3D, 20)});  // FSX parking: passed over in this form
    ksea.SizeOverride = static_cast<int32_t>(test::Serialize(ksea).size()) + 1;  // one byte long
    BglRecord blind = test::Airport(0x3C, "KXXX", 1, 2, 0, {test::AirportName("Nowhere")});
    BglRecord lszh = test::Airport(0x3C, "LSZH", 47.4647, 8.5492, 432000, {Unknown(0x1B, 24)});
    BglRecord lowi = test::Airport(3, "LOWI", 47.26, 11.34, 581000);
    r.Read(File({{ksea, blind, lszh}, {lowi}}));
    EXPECT_EQ(r.Lines(), (Lines{"00000 , 0005 , KSEA  - Seattle-Tacoma Intl",
                                "Blind Airport found at: 1", "00001 , 0005 , LSZH  - Zurich",
                                "00002 , 0005 , LOWI  - Innsbruck"}));
    const Tables& t = r.State.Tables;
    ASSERT_EQ(t.AirportTop, 2);
    EXPECT_EQ(r.Icao(0), "KSEA ");
    EXPECT_EQ(r.Airport(0).AirportNumber, 0);
    EXPECT_EQ(r.Airport(0).City.Str(), "Seattle" + std::string(33, ' '));
    EXPECT_EQ(r.Airport(0).State.Str().substr(0, 11), "Washington ");
    EXPECT_EQ(r.Airport(0).Country.Str().substr(0, 14), "United States ");
    EXPECT_EQ(r.Airport(0).AltitudeFeet, 433);  // 132 whole metres
    EXPECT_EQ(r.Airport(0).BglFileName.Str(), "ap_test.bgl    ");
    EXPECT_EQ(r.Airport(1).State.Str(), "0" + std::string(39, ' '));   // no state name
    EXPECT_EQ(r.Airport(2).State.Str(), std::string(40, ' '));         // two blanks
    EXPECT_EQ(r.Airport(2).AirportNumber, 2);
    EXPECT_EQ(t.BlindAirports, 1);
    // Every add-on airport made its entry, the blind one too.
    ASSERT_EQ(t.AddonTop(), 4);
    EXPECT_EQ(t.AddonAirports[2].Icao, "KXXX ");
    EXPECT_EQ(t.AddonAirports[4].AreaNumber, 5);
}

TEST(ReadAirportSubsection, AddonEntriesHideLaterAirportsAndNoteDoubles) {
    Reader r;
    std::string ksea = File({{test::Airport(3, "KSEA", 47.4, -122.3, 0, {Unknown(0x99, 1)})}});
    r.Read(ksea, 20);
    r.Read(ksea, 20);  // met twice in one area: both stored, noted once
    r.Read(ksea, 20);
    Tables& t = r.State.Tables;
    EXPECT_EQ(t.AirportTop, 2);
    EXPECT_EQ(t.DoubleAddonIcaos, (Lines{"", "KSEA "}));
    // All three delete flags of an entry from another area hide the airport,
    // stock or add-on; a hidden add-on airport makes no entry.
    // (As a delete record would note them, in the entry and in the code's counts.)
    auto replacing = [&t](int step) {
        t.AddonAirports[2].ReplacesOthers = step > 0;
        t.AddonIndex["KSEA"].Replacing += step;
        t.AddonIndex["KSEA"].ByArea[20].Replacing += step;
    };
    replacing(+1);
    r.Read(ksea, 7, /*stock=*/true);
    r.Read(ksea, 6);
    EXPECT_EQ(t.AirportTop, 2);
    EXPECT_EQ(t.AddonTop(), 3);
    replacing(-1);
    r.Read(ksea, 1, /*stock=*/true);  // a stock airport makes no entry either
    EXPECT_EQ(t.AirportTop, 3);
    EXPECT_EQ(t.AddonTop(), 3);
    Lines lines = r.Lines();
    EXPECT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines.back(), "00003 , 0001 , KSEA  - Seattle-Tacoma Intl");
}

TEST(ReadAirportSubsection, DamagedRecordsLogOneLineAndLeaveTheSubsection) {
    Reader r;
    BglRecord shortSkip = Unknown(0x99, 4);
    shortSkip.SizeOverride = 3;  // would move the walk back
    BglRecord shortName = test::AirportName("");
    shortName.SizeOverride = 2;  // the name reader refuses it; the walk goes on behind the header
    std::string file = File({
        {test::Airport(3, "KSEA", 1, 1, 0, {shortName, Unknown(0x99, 2)}),
         test::Airport(3, "KBFI", 1, 1, 0)},
        {test::Airport(3, "KNON", 1, 1, 0, {shortSkip}), test::Airport(3, "LSZH", 1, 1, 0)},
        {BglRecord{7, "not an airport"}, test::Airport(3, "LOWI", 1, 1, 0)},
    });
    r.Read(file);
    EXPECT_EQ(r.Lines(),
              (Lines{"00000 , 0005 , KSEA  - Seattle-Tacoma Intl",
                     "Error detection and correction in ReadAirportName04: AP_TEST.BGL (#5)",
                     "00001 , 0005 , KBFI  - Boeing Field/King County Intl",
                     "Error detection and correction in ReadAirportSubsection: AP_TEST.BGL (#5)"}));
    // The blind KNON gave its index back when its subsection was given up; a
    // wrong id ends a subsection silently.
    EXPECT_EQ(r.State.Tables.AirportTop, 1);

    // A record that claims to go on behind the end of the file.
    Reader past;
    BglRecord last = test::Airport(0x3C, "LSZH", 1, 1, 0, {Unknown(0x99, 2)});
    last.SizeOverride = 5000;
    past.Read(File({{last}}));
    EXPECT_EQ(past.Lines(),
              (Lines{"00000 , 0005 , LSZH  - Zurich",
                     "Error detection and correction in ReadAirportSubsection: AP_TEST.BGL (#62)"}));
}

// A name list written byte by byte, for the cases the builder cannot make.
struct RawNameList {
    ByteWriter Out;
    explicit RawNameList(std::vector<int16_t> counts, std::vector<int32_t> offsets) {
        Out.U16(39);
        Out.I32(0);
        for (int16_t c : counts) Out.I16(c);
        for (int32_t o : offsets) Out.I32(o);
    }
};

TEST(ReadNamelistSubsection, IndexRuleSpareElementsAndDamage) {
    // Regions: one empty string; countries: none; states: three; cities: one;
    // airport names: one. Index values beyond a list are divided by 16.
    ByteWriter lists;
    auto stringList = [&](std::vector<std::string> strings) {
        int32_t at = static_cast<int32_t>(42 + lists.Size());
        int32_t position = 0;
        for (const auto& s : strings) {
            lists.I32(position);
            position += static_cast<int32_t>(s.size()) + 1;
        }
        for (const auto& s : strings) lists.Text(s, s.size() + 1);
        return at;
    };
    int32_t regions = stringList({""});
    int32_t countries = stringList({});
    int32_t states = stringList({"A", "B", ""});
    int32_t cities = stringList({"CITY"});
    int32_t names = stringList({"NAME"});
    int32_t icaos = static_cast<int32_t>(42 + lists.Size());
    auto entry = [&](uint8_t country, int16_t state, const char* code) {
        lists.U8(0);
        lists.U8(country);
        lists.I16(state);
        lists.I16(0);
        lists.I16(0);
        lists.I32(test::PackCode(code, true));
        lists.Text("", 8);
    };
    entry(8, 48, "AAAA");   // country 8 -> 0 (0.5 to even), state 48 -> 3: the spare element
    entry(0, 2, "BBBB");    // state 2: an empty string, kept empty
    entry(24, 0, "CCCC");   // country 24 -> 2: outside the table, error 9
    entry(0, 0, "DDDD");    // never read
    RawNameList list({1, 0, 3, 1, 1, 4}, {regions, countries, states, cities, names, icaos});
    list.Out.Raw(lists.Bytes);

    Reader r;
    BglFile file;
    file.Sections = {Section(test::kSectionNameList, {}),
                     Section(test::kSectionAirport, {{test::Airport(3, "AAAA", 1, 1, 0, {Unknown(0x99, 1)}),
                                                      test::Airport(3, "BBBB", 1, 1, 0, {Unknown(0x99, 1)}),
                                                      test::Airport(3, "CCCC", 1, 1, 0, {Unknown(0x99, 1)}),
                                                      test::Airport(3, "DDDD", 1, 1, 0, {Unknown(0x99, 1)})}})};
    file.Sections[0].Subsections.push_back(test::BglSubsection{1, list.Out.Bytes});
    r.Read(test::BuildBgl(file));
    const Tables& t = r.State.Tables;
    EXPECT_EQ(t.NameCount, 4);
    EXPECT_EQ(t.NameTable[0].Region, " ");  // an empty region or state becomes a blank
    EXPECT_EQ(t.NameTable[0].Country, "");
    EXPECT_EQ(t.NameTable[0].State, "");
    EXPECT_EQ(t.NameTable[1].State, " ");
    EXPECT_EQ(t.NameTable[2].Country, "");  // failed here: keeps what it got
    EXPECT_EQ(t.NameTable[2].Icao, "");
    EXPECT_EQ(r.Lines(),
              (Lines{"Error detection and correction in ReadNamelistSubsection: AP_TEST.BGL (#9)",
                     "00000 , 0005 , AAAA  - Name", "00001 , 0005 , BBBB  - Name",
                     "Blind Airport found at: 2", "Blind Airport found at: 2"}));
    EXPECT_EQ(r.Icao(1), "BBBB ");
    EXPECT_EQ(r.Airport(1).State.Str(), "0" + std::string(39, ' '));

    // A string list of 8192 strings overflows 16 bits; a wrong id hides the old
    // table; a string that runs into the end of the file ends there.
    Reader big;
    RawNameList huge({0, 0, 8192, 0, 0, 0}, {42, 42, 42, 42, 42, 42});
    RawNameList wrongId({0, 0, 0, 0, 0, 0}, {42, 42, 42, 42, 42, 42});
    wrongId.Out.Bytes[0] = 38;
    RawNameList open({0, 0, 0, 0, 1, 1}, {42, 42, 42, 42, 62, 42});
    open.Out.Raw(std::string(8, '\0'));
    open.Out.I32(test::PackCode("OPEN", true));
    open.Out.Text("", 8);
    open.Out.I32(0);
    open.Out.Raw("ABC");  // never ended: the file ends behind it
    for (auto* raw : {&huge, &wrongId, &open}) {
        BglFile f;
        f.Sections = {Section(test::kSectionNameList, {})};
        f.Sections[0].Subsections.push_back(test::BglSubsection{1, raw->Out.Bytes});
        big.Read(test::BuildBgl(f));
        if (raw == &wrongId) {
            EXPECT_EQ(big.State.Tables.NameCount, 0);
        }
    }
    EXPECT_EQ(big.State.Tables.NameCount, 1);
    EXPECT_EQ(big.State.Tables.NameTable[0].AirportName, "ABC");
    EXPECT_EQ(big.State.Tables.NameTable[0].Icao, "OPEN");
    EXPECT_EQ(big.Lines(),
              (Lines{"Error detection and correction in ReadNamelistSubsection: AP_TEST.BGL (#6)"}));
}

TEST(ReadVORILSSubsection, KeepsIlsStationsWithTheValuesThatOutliveThem) {
    Reader r;
    BglRecord isnq = test::Navaid(4, "ISNQ", 47.46, -122.31, 123456, 110300000,
                                  {test::Localizer(163.5f), test::Glideslope(47.44, -122.31, 3.0f),
                                   test::Dme(47.46, -122.31), test::NavName("ILS RWY 16L")});
    BglRecord vor = test::Navaid(2, "SEA", 47.43, -122.30, 100000, 116800000,
                                 {test::Dme(47.43, -122.30), test::NavName("SEATTLE")});
    // No subrecords: the walk reads the next station's header and gives it back.
    BglRecord ibfi = test::Navaid(4, "IBFI", 47.53, -122.30, -500, 1103000, {});
    BglRecord izh = test::Navaid(4, "IZH", 47.45, 8.55, 0, 0,
                                 {test::Glideslope(47.46, 8.56, 2.5f),
                                  test::NavName(std::string("AB\0CD", 5) + std::string(45, 'x'))});
    BglFile file;
    file.Sections = {Section(test::kSectionNavaid, {{isnq, vor, ibfi, izh}})};
    r.Read(test::BuildBgl(file), 9, /*stock=*/true, "A_very_long_name.bgl");
    const Tables& t = r.State.Tables;
    EXPECT_EQ(t.StationsRead, 4);
    ASSERT_EQ(t.IlsTable.size(), 3u);
    const IlsRecord& a = t.IlsTable[0];
    EXPECT_EQ(a.AirportIndex, -2);
    EXPECT_EQ(a.Ident.Str(), "ISNQ ");
    EXPECT_EQ(a.Name.Str(), "ILS RWY 16L" + std::string(29, ' '));
    EXPECT_EQ(a.Kind.Str(), "I");
    EXPECT_EQ(a.Heading, 163.5f);
    EXPECT_EQ(a.GsPitch, 3.0f);
    EXPECT_EQ(a.FrequencyMhz, 110.3f);
    EXPECT_EQ(a.AltitudeFeet, 404);
    EXPECT_EQ(a.BglFileName.Str(), "A_very_long_nam");
    EXPECT_EQ(a.Reserved.Bytes, (std::array<char, 5>{}));
    EXPECT_EQ(a.RunwayIdent.Bytes, (std::array<char, 5>{}));
    EXPECT_NEAR(a.Latitude, 47.46, 1e-5);
    EXPECT_NEAR(a.GsLongitude, -122.31, 1e-5);
    // Localizer only: the glideslope, heading and name of the station before it.
    const IlsRecord& b = t.IlsTable[1];
    EXPECT_EQ(b.Kind.Str(), "L");
    EXPECT_EQ(b.Name, a.Name);  // the VOR's name did not count
    EXPECT_EQ(b.GsPitch, 3.0f);
    EXPECT_EQ(b.Heading, 163.5f);
    EXPECT_EQ(b.FrequencyMhz, 110.3f);  // only six digits count
    EXPECT_EQ(b.AltitudeFeet, -3);
    const IlsRecord& c = t.IlsTable[2];
    EXPECT_EQ(c.Name.Str(), "ABCD" + std::string(36, 'x'));  // zero bytes dropped, cut at 40
    EXPECT_EQ(c.GsPitch, 2.5f);
    EXPECT_EQ(c.FrequencyMhz, 0.0f);
    EXPECT_TRUE(r.Lines().empty());

    // An add-on ILS; then a VOR whose name subrecord would move the walk back,
    // and a station that claims to go on behind the end of the file.
    Reader damaged;
    BglRecord shortName = test::NavName("X");
    shortName.SizeOverride = 3;
    BglRecord badVor = test::Navaid(2, "SEA", 1, 1, 0, 0, {shortName});
    BglRecord lastIls = test::Navaid(4, "ILST", 1, 1, 0, 0, {test::Localizer(1)});
    lastIls.SizeOverride = 4000;
    file.Sections = {Section(test::kSectionNavaid, {{isnq, badVor, ibfi}, {lastIls}})};
    damaged.Read(test::BuildBgl(file));
    EXPECT_EQ(damaged.State.Tables.IlsTable.size(), 1u);
    EXPECT_EQ(damaged.State.Tables.IlsTable[0].AirportIndex, -1);
    EXPECT_EQ(damaged.Lines(),
              (Lines{"Error detection and correction in ReadVORILSSubsection: AP_TEST.BGL (#5)",
                     "Error detection and correction in ReadVORILSSubsection: AP_TEST.BGL (#62)"}));
}

}  // namespace
}  // namespace skl
