#include "BenchRandom.h"

#include <algorithm>

namespace skl::bench {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kMetresPerDegree = 111120.0;

const std::vector<std::string> kSyllables = {
    "KAR", "VEL", "MON", "TAR", "LIN", "BRO", "SAN", "DEL", "OR",  "MAR", "TON",  "RA",
    "VIK", "HOL", "PER", "AL",  "BER", "GEN", "CAS", "LO",  "NOR", "WEL", "STAD", "FIN",
    "RO",  "ZAN", "MIR", "ES",  "KEL", "DOR", "AN",  "TRE", "BUR", "HAM", "VIL",  "SEN"};
const std::string kBase36 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

// Sine by its series after reducing the angle to [-pi/2, pi/2]: only additions and
// multiplications, so every machine gives the same bits.
double Sine(double radians) {
    double x = radians - 2.0 * kPi * static_cast<double>(static_cast<int64_t>(radians / (2 * kPi)));
    if (x > kPi) x -= 2.0 * kPi;
    if (x < -kPi) x += 2.0 * kPi;
    if (x > kPi / 2) x = kPi - x;
    if (x < -kPi / 2) x = -kPi - x;
    const double x2 = x * x;
    double term = x;
    double sum = x;
    for (int n = 1; n <= 9; ++n) {
        term = -term * x2 / static_cast<double>((2 * n) * (2 * n + 1));
        sum += term;
    }
    return sum;
}

double Cosine(double radians) {
    return Sine(radians + kPi / 2);
}

}  // namespace

uint32_t Next(std::mt19937& rng) {
    return static_cast<uint32_t>(rng());
}

int64_t Between(std::mt19937& rng, int64_t lo, int64_t hi) {
    if (hi <= lo) return lo;
    const uint64_t span = static_cast<uint64_t>(hi - lo) + 1;
    const uint64_t high = Next(rng);
    const uint64_t wide = (high << 32) | Next(rng);
    return lo + static_cast<int64_t>(wide % span);
}

double Fraction(std::mt19937& rng) {
    const uint64_t high = Next(rng) >> 5;  // 27 bits
    const uint64_t low = Next(rng) >> 6;   // 26 bits
    return static_cast<double>((high << 26) | low) / 9007199254740992.0;
}

double BetweenReal(std::mt19937& rng, double lo, double hi) {
    return lo + (hi - lo) * Fraction(rng);
}

bool Chance(std::mt19937& rng, int percent) {
    return Between(rng, 0, 99) < percent;
}

int64_t Share(int64_t total, int64_t part, int64_t whole) {
    return total * part / whole;
}

std::string MadeUpName(std::mt19937& rng) {
    std::string name;
    for (int64_t i = Between(rng, 2, 3); i > 0; --i) name += Pick(rng, kSyllables);
    return name;
}

std::string Base36(int64_t value, int width) {
    std::string text;
    for (; value > 0 || static_cast<int>(text.size()) < width; value /= 36)
        text.insert(text.begin(), kBase36[static_cast<size_t>(value % 36)]);
    return text;
}

void Move(double& latitude, double& longitude, double metres, double heading) {
    const double radians = heading * kPi / 180.0;
    const double north = metres * Cosine(radians) / kMetresPerDegree;
    const double east = metres * Sine(radians) / kMetresPerDegree;
    const double shrink = std::max(0.05, Cosine(latitude * kPi / 180.0));
    latitude += north;
    longitude += east / shrink;
}

}  // namespace skl::bench
