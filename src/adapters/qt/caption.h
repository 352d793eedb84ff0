#pragma once
#include <QFont>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <vector>

class QPainter;

namespace kova::look {

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
