#pragma once

#include <string>
#include <vector>

#include "model/FrontEnd.h"
#include "model/RunState.h"

namespace skl {

// Rhumb-line navigation on a sphere where a minute of arc is a nautical mile,
// with the decimal constants and the 32-bit steps the database has always been
// built with.
double Deg2Rad(double degrees);
double ModReal(double y, double x);
double Atan2Rad(double y, double x);
double MinValue(double a, double b);
double RhumbDistanceNm(float lat1, float lon1, float lat2, float lon2);

// The passes over the tables after the last BGL file, in the order of a run.
// None has a handler: an error leaves the pass and reaches the driver's.
void AssignIls2Airport(RunState& state, FrontEnd& frontEnd);
void RemoveIllegalState(RunState& state);
void Check4ILSDoubles(RunState& state);
void MergeDoubleAirports(RunState& state);
void FillRegionTable(RunState& state);
void FillCountryTable(RunState& state, FrontEnd& frontEnd);
void FillStateTable(RunState& state, FrontEnd& frontEnd);
// Goes on after any error with its next statement, without a log line.
void FillCityTable(RunState& state, FrontEnd& frontEnd);

// In-place ascending quicksort with the middle element as pivot; false when
// there is nothing to sort.
bool QuickSortRange(std::vector<std::string>& items, int32_t low, int32_t high);
bool SortVariantArray(std::vector<std::string>& items);

// A 32-bit float as the log writes numbers: at most seven significant digits.
std::string FloatText(float value);

}  // namespace skl
