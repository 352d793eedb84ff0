#include "adapters/qt/waiting.h"

#include "adapters/qt/display.h"
#include "adapters/qt/window_frame.h"

#include <QPainter>

namespace kova {

WatchedWork::WatchedWork(const std::function<void()>& work)
    : thread_(quietThread([this, &work] {
          std::exception_ptr failure;
          try {
              work();
          } catch (...) {
              failure = std::current_exception();
          }
          const std::lock_guard lock(mutex_);
          failure_ = std::move(failure);
          ended_ = true;
          ending_.notify_all();
      })) {}

bool WatchedWork::endsWithin(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    return ending_.wait_for(lock, patience, [this] { return ended_; });
}

void WatchedWork::rethrow() const {
    if (failure_)
        std::rethrow_exception(failure_);
}

namespace {

// Lengths in design pixels.
constexpr QSizeF SignSize(420, 110);
constexpr double Border = 2;
constexpr double Margin = 14;
constexpr double TrackHeight = 8;
constexpr int StepsAcross = 12; ///< of the mark, from side to side
const Font SignFont{.points = 15, .bold = true};

} // namespace

WaitingSign::WaitingSign(WindowFrame& frame, const QString& text)
    : QWidget(&frame), frame_(frame), text_(text) {
    setObjectName("waiting");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    const double unit = frame.scale().smaller();
    QRectF place(QPointF(), SignSize * unit);
    place.moveCenter(QRectF(frame.rect()).center());
    setGeometry(place.toRect());
    raise();
    show();
    repaint();
}

WaitingSign::~WaitingSign() {
    const QRect below = geometry();
    hide();
    frame_.repaint(below);
}

void WaitingSign::step(const QString& text) {
    text_ = text;
    ++steps_;
    repaint();
}

void WaitingSign::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = frame_.scale().smaller();
    const double border = look::lineWidth(Border * unit);
    painter.fillRect(rect(), palette::Ink);
    painter.setBrush(palette::Paper);
    painter.setPen(QPen(palette::Blue, border));
    painter.drawRect(QRectF(rect()).adjusted(border / 2, border / 2, -border / 2, -border / 2));

    QRectF area = QRectF(rect()).adjusted(Margin * unit, Margin * unit, -Margin * unit, -Margin * unit);
    QRectF track = area;
    track.setTop(track.bottom() - TrackHeight * unit);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette::Band);
    painter.drawRect(track);
    const int turn = steps_ % (2 * StepsAcross);
    QRectF mark = track;
    mark.setWidth(track.width() / 4);
    mark.translate((track.width() - mark.width()) * std::min(turn, 2 * StepsAcross - turn) / StepsAcross, 0);
    painter.setBrush(palette::Blue);
    painter.drawRect(mark);

    area.setBottom(track.top() - Margin / 2 * unit);
    painter.setPen(palette::Ink);
    look::drawText(painter, area, text_, look::font(SignFont, frame_.scale()));
}

} // namespace kova
