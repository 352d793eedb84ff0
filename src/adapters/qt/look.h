#pragma once
#include "widgets/control.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

#include <cmath>

class QPainter;

namespace kova {

/// Pixels per design pixel (15 twips). Lengths that are no positions, fonts among them, take the smaller; a
/// finger's the mean, since a panel turned upright has neither larger nor smaller ones.
struct Scale {
    double x = 1, y = 1;
    [[nodiscard]] double smaller() const { return x < y ? x : y; }
    [[nodiscard]] double mean() const { return std::sqrt(x * y); }
    friend bool operator==(const Scale&, const Scale&) = default;
};

} // namespace kova

/// How this rendering looks: every colour that no model gives, and the shapes that several views share.
namespace kova::look {

QColor toQt(Color color);
Qt::Alignment toQt(Alignment alignment);
bool isDark(const QColor& color);
/// `share` of `second` in `first` [0-1].
QColor mixed(const QColor& first, const QColor& second, double share);
/// How well text of one colour stands out from the other, as WCAG 2.1 defines the contrast ratio [1-21].
double contrast(const QColor& a, const QColor& b);
/// `wanted`, or black or white where that could not be read on `background`.
QColor readableOn(const QColor& background, const QColor& wanted);
/// Black or white, whichever is read better.
QColor inkOn(const QColor& background);
QColor borderOn(const QColor& background);
/// Marks the focus and what is being used.
QColor accentOn(const QColor& background);

QFont font(const Font& design, const Scale& scale);

struct Face {
    QColor color = {};
    double unit = 1; ///< pixels of a thin line's design width
    bool flat = false;
    bool down = false;   ///< under the finger
    bool marked = false; ///< chosen, or held down for good
    bool enabled = true;
    bool focused = false;
};
void drawFace(QPainter& painter, const QRectF& area, const Face& face);
/// The area inside the border that a caption may fill, clear of the mark.
QRectF captionArea(const QRectF& area, const Face& face);
/// The colour that `face` is filled with.
QColor filling(const Face& face);

/// A disc with an "i", as large as fits.
void drawInformation(QPainter& painter, const QRectF& area, const QColor& background);

struct TextStyle {
    Qt::Alignment alignment = Qt::AlignCenter;
    bool wrapped = true;
    int smallestPixels = 8;
};
/// The largest size up to `font`'s own at which the text fits; the smallest when it never does.
QFont fitted(const QString& text, QFont font, const QSizeF& room, const TextStyle& style);
/// Draws the text fitted, and cut with an ellipsis where it does not fit.
void drawText(QPainter& painter, const QRectF& area, const QString& text, const QFont& font,
              const TextStyle& style = {});

} // namespace kova::look
