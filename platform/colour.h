// Colours as the program stores them: packed 24-bit RGB with red in the low byte.
#pragma once

#include <cstdint>

namespace tallyon {

using Colour = std::uint32_t;

// Packs red, green and blue (each clamped to 0..255) into one colour.
constexpr Colour RGB(int red, int green, int blue)
{
    auto clamp = [](int v) { return static_cast<Colour>(v < 0 ? 0 : (v > 255 ? 255 : v)); };
    return clamp(red) | (clamp(green) << 8) | (clamp(blue) << 16);
}
constexpr int RedOf(Colour c) { return static_cast<int>(c & 0xFF); }
constexpr int GreenOf(Colour c) { return static_cast<int>((c >> 8) & 0xFF); }
constexpr int BlueOf(Colour c) { return static_cast<int>((c >> 16) & 0xFF); }

// The fixed colours set once at start-up; they belong to no scheme.
namespace fixed {
inline constexpr Colour DarkText = RGB(20, 20, 20);
inline constexpr Colour LightGrey = RGB(225, 225, 225);
inline constexpr Colour MidGrey = RGB(120, 120, 120);
inline constexpr Colour White = RGB(255, 255, 255);
inline constexpr Colour Red = RGB(240, 0, 0);
inline constexpr Colour Green = RGB(10, 200, 10);
inline constexpr Colour Yellow = RGB(200, 200, 10);
inline constexpr Colour Blue = RGB(20, 20, 200);
} // namespace fixed

} // namespace tallyon
