#pragma once
#include <compare>
#include <cstdint>

namespace kova {

/// A length of one kind: explicit in, `.count` out, so that twips and pixels cannot be mixed up.
template <class Tag>
struct Length {
    int count = 0;
    constexpr Length() = default;
    constexpr explicit Length(int value) : count(value) {}
    // NOLINTNEXTLINE(modernize-use-nullptr): it takes the comparison's zero for a pointer
    friend constexpr auto operator<=>(Length, Length) = default;
    friend constexpr Length operator+(Length a, Length b) { return Length(a.count + b.count); }
    friend constexpr Length operator-(Length a, Length b) { return Length(a.count - b.count); }
};

using Twips = Length<struct TwipsTag>; ///< 1/1440 inch; 15 twips are one pixel at 96 dpi

/// Position relative to the parent, and size. Right and bottom are exclusive.
struct Rect {
    Twips left, top, width, height;

    constexpr Rect() = default;
    constexpr Rect(int l, int t, int w, int h) : left(l), top(t), width(w), height(h) {}
    [[nodiscard]] constexpr Twips right() const { return left + width; }
    [[nodiscard]] constexpr Twips bottom() const { return top + height; }
    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

/// A colour; its integer form is red + 256 × green + 65536 × blue.
struct Color {
    std::uint8_t red = 0, green = 0, blue = 0;

    static constexpr Color fromInteger(std::uint32_t value) {
        return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8U),
                static_cast<std::uint8_t>(value >> 16U)};
    }
    [[nodiscard]] constexpr std::uint32_t toInteger() const { return red + 256U * green + 65536U * blue; }
    friend constexpr bool operator==(const Color&, const Color&) = default;
};

namespace colors {
inline constexpr Color Black{0, 0, 0};
inline constexpr Color White{255, 255, 255};
inline constexpr Color ButtonFace{240, 240, 240};
// The dark scheme, with white texts.
inline constexpr Color DarkBackground{88, 100, 114};
inline constexpr Color DarkFace{115, 127, 141};
} // namespace colors

} // namespace kova
