#include "adapters/qt/look.h"

#include <algorithm>
#include <cmath>

namespace kova::look {
namespace {

// A text colour that a scheme fixes stays as long as it can be made out at all; what replaces it, and every
// pair of our own, has the 4.5 to 1 that WCAG 2.1 asks of text (1.4.3).
constexpr double LeastOfAScheme = 3;
constexpr double LeastOfEdges = 3;
constexpr double Rounding = 1.05; // painting rounds colours

} // namespace

double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

QColor toQt(Color color) {
    return {color.red, color.green, color.blue};
}

Qt::Alignment toQt(Alignment alignment) {
    switch (alignment) {
    case Alignment::Center:
        return Qt::AlignHCenter;
    case Alignment::Right:
        return Qt::AlignRight;
    case Alignment::Left:
        break;
    }
    return Qt::AlignLeft;
}

bool isDark(const QColor& color) {
    return luminance(color) < 0.25;
}

QColor mixed(const QColor& first, const QColor& second, double share) {
    const auto part = [share](float a, float b) {
        return static_cast<float>(static_cast<double>(a) * (1 - share) + static_cast<double>(b) * share);
    };
    return QColor::fromRgbF(part(first.redF(), second.redF()), part(first.greenF(), second.greenF()),
                            part(first.blueF(), second.blueF()));
}

double contrast(const QColor& a, const QColor& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readableOn(const QColor& background, const QColor& wanted) {
    if (contrast(background, wanted) >= LeastOfAScheme)
        return wanted;
    return inkOn(background);
}

QColor inkOn(const QColor& background) {
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return contrast(background, black) > contrast(background, white) ? black : white;
}

bool standsOut(const QColor& a, const QColor& b) {
    return contrast(a, b) >= LeastOfEdges;
}

QColor borderOn(const QColor& filling, const QColor& backdrop) {
    const bool alone = standsOut(filling, backdrop);
    const auto isSeen = [](const QColor& a, const QColor& b) {
        return contrast(a, b) >= LeastOfEdges * Rounding;
    };
    std::vector<QColor> inks{palette::Border, Qt::black, Qt::white};
    if (isDark(filling) && (!alone || isDark(backdrop)))
        std::ranges::reverse(inks);
    for (const QColor& ink : inks)
        for (double share = 0.35; share < 1.01; share += 0.05)
            if (const QColor border = mixed(filling, ink, std::min(share, 1.0));
                isSeen(border, filling) && (alone || isSeen(border, backdrop)))
                return border;
    return inkOn(backdrop);
}

QColor accentOn(const QColor& background) {
    const bool dark = isDark(background);
    QColor accent = dark ? palette::Yellow : palette::Blue;
    while (contrast(accent, background) < LeastOfEdges * Rounding)
        accent = mixed(accent, dark ? Qt::white : Qt::black, 0.1);
    return accent;
}

QColor warningOn(const QColor& background) {
    return isDark(background) ? palette::LightAmber : palette::Amber;
}

QColor faded(const QColor& text, const QColor& background) {
    return mixed(text, background, 0.5);
}

} // namespace kova::look
