#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

// Numbers, names and positions for the benchmark installation that come out the same
// on every machine: std::mt19937 gives the same sequence everywhere, the
// distributions are written here (the standard ones are not specified bit for bit),
// and sine and cosine are computed here too (the library's last bit may vary).
namespace skl::bench {

uint32_t Next(std::mt19937& rng);
// An integer from lo to hi, both included (modulo: the small bias does not matter).
int64_t Between(std::mt19937& rng, int64_t lo, int64_t hi);
// A double in [0, 1) from 53 random bits.
double Fraction(std::mt19937& rng);
double BetweenReal(std::mt19937& rng, double lo, double hi);
bool Chance(std::mt19937& rng, int percent);

template <typename T>
const T& Pick(std::mt19937& rng, const std::vector<T>& items) {
    return items[static_cast<size_t>(Between(rng, 0, static_cast<int64_t>(items.size()) - 1))];
}

// total * part / whole, for cutting a total into consecutive shares.
int64_t Share(int64_t total, int64_t part, int64_t whole);

// Two or three syllables: a city, a country, a VOR's name.
std::string MadeUpName(std::mt19937& rng);
// The number in base 36, at least width digits.
std::string Base36(int64_t value, int width);

// Moves a point by a distance (metres) on a heading (degrees true).
void Move(double& latitude, double& longitude, double metres, double heading);

}  // namespace skl::bench
