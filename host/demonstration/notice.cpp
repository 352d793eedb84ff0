#include "demonstration/notice.h"

#include "demonstration/look.h"

#include <QApplication>
#include <QScreen>

#include <chrono>

namespace kova {
namespace {

using namespace std::chrono_literals;

constexpr auto SuccessTime = 2500ms;
constexpr auto FailureTime = 7000ms; // there is a reason to read

const QScreen& screenInUse() {
    const QWidget* const window = QApplication::activeWindow();
    return window != nullptr ? *window->screen() : *QGuiApplication::primaryScreen();
}

} // namespace

Notice::Notice()
    : QLabel(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                          Qt::WindowDoesNotAcceptFocus) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setObjectName("Notice");
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    end_.setSingleShot(true);
    connect(&end_, &QTimer::timeout, this, &QWidget::hide);
}

void Notice::display(const QString& text, Kind kind, double scale) {
    const QColor ground = kind == Kind::Success ? host_look::Incoming : host_look::Failure;
    setFont(host_look::font(22, scale, QFont::Bold));
    setStyleSheet(QString("background: %1; color: white; padding: %2px %3px;")
                      .arg(ground.name())
                      .arg(host_look::pixels(14, scale))
                      .arg(host_look::pixels(28, scale)));
    setText(text);
    const QRect room = screenInUse().availableGeometry();
    const int widest = room.width() * 2 / 3;
    setWordWrap(false);
    const bool tooLong = sizeHint().width() > widest;
    setWordWrap(tooLong);
    const int width = tooLong ? widest : sizeHint().width();
    resize(width, tooLong ? heightForWidth(width) : sizeHint().height());
    move(room.center().x() - width / 2, room.top() + host_look::pixels(12, scale));
    show();
    end_.start(kind == Kind::Success ? SuccessTime : FailureTime);
}

} // namespace kova
