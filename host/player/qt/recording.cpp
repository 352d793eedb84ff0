#include "player/qt/recording.h"

#include "adapters/qt/window_frame.h"
#include "base/error.h"

#include <QApplication>
#include <QDir>
#include <QPainter>

#include <algorithm>

namespace kova {
namespace {

constexpr double SpotRadius = 20;

/// The windows in front of each other: the smaller one is the one that was opened later.
QImage picture(std::optional<QPoint> finger) {
    std::vector<WindowFrame*> frames;
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (auto* const frame = dynamic_cast<WindowFrame*>(window); frame != nullptr && frame->isVisible())
            frames.push_back(frame);
    std::ranges::sort(frames, std::greater(),
                      [](const WindowFrame* one) { return one->width() * one->height(); });
    if (frames.empty())
        return {};
    const QPoint origin = frames.front()->pos();
    QImage image(frames.front()->size(), QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    for (WindowFrame* const frame : frames)
        painter.drawPixmap(frame->pos() - origin, frame->grab());
    if (finger) {
        painter.setPen(QPen(QColor(255, 140, 0), 3));
        painter.setBrush(QColor(255, 140, 0, 110));
        painter.drawEllipse(QPointF(*finger - origin), SpotRadius, SpotRadius);
    }
    return image;
}

} // namespace

Recording::Recording(const std::string& folder) : folder_(folder) {
    QDir().mkpath(QString::fromStdString(folder));
}

Recording::~Recording() {
    if (!write())
        qWarning("The last picture cannot be written");
}

bool Recording::write() const {
    return picture_.isNull() || picture_.save(QString("%1/%2-%3.png")
                                                  .arg(QString::fromStdString(folder_))
                                                  .arg(number_, 4, 10, QChar('0'))
                                                  .arg(time_.count() / 10, 3, 10, QChar('0')));
}

void Recording::add(std::chrono::milliseconds time, std::optional<QPoint> finger) {
    QImage next = picture(finger);
    if (next.isNull())
        return;
    if (next != picture_) {
        if (!write())
            throw Error(PathAccessError, "Cannot write pictures to " + folder_);
        picture_ = std::move(next);
        time_ = {};
        ++number_;
    }
    time_ += time;
}

} // namespace kova
