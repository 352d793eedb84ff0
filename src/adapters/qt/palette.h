#pragma once
#include <QColor>

/// Every colour of the drawing that the models, and with them the two schemes, do not give.
namespace kova::palette {

// Seen against both schemes.
inline constexpr QColor Yellow(255, 214, 102); ///< refusals and warnings; focus and use on dark surfaces
inline constexpr QColor Blue(15, 98, 172);     ///< focus and use on light surfaces
inline constexpr QColor MoneyIn(20, 96, 52);
inline constexpr QColor MoneyOut(150, 38, 28);
inline constexpr QColor Success(20, 83, 45);
inline constexpr QColor Failure = MoneyOut;
inline constexpr QColor LightAmber(255, 178, 70); ///< what is missing, on dark surfaces

// On light surfaces.
inline constexpr QColor Ink(20, 30, 42);
inline constexpr QColor PaleInk(62, 74, 89);
inline constexpr QColor Amber(166, 92, 0);      ///< what is missing
inline constexpr QColor DimmedInk(88, 96, 106); ///< of what may be read but is out of date
inline constexpr QColor DisabledInk(112, 112, 112);
inline constexpr QColor CheckMark(16, 42, 67);
inline constexpr QColor CancelIcon(178, 34, 44);
inline constexpr QColor ConfirmIcon(24, 122, 62);
inline constexpr QColor OtherIcon(60, 74, 92);
inline constexpr QColor CalendarIcon(40, 60, 85);

// Light surfaces.
inline constexpr QColor Paper(255, 255, 255); ///< also of a control that is detached from its model
inline constexpr QColor Key(252, 252, 253);
inline constexpr QColor PadKey(250, 250, 251);
inline constexpr QColor Stripe(247, 249, 251);
inline constexpr QColor Header(241, 243, 246);
inline constexpr QColor DisabledPaper(235, 236, 238);
inline constexpr QColor PadClearKey(226, 231, 237);
inline constexpr QColor Band(222, 228, 235); ///< of groups, and of keys that type no character
inline constexpr QColor DisabledField(216, 218, 220);
inline constexpr QColor Chosen(200, 222, 250);
inline constexpr QColor PressedField(197, 214, 232);

// Mixed into the colour of what they change.
inline constexpr QColor Border(40, 55, 75);
inline constexpr QColor Pressed(30, 60, 100);
inline constexpr QColor Disabled(150, 155, 160);
inline constexpr QColor OtherTab(45, 56, 70);
inline constexpr QColor HeldOnDark(30, 40, 52);
inline constexpr QColor HeldOnLight(120, 180, 235);
inline constexpr QColor Shadow(0, 0, 0, 45);

} // namespace kova::palette
