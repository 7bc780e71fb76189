// Real scenery files from public packages, read from the shared folder beside
// the repository; skipped where that folder is absent.
#include <gtest/gtest.h>

#include <algorithm>

#include "bgl/BglReaders.h"
#include "scenery/SceneryCfg.h"
#include "support/RunHelpers.h"

namespace skl {
namespace {

namespace fs = std::filesystem;

const fs::path kRealData = SKL_REALDATA_DIR;

// The files that the readers write while reading, opened in the run's folder.
void OpenReadingOutputs(test::LoggedState& run) {
    Files& files = run.State.Files;
    for (auto [handle, name] : {std::pair{&Files::TaxiFile, "Taxi.skl"},
                                {&Files::PolyFile, "Poly.skl"}, {&Files::MarkerFile, "Marker.skl"}}) {
        files.*handle = static_cast<int16_t>(files.Table.FreeFile());
        files.Table.OpenOutput(files.*handle, (run.Dir.Path / name).string());
    }
}

TEST(RealData, EveryBglFileIsWalkedOrRefusedWithoutErrors) {
    if (!fs::is_directory(kRealData)) GTEST_SKIP() << "no real data at " << kRealData;
    test::LoggedState run;
    OpenReadingOutputs(run);
    int accepted = 0;
    int refused = 0;
    for (const auto& entry : fs::recursive_directory_iterator(kRealData)) {
        std::string ext = entry.path().extension().string();
        std::transform(ext.begin(), ext.end(), ext.begin(), ::tolower);
        if (!entry.is_regular_file() || ext != ".bgl") continue;
        run.State.Reading.CurrentBglFile = entry.path().filename().string();
        platform::FileTable& table = run.State.Files.Table;
        int number = table.FreeFile();
        table.OpenInput(number, entry.path().string());
        run.State.Reading.Bgl = platform::ByteReader::FromDescriptor(table.InputDescriptor(number));
        // Files of the older format start with 01 00 and are no section-directory files.
        (ReadBglFile(run.State) == 0 ? accepted : refused)++;
        table.Close(number);
    }
    EXPECT_EQ(refused, 2);
    EXPECT_GE(accepted, 15);
    for (const std::string& line : run.Lines()) {
        EXPECT_EQ(line.find("Error detection"), std::string::npos) << line;
        EXPECT_EQ(line.find("Blind Airport"), std::string::npos) << line;
    }
}

TEST(RealData, KphxGivesItsAirportAndItsIlsStations) {
    fs::path file = kRealData / "TheMainlineCowboy__SkyHarborPhx" / "scenery" / "KPHX_ADEX.BGL";
    if (!fs::is_regular_file(file)) GTEST_SKIP() << "no real data at " << kRealData;
    test::LoggedState run;
    OpenReadingOutputs(run);
    Reading& reading = run.State.Reading;
    reading.CurrentBglFile = "KPHX_ADEX.BGL";
    reading.AreaNumber = 12;
    platform::FileTable& table = run.State.Files.Table;
    int number = table.FreeFile();
    table.OpenInput(number, file.string());
    reading.Bgl = platform::ByteReader::FromDescriptor(table.InputDescriptor(number));
    EXPECT_EQ(ReadBglFile(run.State), 0);
    const Tables& tables = run.State.Tables;
    ASSERT_EQ(tables.AirportTop, 0);
    const AirportRecord& kphx = tables.AirportTable[0];
    EXPECT_EQ(kphx.Icao.Str(), "KPHX ");
    EXPECT_NEAR(kphx.Latitude, 33.43, 0.05);
    EXPECT_NEAR(kphx.Longitude, -112.01, 0.05);
    EXPECT_EQ(tables.IlsTable.size(), 5u);
    for (const IlsRecord& ils : tables.IlsTable) {
        EXPECT_EQ(ils.AirportIndex, -1);
        EXPECT_NEAR(ils.Latitude, 33.43, 0.1);
        EXPECT_GE(ils.FrequencyMhz, 108.0f);
        EXPECT_LE(ils.FrequencyMhz, 112.0f);
    }
    auto lines = run.Lines();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].substr(0, 22), "00000 , 0012 , KPHX  -");
}

TEST(RealData, StockSceneryLibrariesFillTheAreaTable) {
    if (!fs::is_directory(kRealData)) GTEST_SKIP() << "no real data at " << kRealData;
    for (auto [folder, areas] : {std::pair{"tpn__fsx", 120}, {"alts5__flight-trainer", 124}}) {
        test::LoggedState run;
        Selection& sel = run.State.Selection;
        sel.IsFsx = true;
        sel.SimulatorFolder = "C:\\FSX\\";
        sel.CfgFolder = test::WindowsFolder(sel.Drives, kRealData / folder);
        sel.CfgFileName = "scenery.cfg";
        GetBGLFileDirectories(run.State);
        const Reading& reading = run.State.Reading;
        EXPECT_EQ(reading.AreaCount, areas) << folder;
        EXPECT_EQ(std::count(reading.AreaDirectories.begin(), reading.AreaDirectories.end(), ""), 0)
            << folder;
        EXPECT_EQ(reading.AreaDirectories.front(), "C:\\FSX\\SCENERY\\WORLD\\scenery\\") << folder;
        EXPECT_EQ(reading.AreaDirectories.back(), "C:\\FSX\\ADDON SCENERY\\scenery\\") << folder;
        auto lines = run.Lines();
        EXPECT_EQ(std::count(lines.begin(), lines.end(), "===== Error Error Error ====="), 0);
    }
}

}  // namespace
}  // namespace skl
