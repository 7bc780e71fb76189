// Google Benchmark of each consolidation pass over synthetic tables of 6,000,
// 12,000 and 24,000 airports (fixed seed): stock proportions of runways and
// ILS, countries, states and cities, a few double airports.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

#include "consolidation/Consolidation.h"
#include "model/FrontEnd.h"
#include "model/RunState.h"

namespace {

using namespace skl;

struct SilentFrontEnd : FrontEnd {
    void SetStatusText(const std::string&) override {}
    void SetProgressPercent(double) override {}
    void ShowProgress(bool) override {}
    bool ProcessEvents() override { return false; }
    MessageAnswer MessageBox(const std::string&, MessageButtons, const std::string&) override {
        return MessageAnswer::Ok;
    }
    void EnableUpdate(bool) override {}
    void EnableCancel(bool) override {}
    void EnableExit(bool) override {}
    void Unload() override {}
};

// A small linear congruential generator: the same tables on every machine.
struct Random {
    uint64_t State;
    uint32_t Next() {
        State = State * 6364136223846793005ULL + 1442695040888963407ULL;
        return static_cast<uint32_t>(State >> 33);
    }
    uint32_t Below(uint32_t n) { return Next() % n; }
    float Between(float low, float high) { return low + (high - low) * (Next() % 100000) / 100000.0f; }
};

std::string Code(uint32_t n) {
    std::string code = "K";
    for (int i = 0; i < 3; ++i, n /= 26) code += static_cast<char>('A' + n % 26);
    return code;
}

// Tables as the readers leave them for a run of `airports` airports.
void Fill(RunState& state, int32_t airports) {
    Random random{static_cast<uint64_t>(airports) * 7919};
    Tables& tables = state.Tables;
    tables = Tables();
    tables.AirportTable.resize(static_cast<size_t>(airports));
    tables.AirportTop = airports - 1;
    const char* states[] = {"Queensland", "Ontario", "Maine", "Texas", "Bavaria", "Tirol"};
    for (int32_t i = 0; i < airports; ++i) {
        AirportRecord& a = tables.AirportTable[static_cast<size_t>(i)];
        a.AirportNumber = i;
        a.Icao = Code(static_cast<uint32_t>(i));
        a.AirportName = "Airport " + std::to_string(i);
        a.Country = "Country " + std::to_string(random.Below(200));
        a.State = states[random.Below(6)];
        a.City = "City " + std::to_string(random.Below(airports / 2 + 1));
        a.Latitude = random.Between(-60, 70);
        a.Longitude = random.Between(-180, 180);
        a.RunwayCount = 1 + static_cast<int32_t>(random.Below(3));
        for (int32_t r = 0; r < a.RunwayCount; ++r) {
            RunwayRecord runway;
            runway.Latitude = a.Latitude;
            runway.Longitude = a.Longitude;
            runway.PrimaryDesignator = std::to_string(r + 1);
            runway.SecondaryDesignator = std::to_string(r + 19);
            if (random.Below(7) == 0) runway.PrimaryIlsIdent = "I" + Code(static_cast<uint32_t>(i)).substr(1);
            a.Runways.push_back(runway);
        }
    }
    // About 3,500 stations at 24,000 airports, a third of them ILS read twice.
    int32_t ils = airports * 1167 / 24000;
    for (int32_t k = 0; k < ils; ++k) {
        const AirportRecord& a = tables.AirportTable[random.Below(static_cast<uint32_t>(airports))];
        IlsRecord record;
        record.AirportIndex = random.Below(2) == 0 ? -1 : -2;
        record.Ident = "I" + a.Icao.Str().substr(1, 3);
        record.Latitude = a.Latitude + 0.01f;
        record.Longitude = a.Longitude;
        tables.IlsTable.push_back(record);
        tables.IlsTable.push_back(record);
    }
    for (int32_t d = 0; d < airports / 1000; ++d)
        tables.DoubleAddonIcaos.push_back(Code(random.Below(static_cast<uint32_t>(airports))));
}

// Files of the passes, written to /dev/null.
void OpenSink(RunState& state) {
    Files& files = state.Files;
    for (int16_t Files::*handle : {&Files::LogFile, &Files::IlsFile, &Files::AirportFile,
                                   &Files::RegionFile, &Files::StateFile, &Files::CountryFile,
                                   &Files::CityFile}) {
        files.*handle = static_cast<int16_t>(files.Table.FreeFile());
        files.Table.OpenOutput(files.*handle, "/dev/null");
    }
}

// Times `pass` over fresh tables of bench.range(0) airports; with `bindFirst`
// the ILS are bound before the clock runs, as every pass after the first sees them.
template <typename Pass>
void Run(benchmark::State& bench, bool bindFirst, Pass pass) {
    RunState state;
    OpenSink(state);
    SilentFrontEnd frontEnd;
    for (auto _ : bench) {
        bench.PauseTiming();
        Fill(state, static_cast<int32_t>(bench.range(0)));
        if (bindFirst) AssignIls2Airport(state, frontEnd);
        bench.ResumeTiming();
        pass(state, frontEnd);
    }
}

void BM_AssignIls2Airport(benchmark::State& b) { Run(b, false, AssignIls2Airport); }
void BM_RemoveIllegalState(benchmark::State& b) {
    Run(b, true, [](RunState& s, FrontEnd&) { RemoveIllegalState(s); });
}
void BM_Check4ILSDoubles(benchmark::State& b) {
    Run(b, true, [](RunState& s, FrontEnd&) { Check4ILSDoubles(s); });
}
void BM_MergeDoubleAirports(benchmark::State& b) {
    Run(b, true, [](RunState& s, FrontEnd&) { MergeDoubleAirports(s); });
}
void BM_FillCountryTable(benchmark::State& b) { Run(b, true, FillCountryTable); }
void BM_FillStateTable(benchmark::State& b) { Run(b, true, FillStateTable); }
void BM_FillCityTable(benchmark::State& b) { Run(b, true, FillCityTable); }

// The whole consolidation of a run, after the last BGL file.
void BM_Consolidation(benchmark::State& b) {
    Run(b, false, [](RunState& state, FrontEnd& frontEnd) {
        AssignIls2Airport(state, frontEnd);
        RemoveIllegalState(state);
        Check4ILSDoubles(state);
        MergeDoubleAirports(state);
        FillRegionTable(state);
        FillCountryTable(state, frontEnd);
        FillStateTable(state, frontEnd);
        FillCityTable(state, frontEnd);
    });
}

}  // namespace

#define SKL_SIZES ->Arg(6000)->Arg(12000)->Arg(24000)->Unit(benchmark::kMillisecond)
BENCHMARK(BM_AssignIls2Airport) SKL_SIZES;
BENCHMARK(BM_RemoveIllegalState) SKL_SIZES;
BENCHMARK(BM_Check4ILSDoubles) SKL_SIZES;
BENCHMARK(BM_MergeDoubleAirports) SKL_SIZES;
BENCHMARK(BM_FillCountryTable) SKL_SIZES;
BENCHMARK(BM_FillStateTable) SKL_SIZES;
BENCHMARK(BM_FillCityTable) SKL_SIZES;
BENCHMARK(BM_Consolidation) SKL_SIZES;

BENCHMARK_MAIN();
