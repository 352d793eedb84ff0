#include "adapters/qt/page_notice_view.h"

#include "adapters/qt/window_frame.h"

#include <QAccessible>
#include <QPainter>

namespace kova {
namespace {

const Font NoticeFont{"Tahoma", 13, true};
constexpr double NoticeMargin = 10; // design pixels
constexpr double NoticeRadius = 6;
const QColor NoticeBackground(20, 83, 45);

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
    moved_ = notice.moved.connect([this] { layOut(); });
}

void PageNoticeView::layOut() {
    if (notice_ != nullptr)
        setGeometry(frame_.pixels(notice_->page(), notice_->bounds()));
}

void PageNoticeView::detach() {
    shown_.disconnect();
    moved_.disconnect();
    notice_ = nullptr;
    hide();
}

void PageNoticeView::appear() {
    fade_.stop();
    fade_.setCurrentTime(0);
    setAccessibleName(QString::fromStdString(notice_->text()));
    layOut();
    raise();
    show();
    update();
    stay_.start();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

// Also when its page goes, with which it must not come back.
void PageNoticeView::hideEvent(QHideEvent*) {
    hide();
    stay_.stop();
    fade_.stop();
}

void PageNoticeView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(fade_.currentValue().toDouble());
    const double unit = frame_.scale().smaller();
    painter.setPen(Qt::NoPen);
    painter.setBrush(NoticeBackground);
    painter.drawRoundedRect(rect(), NoticeRadius * unit, NoticeRadius * unit);
    painter.setPen(look::inkOn(NoticeBackground));
    const double margin = NoticeMargin * unit;
    look::drawText(painter, QRectF(rect()).adjusted(margin, margin / 5, -margin, -margin / 5),
                   accessibleName(), look::font(NoticeFont, frame_.scale()));
}

} // namespace kova
