#include "adapters/qt/notice_views.h"

#include "adapters/qt/window_frame.h"
#include "screen/spoken_name.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace kova {
namespace {

// Lengths in design pixels.
const Font AmountFont{.points = 17, .bold = true};
const Font WayFont{.points = 11, .bold = true};
constexpr double BandMargin = 3;
constexpr double WaysWidth = 76;
constexpr int SmallestBandPixels = 6; // of the screen; half an amount would be a wrong one

} // namespace

ReadBackView::ReadBackView(QWidget& parent, std::function<QColor()> backdrop)
    : QWidget(&parent), backdrop_(std::move(backdrop)) {
    setObjectName("readBack");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

QAccessibleInterface* ReadBackView::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::StaticText);
}

void ReadBackView::show(const ReadBack::Content& content, const QRect& place, const Scale& scale) {
    content_ = content;
    scale_ = scale;
    const QString spoken = QString::fromStdString(spokenText(content));
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
        const QColor fill = way.direction == ReadBack::Direction::In ? palette::MoneyIn : palette::MoneyOut;
        const QRectF chip = place.adjusted(0, margin / 4, 0, -margin / 4);
        painter.setPen(Qt::NoPen);
        painter.setBrush(fill);
        painter.drawRoundedRect(chip, look::FaceRadius * scale_.smaller(),
                                look::FaceRadius * scale_.smaller());
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
        back = palette::Yellow;
        painter.setPen(Qt::NoPen);
        painter.setBrush(back);
        painter.drawRoundedRect(area, look::FaceRadius * scale_.smaller(),
                                look::FaceRadius * scale_.smaller());
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

namespace {

const Font NoticeFont{.points = 13, .bold = true};
constexpr double NoticeMargin = 10; // design pixels
constexpr double FailureBorder = 3;

} // namespace

PageNoticeView::PageNoticeView(PageNotice& notice, WindowFrame& frame, QWidget& page)
    : QWidget(&page), notice_(&notice), frame_(frame) {
    setObjectName("notice");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
    stay_.setSingleShot(true);
    stay_.setInterval(StayMilliseconds);
    fade_.setDuration(FadeMilliseconds);
    fade_.setStartValue(1.0);
    fade_.setEndValue(0.0);
    connect(&stay_, &QTimer::timeout, this, [this] { fade_.start(); });
    connect(&fade_, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(&fade_, &QVariantAnimation::finished, this, &QWidget::hide);
    shown_ = notice.shown.connect([this] { appear(); });
    changed_ = notice.changed.connect([this] { follow(); });
}

QAccessibleInterface* PageNoticeView::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::AlertMessage);
}

void PageNoticeView::layOut() {
    if (notice_ != nullptr)
        setGeometry(frame_.pixels(notice_->page(), notice_->bounds()));
}

void PageNoticeView::detach() {
    shown_.disconnect();
    changed_.disconnect();
    notice_ = nullptr;
    hide();
}

void PageNoticeView::follow() {
    setAccessibleName(QString::fromStdString(notice_->text()));
    layOut();
    update();
    if (!isHidden() && !notice_->pending() && !stay_.isActive() &&
        fade_.state() == QAbstractAnimation::Stopped)
        stay_.start();
}

void PageNoticeView::appear() {
    fade_.stop();
    fade_.setCurrentTime(0);
    stay_.stop();
    raise();
    show();
    follow();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

// Called when the page is hidden, too. Only a failure that is still to be read comes back with the page.
void PageNoticeView::hideEvent(QHideEvent*) {
    if (notice_ != nullptr && notice_->pending())
        return;
    hide();
    stay_.stop();
    fade_.stop();
}

void PageNoticeView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(fade_.currentValue().toDouble());
    const double unit = frame_.scale().smaller();
    const bool failure = notice_ != nullptr && notice_->kind() == PageNotice::Kind::Failure;
    const QColor background = failure ? palette::Failure : palette::Success;
    const double border = failure ? FailureBorder * unit : 0;
    painter.setPen(failure ? QPen(palette::Yellow, border) : QPen(Qt::NoPen));
    painter.setBrush(background);
    painter.drawRoundedRect(QRectF(rect()).adjusted(border / 2, border / 2, -border / 2, -border / 2),
                            look::BoardRadius * unit, look::BoardRadius * unit);
    painter.setPen(look::inkOn(background));
    const double margin = NoticeMargin * unit;
    look::drawText(painter, QRectF(rect()).adjusted(margin, margin / 5, -margin, -margin / 5),
                   accessibleName(), look::font(NoticeFont, frame_.scale()));
}

} // namespace kova
