#pragma once
#include "widgets/captioned_controls.h"

class QColor;
class QPainter;
class QRectF;

namespace kova::look {

/// Draws an icon as shapes that fill `area` at any size, in the caption's colour, or in one that says the
/// same as the shape where the caption is dark on a light face.
void drawIcon(QPainter& painter, const QRectF& area, PushButton::Icon icon, const QColor& caption);

} // namespace kova::look
