#include "adapters/qt/page_notice_view.h"

#include "adapters/qt/window_frame.h"

#include <QAccessible>
#include <QPainter>

namespace kova {
namespace {

const Font NoticeFont{"Tahoma", 13, true};
constexpr double NoticeMargin = 10; // design pixels
constexpr double NoticeRadius = 6;
constexpr double FailureBorder = 3;
const QColor SuccessBackground(20, 83, 45);
const QColor FailureBackground(150, 38, 28);
const QColor FailureBorderColor(255, 214, 102); // against both schemes

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

// Also when its page goes, with which only a failure that is still to be read may come back.
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
    const QColor background = failure ? FailureBackground : SuccessBackground;
    const double border = failure ? FailureBorder * unit : 0;
    painter.setPen(failure ? QPen(FailureBorderColor, border) : QPen(Qt::NoPen));
    painter.setBrush(background);
    painter.drawRoundedRect(QRectF(rect()).adjusted(border / 2, border / 2, -border / 2, -border / 2),
                            NoticeRadius * unit, NoticeRadius * unit);
    painter.setPen(look::inkOn(background));
    const double margin = NoticeMargin * unit;
    look::drawText(painter, QRectF(rect()).adjusted(margin, margin / 5, -margin, -margin / 5),
                   accessibleName(), look::font(NoticeFont, frame_.scale()));
}

} // namespace kova
