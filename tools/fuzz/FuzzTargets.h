#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Entry points for fuzzing the two readers of untrusted bytes: the BGL walk and the
// scenery.cfg reader. Each sets up what it needs once per process (a log and the
// files the readers write, in a temporary folder), feeds the bytes through and
// leaves nothing behind that would make the next input behave differently. The
// same functions run under libFuzzer (tools/fuzz/LibFuzzerMain.cpp) and in the
// replay test of skldb_tests.
namespace skl::fuzz {

// Walks the bytes as a BGL file with every section reader. Byte 2 of the header
// (not examined by the walk) chooses stock scenery (bit 0), byte 3 the area number.
void FuzzBglWalk(const uint8_t* data, size_t size);

// Writes the bytes as scenery.cfg of an FS2004 folder and reads it into the area
// table. An aborted run (error 75 or 52) is caught.
void FuzzSceneryCfg(const uint8_t* data, size_t size);

// Seed inputs made by the test builder: BGL files that hold every kind of section
// and subrecord the readers look at, and scenery.cfg texts.
std::vector<std::string> BglSeeds();
std::vector<std::string> SceneryCfgSeeds();

// Writes the seeds of one kind into a folder as seed-NNN files.
void WriteSeeds(const std::vector<std::string>& seeds, const std::string& folder);

}  // namespace skl::fuzz
