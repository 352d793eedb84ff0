#include "adapters/qt/waiting.h"

#include "adapters/qt/display.h"
#include "adapters/qt/window_frame.h"

#include <QPainter>

#include <utility>

namespace kova {

WorkThread::~WorkThread() {
    const std::lock_guard lock(shared_->mutex);
    shared_->over = true;
    shared_->changed.notify_all();
}

void WorkThread::serve(Shared& shared) {
    constexpr std::chrono::seconds Kept{2};
    std::unique_lock lock(shared.mutex);
    const auto called = [&] { return shared.over || shared.work != nullptr; };
    while (shared.changed.wait_for(lock, Kept, called) && !shared.over) {
        std::exception_ptr failure;
        lock.unlock();
        try {
            (*shared.work)();
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        shared.failure = std::move(failure);
        shared.work = nullptr;
        shared.changed.notify_all();
    }
    shared.served = false;
}

WatchedWork::WatchedWork(WorkThread& thread, const std::function<void()>& work) : shared_(*thread.shared_) {
    const std::lock_guard lock(shared_.mutex);
    if (!shared_.served)
        quietThread([shared = thread.shared_] { WorkThread::serve(*shared); }).detach();
    shared_.served = true;
    shared_.work = &work;
    shared_.changed.notify_all();
}

WatchedWork::~WatchedWork() {
    std::unique_lock lock(shared_.mutex);
    shared_.changed.wait(lock, [this] { return ended(); });
}

bool WatchedWork::endsWithin(std::chrono::milliseconds patience) {
    std::unique_lock lock(shared_.mutex);
    return shared_.changed.wait_for(lock, patience, [this] { return ended(); });
}

void WatchedWork::rethrow() const {
    if (shared_.failure)
        std::rethrow_exception(std::exchange(shared_.failure, nullptr));
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

QRect WaitingPicture::place(const QRect& room, const Scale& scale) {
    QRectF place(QPointF(), SignSize * scale.smaller());
    place.moveCenter(QRectF(room).center());
    return place.toRect();
}

void WaitingPicture::paint(QPainter& painter, const QRectF& whole, const Scale& scale) const {
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = scale.smaller();
    const double border = look::lineWidth(Border * unit);
    painter.setBrush(palette::Paper);
    painter.setPen(QPen(palette::Blue, border, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(whole.adjusted(border / 2, border / 2, -border / 2, -border / 2));

    QRectF area = whole.adjusted(Margin * unit, Margin * unit, -Margin * unit, -Margin * unit);
    QRectF track = area;
    track.setTop(track.bottom() - TrackHeight * unit);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette::Band);
    painter.drawRect(track);
    const int turn = steps % (2 * StepsAcross);
    QRectF mark = track;
    mark.setWidth(track.width() / 4);
    mark.translate((track.width() - mark.width()) * std::min(turn, 2 * StepsAcross - turn) / StepsAcross, 0);
    painter.setBrush(palette::Blue);
    painter.drawRect(mark);

    area.setBottom(track.top() - Margin / 2 * unit);
    painter.setPen(palette::Ink);
    look::drawText(painter, area, text, look::font(SignFont, scale));
}

SignInWindow::SignInWindow(WindowFrame& frame, const QString& text)
    : QWidget(&frame), WaitingSign(text), frame_(frame) {
    setObjectName("waiting");
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(WaitingPicture::place(frame.rect(), frame.scale()));
    raise();
    show();
    repaint();
}

SignInWindow::~SignInWindow() {
    const QRect below = geometry();
    hide();
    frame_.repaint(below);
}

void SignInWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    picture().paint(painter, rect(), frame_.scale());
}

// A tooltip is shown at once by every system, and takes neither the keyboard nor a place among the windows.
SignOnScreen::SignOnScreen(const QRect& room, const Scale& scale, const QString& text)
    : WaitingSign(text), scale_(scale) {
    window_.setObjectName("waiting");
    window_.setFlags(Qt::ToolTip | Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput);
    window_.setGeometry(WaitingPicture::place(room, scale));
    window_.show();
    pixels_.resize(window_.size());
    paintNow();
}

// Not by paint events: until events are handled Qt does not hear that the window is on the screen.
void SignOnScreen::paintNow() {
    const QRect area(QPoint(), window_.size());
    pixels_.beginPaint(area);
    {
        QPainter painter(pixels_.paintDevice());
        picture().paint(painter, area, scale_);
    }
    pixels_.endPaint();
    pixels_.flush(area);
}

} // namespace kova
