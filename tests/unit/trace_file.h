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
    EXPECT_EQ(expected.str(), seen);
    if (seen != expected.str())
        std::ofstream(name + ".trace") << seen;
}

} // namespace kova::test
