#pragma once
#include "adapters/qt/palette.h"
#include "screen/geometry.h"
#include "widgets/captioned_controls.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <vector>

class QPainter;

/// How this rendering looks: colours, texts, and the shapes that several views share.
namespace kova::look {

inline QPointF toQt(const Point& point) {
    return {point.x, point.y};
}
inline QRectF toQt(const Area& area) {
    return {area.left, area.top, area.width, area.height};
}
QColor toQt(Color color);
Qt::Alignment toQt(Alignment alignment);
double luminance(const QColor& color); ///< relative, as WCAG 2.1 defines it [0-1]
bool isDark(const QColor& color);
/// `share` of `second` in `first` [0-1].
QColor mixed(const QColor& first, const QColor& second, double share);
/// How well text of one colour stands out from the other, as WCAG 2.1 defines the contrast ratio [1-21].
double contrast(const QColor& a, const QColor& b);
/// Whether an edge between them is made out: 3 to 1, as WCAG 2.1 asks of what a control is told by (1.4.11).
bool standsOut(const QColor& a, const QColor& b);
/// `wanted`, or black or white where that could not be read on `background`.
QColor readableOn(const QColor& background, const QColor& wanted);
/// Black or white, whichever is read better.
QColor inkOn(const QColor& background);
/// The outline of what is filled with one colour and stands on the other. It is made out on both, and where
/// the filling itself stands out, on that alone.
QColor borderOn(const QColor& filling, const QColor& backdrop);
/// A line that is made out.
inline QColor borderOn(const QColor& background) {
    return borderOn(background, background);
}
/// Marks the focus and what is being used.
QColor accentOn(const QColor& background);
/// Points at what is missing.
QColor warningOn(const QColor& background);
/// Of a disabled text on `background`.
QColor faded(const QColor& text, const QColor& background);

// Of rounded corners, in design pixels.
constexpr double FieldRadius = 4; ///< of what is typed into
constexpr double FaceRadius = 5;  ///< of buttons, and of what stands between them
constexpr double BoardRadius = 6; ///< of what lies in front or behind

/// The width of a line, in whole pixels, where a design pixel measures `unit` pixels.
inline double lineWidth(double unit) {
    return std::max(1.0, std::ceil(unit));
}
/// Between whole pixels, where a line loses no contrast to its neighbours.
inline QRectF onPixels(const QRectF& area) {
    return area.toRect();
}

// Texts for an eye at 60 cm from a panel of 10 inches and 1280 x 800 pixels, the smallest that tills have.
constexpr double PanelPixels = 149 / 25.4;                       ///< of a millimetre
constexpr double PanelUnit = 1280 / DesignSurface.width;         ///< pixels of a design pixel there
constexpr double LegibleCapitals = 600 * 0.004654 * PanelPixels; ///< pixels; 16 minutes of arc
constexpr double CapitalsOfFont = 0.727;                         ///< of its size, as Tahoma has them
constexpr double PointsPerPixel = 72.0 / 96;
/// The size up to which captions grow where there is room.
constexpr double LegiblePoints = LegibleCapitals / CapitalsOfFont / PanelUnit * PointsPerPixel;
/// Design pixels: 16 pixels there, below which captions only go when they would have to be broken.
constexpr double LeastCaption = 16 / PanelUnit;

QFont font(const Font& design, const Scale& scale);

struct Face {
    QColor color = {};
    QColor backdrop = {}; ///< behind it; of its own colour without one
    double unit = 1;      ///< pixels of a thin line's design width
    bool flat = false;
    bool accented = false; ///< edged in the accent colour
    bool down = false;     ///< under the finger
    bool marked = false;   ///< chosen, or held down for good
    bool enabled = true;
    bool focused = false;
};
void drawFace(QPainter& painter, const QRectF& area, const Face& face);
/// The area inside the border that a caption may fill, clear of the mark.
QRectF captionArea(const QRectF& area, const Face& face);
/// The colour that `face` is filled with.
QColor filling(const Face& face);

/// A small diamond: what stands left of it is missing. `unit` are the pixels of a design pixel.
void drawMissing(QPainter& painter, const QPointF& left, double unit, const QColor& background);
constexpr double MissingWidth = 15; ///< with the gap before it, in design pixels
constexpr double RefusedRing = 3;   ///< design pixels

/// A disc with an "i", as large as fits.
void drawInformation(QPainter& painter, const QRectF& area, const QColor& background);

/// Draws an icon as shapes that fill `area` at any size, in the caption's colour, or in one that says the
/// same as the shape where the caption is dark on a light face.
void drawIcon(QPainter& painter, const QRectF& area, PushButton::Icon icon, const QColor& caption);

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

/// A text broken into lines.
struct Caption {
    QFont font;
    QStringList lines;
    bool whole = true; ///< nothing had to be cut
};

struct CaptionPlace {
    QString text;
    QSizeF room; ///< pixels
};

enum class CaptionSizes { Own, Common };

/// Sets captions that are designed in `font`, where a design pixel measures `unit` pixels. What does not fit
/// in words takes a smaller size, then the regular weight, then the least size that is read at arm's length,
/// then hyphens in overlong words, and is cut at last. With common sizes all take that of the longest, but
/// one that needs the very smallest is set so alone.
std::vector<Caption> setCaptions(const std::vector<CaptionPlace>& places, const QFont& font, double unit,
                                 CaptionSizes sizes);
/// As much of a text as fits in that font.
Caption cutCaption(const CaptionPlace& place, const QFont& font);
void drawCaption(QPainter& painter, const QRectF& area, const Caption& caption, Qt::Alignment alignment);

} // namespace kova::look
