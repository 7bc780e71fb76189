// Rhumb-line distance. Coordinates in radians are 32-bit floats, the other
// intermediate values 64-bit; the constants are the decimal ones below, not
// the mathematical constants at full precision.
#include <cmath>

#include "consolidation/Consolidation.h"
#include "platform/RunError.h"

namespace skl {

namespace {

constexpr double kPi = 3.1415926;
constexpr double kTwoPi = 6.2831852;
constexpr double kThreePi = 9.4247778;

// A logarithm of a value at or below 0 is an invalid argument (5).
double CheckedLog(double value) {
    if (!(value > 0)) throw RunError(kInvalidArgument);
    return std::log(value);
}

double CheckedDivide(double numerator, double denominator) {
    if (denominator == 0) throw RunError(kDivisionByZero);
    return numerator / denominator;
}

// The Mercator stretched latitude, in 64-bit arithmetic (the float overloads
// of sin and cos would round to 32 bits).
double Stretched(double latitude) {
    return CheckedLog(CheckedDivide(1 + std::sin(latitude), std::cos(latitude)));
}

}  // namespace

double Deg2Rad(double degrees) { return degrees * (kPi / 180.0); }

double ModReal(double y, double x) {
    if (y >= 0) return y - x * std::floor(y / x);
    return y + x * (std::floor(-y / x) + 1);
}

double Atan2Rad(double y, double x) {
    if (x == 0) return y > 0 ? kPi / 2 : kThreePi / 2;
    if (x < 0) return std::atan(y / x) + kPi;
    if (y > 0) return std::atan(y / x);
    return std::atan(y / x) + kTwoPi;
}

double MinValue(double a, double b) { return a > b ? b : a; }

double RhumbDistanceNm(float lat1, float lon1, float lat2, float lon2) {
    // Identical coordinates are nudged apart on the second position.
    if (lon1 == lon2) lon2 = static_cast<float>(lon2 + 0.00001);
    if (lat1 == lat2) lat2 = static_cast<float>(lat2 + 0.00001);
    const float rLat1 = static_cast<float>(Deg2Rad(lat1));
    const float rLon1 = static_cast<float>(Deg2Rad(lon1));
    const float rLat2 = static_cast<float>(Deg2Rad(lat2));
    const float rLon2 = static_cast<float>(Deg2Rad(lon2));
    const double eastward = ModReal(static_cast<float>(rLon2 - rLon1), kTwoPi);
    const double westward = ModReal(static_cast<float>(rLon1 - rLon2), kTwoPi);
    const double dphi = Stretched(rLat2) - Stretched(rLat1);
    const double course = westward < eastward ? ModReal(Atan2Rad(-westward, dphi), kTwoPi)
                                              : ModReal(Atan2Rad(eastward, dphi), kTwoPi);
    const float tolerance = static_cast<float>(std::sqrt(1e-15));
    const float latitudeDifference = std::fabs(rLat1 - rLat2);
    float d;
    if (tolerance > latitudeDifference)
        d = static_cast<float>(std::cos(double{rLat1}) * MinValue(westward, eastward));
    else
        d = static_cast<float>(std::fabs(CheckedDivide(rLat2 - rLat1, std::cos(course))));
    return d / kPi * 180.0 * 60.0;
}

}  // namespace skl
