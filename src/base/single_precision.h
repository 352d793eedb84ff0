#pragma once
#include <array>
#include <charconv>

namespace kova {

/// A server's real, which has seven digits, without the noise of the ninth.
inline double withoutNoise(float number) {
    std::array<char, 32> digits{};
    const auto* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    double result = 0;
    std::from_chars(digits.data(), end, result);
    return result;
}

} // namespace kova
