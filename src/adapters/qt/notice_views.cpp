#include "adapters/qt/notice_views.h"

#include "adapters/qt/window_frame.h"
#include "screen/spoken_name.h"

#include <QAccessibleWidget>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace kova {
namespace {

// Lengths in design pixels.
const Font AmountFont{.points = 17, .bold = true};
const Font WayFont{.points = 11, .bold = true};
const Font LineFont{.points = 9.6}; // 16 pixels of a panel 1280 pixels wide
constexpr double BandMargin = 3;
constexpr const char* Missing = "—";
constexpr double WaysWidth = 76;
constexpr double AmountHeight = 36;
constexpr double LinesHeight = 31; // two lines of text
constexpr double HintHeight = 20;
constexpr int SmallestBandPixels = 6; // of the screen; half an amount would be a wrong one

/// With a dash for what is missing.
std::string shownAmount(const ReadBack::Content& content) {
    if (!content.wholeWanted || !content.isNumber)
        return content.amount;
    const std::string& currency = content.currency.text;
    if (content.amount.empty())
        return currency.empty() ? Missing : Missing + (" " + currency);
    return currency.empty() ? content.amount + " " + Missing : content.amount;
}

QString shownLine(const ReadBack::Line& line) {
    QStringList parts;
    for (const ReadBack::Part& part : line)
        parts << QString::fromStdString(part.text.empty() ? Missing : part.text);
    return parts.join(QStringLiteral("\u00A0· "));
}

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

double ReadBackView::height(const ReadBack::Content& content) {
    return (content.wanted ? AmountHeight : 0) + (content.wholeWanted ? LinesHeight : 0) +
           (content.hintWanted ? HintHeight : 0);
}

// A touch must not wait for what it did not change.
void ReadBackView::show(const ReadBack::Content& content, const QRect& place, const Scale& scale) {
    const ReadBack::Content before = std::exchange(content_, content);
    const bool moved = geometry() != place || scale_.x != scale.x || scale_.y != scale.y;
    scale_ = scale;
    const QString spoken = QString::fromStdString(spokenText(content));
    setGeometry(place);
    setVisible(!spoken.isEmpty());
    if (accessibleName() != spoken)
        setAccessibleName(spoken);
    const Rows now = rows();
    if (moved)
        update();
    if (before.ways != content.ways || before.isNumber != content.isNumber ||
        shownAmount(before) != shownAmount(content))
        update(now.amount.toAlignedRect());
    if (before.lines != content.lines)
        update(now.lines.toAlignedRect());
    if (before.hint != content.hint)
        update(now.hint.toAlignedRect());
}

ReadBackView::Rows ReadBackView::rows() const {
    const double margin = BandMargin * scale_.smaller();
    QRectF rest = QRectF(rect()).adjusted(margin, 0, -margin, -margin);
    const auto row = [&](bool wanted, double height) {
        const QRectF taken(rest.topLeft(),
                           QSizeF(rest.width(), wanted ? std::min(height * scale_.y, rest.height()) : 0));
        rest.setTop(taken.bottom());
        return taken;
    };
    Rows all;
    all.amount = row(content_.wanted, AmountHeight).adjusted(0, 0, 0, content_.wholeWanted ? -margin : 0);
    all.lines = row(content_.wholeWanted, LinesHeight);
    all.hint = rest;
    return all;
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

void ReadBackView::paintWarning(QPainter& painter, const QRectF& area) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette::Yellow);
    painter.drawRoundedRect(area, look::FaceRadius * scale_.smaller(), look::FaceRadius * scale_.smaller());
    painter.setPen(look::inkOn(palette::Yellow));
}

void ReadBackView::paintAmount(QPainter& painter, const QRectF& area) const {
    if (content_.isNumber)
        painter.setPen(look::inkOn(backdrop_()));
    else
        paintWarning(painter, area);
    const Qt::Alignment side = content_.isNumber ? Qt::AlignRight : Qt::AlignHCenter;
    look::drawText(painter, area, QString::fromStdString(shownAmount(content_)),
                   look::font(content_.isNumber ? AmountFont : WayFont, scale_),
                   {.alignment = side | Qt::AlignVCenter, .smallestPixels = SmallestBandPixels});
}

// A single movement may take all lines.
void ReadBackView::paintLines(QPainter& painter, const QRectF& area) const {
    const auto count = static_cast<double>(std::max<std::size_t>(content_.lines.size(), 1));
    QRectF place(area.left(), area.top(), area.width(), area.height() / count);
    painter.setPen(look::inkOn(backdrop_()));
    for (const ReadBack::Line& line : content_.lines) {
        look::drawText(painter, place, shownLine(line), look::font(LineFont, scale_),
                       {.alignment = Qt::AlignLeft | Qt::AlignVCenter,
                        .wrapped = count < 2,
                        .smallestPixels = SmallestBandPixels});
        place.translate(0, place.height());
    }
}

void ReadBackView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Rows all = rows();
    const auto asked = [&](const QRectF& row) { return row.intersects(event->rect()); };
    if (asked(all.amount))
        if (const QRectF rest = paintWays(painter, all.amount); !shownAmount(content_).empty())
            paintAmount(painter, rest);
    if (asked(all.lines))
        paintLines(painter, all.lines);
    if (!asked(all.hint) || content_.hint.empty())
        return;
    paintWarning(painter, all.hint);
    const double margin = BandMargin * scale_.smaller();
    look::drawText(painter, all.hint.adjusted(margin, 0, -margin, 0), QString::fromStdString(content_.hint),
                   look::font(LineFont, scale_), {.wrapped = false, .smallestPixels = SmallestBandPixels});
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
    if (notice_->text().empty())
        return hide();
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
