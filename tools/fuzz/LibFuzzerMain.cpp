// The libFuzzer entry of one fuzz program; the build chooses which one by
// defining SKL_FUZZ_BGL or SKL_FUZZ_SCENERY_CFG.
//
// With the environment variable SKL_FUZZ_WRITE_SEEDS set to a folder, the
// program first writes the seed inputs made by the test builder into that
// folder, so that the folder can be given as (part of) the corpus of the same run.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "fuzz/FuzzTargets.h"

#if defined(SKL_FUZZ_BGL) == defined(SKL_FUZZ_SCENERY_CFG)
#error "define exactly one of SKL_FUZZ_BGL and SKL_FUZZ_SCENERY_CFG"
#endif

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    const char* folder = std::getenv("SKL_FUZZ_WRITE_SEEDS");
    if (folder == nullptr || *folder == '\0') return 0;
    try {
#if defined(SKL_FUZZ_BGL)
        skl::fuzz::WriteSeeds(skl::fuzz::BglSeeds(), folder);
#else
        skl::fuzz::WriteSeeds(skl::fuzz::SceneryCfgSeeds(), folder);
#endif
    } catch (const std::exception& error) {
        std::fprintf(stderr, "cannot write the seeds to %s: %s\n", folder, error.what());
        std::exit(1);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
#if defined(SKL_FUZZ_BGL)
    skl::fuzz::FuzzBglWalk(data, size);
#else
    skl::fuzz::FuzzSceneryCfg(data, size);
#endif
    return 0;
}
