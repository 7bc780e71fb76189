#include <gtest/gtest.h>

#include <cmath>

#include "consolidation/Consolidation.h"
#include "platform/RunError.h"

namespace skl {
namespace {

int ErrorOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const RunError& e) {
        return e.Number;
    }
    return 0;
}

TEST(RhumbDistanceNm, FiguresToFourDecimals) {
    struct Case {
        float Lat1, Lon1, Lat2, Lon2;
        double Nm;
    };
    const Case cases[] = {
        {50, 8, 50, 8, 0.0007},                // identical positions are nudged apart
        {10, 0, 11, 0, 60.0000},               // along a meridian
        {0, 0, 0, 1, 60.0000},                 // along the equator
        {0, 179.5f, 0, -179.5f, 60.0003},      // the shorter way across 180
        {50, 0, 50, 1, 38.5673},               // along a parallel
        {-33.9f, 151.2f, -33.95f, 151.18f, 3.1609},
    };
    for (const Case& c : cases) {
        double nm = RhumbDistanceNm(c.Lat1, c.Lon1, c.Lat2, c.Lon2);
        EXPECT_NEAR(nm, c.Nm, 0.00005) << c.Lat1 << " " << c.Lon1 << " " << c.Lat2 << " " << c.Lon2;
    }
    // A latitude beyond the pole takes the logarithm of a negative value.
    EXPECT_EQ(ErrorOf([] { RhumbDistanceNm(100, 0, 10, 0); }), kInvalidArgument);
    EXPECT_EQ(ErrorOf([] { RhumbDistanceNm(std::nanf(""), 0, 10, 0); }), kInvalidArgument);
}

TEST(RhumbDistanceNm, ModRealAndAtan2RadCorners) {
    EXPECT_EQ(ModReal(0, 6.2831852), 0);
    EXPECT_NEAR(ModReal(-0.5, 6.2831852), 5.7831852, 1e-12);
    EXPECT_EQ(ModReal(-6.2831852, 6.2831852), 6.2831852);  // not 0
    EXPECT_NEAR(ModReal(7, 6.2831852), 7 - 6.2831852, 1e-12);
    EXPECT_EQ(Atan2Rad(0, 1), 6.2831852);  // y of exactly 0 falls under the last case
    EXPECT_EQ(Atan2Rad(1, 0), 3.1415926 / 2);
    EXPECT_EQ(Atan2Rad(0, 0), 9.4247778 / 2);
    EXPECT_EQ(Atan2Rad(-1, 0), 9.4247778 / 2);
    EXPECT_NEAR(Atan2Rad(1, -1), std::atan(-1.0) + 3.1415926, 1e-15);
    EXPECT_EQ(Deg2Rad(180), 180 * (3.1415926 / 180.0));
    EXPECT_EQ(MinValue(2, 1), 1);
    EXPECT_EQ(MinValue(1, 1), 1);
}

TEST(SortVariantArray, SortsByCharacterCodes) {
    std::vector<std::string> one{"x"};
    EXPECT_FALSE(SortVariantArray(one));
    std::vector<std::string> empty;
    EXPECT_FALSE(SortVariantArray(empty));
    std::vector<std::string> items{"b", "a", "B", " z", "Wien", "WIEN", "a", "ab", "A"};
    EXPECT_TRUE(SortVariantArray(items));
    EXPECT_EQ(items, (std::vector<std::string>{" z", "A", "B", "WIEN", "Wien", "a", "a", "ab", "b"}));
    std::vector<std::string> many;
    for (int i = 0; i < 3000; ++i) many.push_back(std::to_string((i * 7919) % 3001));
    std::vector<std::string> sorted = many;
    std::sort(sorted.begin(), sorted.end());
    SortVariantArray(many);
    EXPECT_EQ(many, sorted);
    EXPECT_EQ(FloatText(47.44889f), "47.44889");
    EXPECT_EQ(FloatText(-122.3094f), "-122.3094");
    EXPECT_EQ(FloatText(0.5f), "0.5");
    EXPECT_EQ(FloatText(100.0f), "100");
    EXPECT_EQ(FloatText(0.00001f), "1E-05");
    EXPECT_EQ(FloatText(12345678.0f), "1.234568E+07");
}

}  // namespace
}  // namespace skl
