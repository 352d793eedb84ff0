#pragma once
#include <QColor>
#include <QFont>
#include <QString>

/// How the demonstration window looks: few calm colours next to those of the dialog, sizes for fingers.
/// Lengths are given in pixels of a window of 1024 × 768 and grow with it.
namespace kova::host_look {

extern const QColor Ink;      ///< text, and the header's ground
extern const QColor Muted;    ///< text of less weight
extern const QColor Surface;  ///< what text stands on
extern const QColor Ground;   ///< between the surfaces
extern const QColor Line;     ///< borders
extern const QColor Accent;   ///< what can be pressed, and what is chosen
extern const QColor Incoming; ///< money into the drawer, success
extern const QColor Outgoing; ///< money out of it
extern const QColor Failure;

/// Of the window's size over the design's, never below 1.
double scaleFor(const QSize& window);
int pixels(double design, double scale);
QFont font(double designPixels, double scale, QFont::Weight weight = QFont::Normal);
QString styleSheet(double scale);

} // namespace kova::host_look
