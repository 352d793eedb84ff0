#include "adapters/qt/read_back_view.h"

#include <QPainter>

namespace kova {
namespace {

// Lengths in design pixels.
const Font AmountFont{"Tahoma", 17, true};
const Font WayFont{"Tahoma", 11, true};
constexpr double BandMargin = 3;
constexpr double WaysWidth = 76;
constexpr double BandRadius = 5;
constexpr int SmallestBandPixels = 6; // of the screen; half an amount would be a wrong one

const QColor InColor(20, 96, 52);
const QColor OutColor(150, 38, 28);
const QColor RefusalColor(255, 214, 102);

} // namespace

ReadBackView::ReadBackView(QWidget& parent, std::function<QColor()> backdrop)
    : QWidget(&parent), backdrop_(std::move(backdrop)) {
    setObjectName("readBack");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void ReadBackView::show(const ReadBack::Content& content, const QRect& place, const Scale& scale) {
    content_ = content;
    scale_ = scale;
    QString spoken = QString::fromStdString(content.amount);
    for (const ReadBack::Way& way : content.ways)
        spoken += (spoken.isEmpty() ? "" : ", ") + QString::fromStdString(way.text);
    setGeometry(place);
    setVisible(content.wanted && !spoken.isEmpty());
    if (accessibleName() != spoken)
        setAccessibleName(spoken);
    update();
}

QRectF ReadBackView::paintWays(QPainter& painter, QRectF area) const {
    if (content_.ways.empty())
        return area;
    const double margin = BandMargin * scale_.smaller();
    const double width = WaysWidth * scale_.x;
    const double height = area.height() / static_cast<double>(content_.ways.size());
    QRectF place(area.left(), area.top(), width, height);
    for (const ReadBack::Way& way : content_.ways) {
        const QColor fill = way.direction == ReadBack::Direction::In ? InColor : OutColor;
        const QRectF chip = place.adjusted(0, margin / 4, 0, -margin / 4);
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawRoundedRect(chip, BandRadius * scale_.smaller(), BandRadius * scale_.smaller());
        painter.setPen(look::inkOn(fill));
        look::drawText(painter, chip.adjusted(margin, 0, -margin, 0), QString::fromStdString(way.text),
                       look::font(WayFont, scale_), {.wrapped = false, .smallestPixels = SmallestBandPixels});
        place.translate(0, height);
    }
    area.setLeft(area.left() + width + 2 * margin);
    return area;
}

void ReadBackView::paintAmount(QPainter& painter, const QRectF& area) const {
    const QString text = QString::fromStdString(content_.amount);
    QColor back = backdrop_();
    if (!content_.isNumber) {
        back = RefusalColor;
        painter.setPen(Qt::NoPen);
        painter.setBrush(back);
        painter.drawRoundedRect(area, BandRadius * scale_.smaller(), BandRadius * scale_.smaller());
    }
    painter.setPen(look::inkOn(back));
    const Qt::Alignment side = content_.isNumber ? Qt::AlignRight : Qt::AlignHCenter;
    look::drawText(painter, area, text, look::font(content_.isNumber ? AmountFont : WayFont, scale_),
                   {.alignment = side | Qt::AlignVCenter, .smallestPixels = SmallestBandPixels});
}

void ReadBackView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double margin = BandMargin * scale_.smaller();
    const QRectF area = paintWays(painter, QRectF(rect()).adjusted(margin, 0, -margin, -margin));
    if (!content_.amount.empty())
        paintAmount(painter, area);
}

} // namespace kova
