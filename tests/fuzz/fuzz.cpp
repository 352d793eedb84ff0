// Searches inputs that break what holds of a target, which KOVA_FUZZ names; libFuzzer has the main program.
#include "fuzz_targets.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const auto target = kova::test::fuzzTargets().at(std::getenv("KOVA_FUZZ"));
    target({bytes, size});
    return 0;
}
