#pragma once
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace kova::test {

/// Compares what was seen with NAME.trace beside the tests. Where they differ it leaves what was seen in the
/// working folder: if that is meant, it is the new trace.
inline void expectTrace(const std::string& name, const std::string& seen) {
    std::ostringstream expected;
    expected << std::ifstream(KOVA_TRACES + name + ".trace").rdbuf();
    if (seen == expected.str())
        return;
    std::ofstream(name + ".trace") << seen;
    std::istringstream wanted(expected.str()), played(seen);
    std::string one, other;
    while (std::getline(wanted, one) && std::getline(played, other) && one == other) {
    }
    ADD_FAILURE() << "not as in " << name << ".trace, first:\n" << one << '\n' << other;
}

} // namespace kova::test
