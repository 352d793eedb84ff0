// How soon a cashier sees what a finger did: from the window system's touch to the pixels in the window's
// backing store, from Show to the first frame, and what memory the process holds after many dialogs.
#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "player/qt/pointing.h"
#include "shop.h"

#include <QApplication>
#include <QPointingDevice>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <unistd.h>
#include <vector>

namespace kova::bench {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::size_t Touches = 1000;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/// Sees that a widget is painted; what it painted is in the backing store when Qt's events are handled.
class PaintWatch final : public QObject {
  public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
    void wait() {
        while (!painted)
            QCoreApplication::processEvents();
    }
    bool painted = false;
};

/// The dialog with all that it can show, on a surface of that many pixels.
struct Screen {
    explicit Screen(const QSize& surface) : userInterface(loop, regional, surface) {
        shop.component().UsaSoloValutaAziendale(false);
    }
    ~Screen() { close(); }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    double show() {
        const auto start = Clock::now();
        shop.component().Show(0);
        PaintWatch(frame()).wait();
        return millisecondsSince(start);
    }
    void close() {
        shop.component().DiscardForm();
        loop.settle();
    }
    Window& window() { return *dialogOf(shop.component())->window(); }
    WindowFrame& frame() { return *userInterface.frame(window()); }
    /// What the window system has of the window.
    QImage pixels(const QPoint& around) {
        return frame()
            .screen()
            ->grabWindow(frame().winId(), around.x() - 30, around.y() - 20, 60, 40)
            .toImage();
    }

    QtEventLoop loop;
    const RegionalSettings regional;
    QtUserInterface userInterface;
    Shop shop{loop, userInterface};
};

void print(const QSize& surface, const char* what, std::vector<double> times) {
    std::ranges::sort(times);
    std::printf("%4d x %-4d  %-44s median %6.2f ms   99 %% %6.2f ms   worst %6.2f ms\n", surface.width(),
                surface.height(), what, times[times.size() / 2], times[times.size() * 99 / 100],
                times.back());
}

/// A finger on one and another part of a control in turn, as the same one would be the panel bouncing: to the
/// frame that shows it pressed; then off again, to the frame that shows what came of it in `result`.
void touch(Screen& screen, QPointingDevice& finger, const QSize& surface, const char* control,
           const std::array<std::string, 2>& parts, const char* result) {
    WindowFrame& frame = screen.frame();
    QWidget& shown = screen.userInterface.view(*screen.window().find(result))->widget();
    std::vector<double> down, up;
    for (std::size_t i = 0; i < Touches; ++i) {
        const auto place = touchPoint(screen.userInterface, *screen.window().find(control), parts[i % 2]);
        const QPoint point = place->widget->mapTo(&frame, place->point.toPoint());
        screen.loop.settle();
        QTest::qSleep(2); // event times have milliseconds
        const QImage before = screen.pixels(point);
        PaintWatch pressed(*place->widget);
        auto start = Clock::now();
        QTest::touchEvent(&frame, &finger).press(0, point, &frame).commit();
        pressed.wait();
        down.push_back(millisecondsSince(start));
        if (screen.pixels(point) == before)
            throw std::runtime_error(std::string("a touch cannot be seen on ") + control);
        PaintWatch done(shown);
        start = Clock::now();
        QTest::touchEvent(&frame, &finger).release(0, point, &frame).commit();
        done.wait();
        up.push_back(millisecondsSince(start));
        if (i % 8 == 7) // no amount is longer
            screen.shop.control<TextBox>(result == std::string("txtNote") ? result : "txtVisore").setText("");
    }
    print(surface, (std::string(control) + " down").c_str(), std::move(down));
    print(surface, (std::string(control) + " up, to " + result).c_str(), std::move(up));
}

void touchEverything(const QSize& surface) {
    Screen screen(surface);
    const std::unique_ptr<QPointingDevice> finger(QTest::createTouchDevice());
    screen.show();
    touch(screen, *finger, surface, "Virtual_KeyPAD", {"7", "8"}, "txtVisore");
    touch(screen, *finger, surface, "Virtual_Keyboard", {"k", "l"}, "txtNote");
    touch(screen, *finger, surface, "Pulsantiera_Pagamenti", {"1", "3"}, "Pulsantiera_Pagamenti");
    touch(screen, *finger, surface, "Pulsantiera_Attivita", {"2", "3"}, "Pulsantiera_Attivita");
}

double residentMegabytes() {
    std::ifstream file("/proc/self/statm");
    double total = 0, resident = 0;
    file >> total >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

void showOften(const QSize& surface) {
    Screen screen(surface);
    std::vector<double> times;
    std::printf("resident before any Show %6.1f MB\n", residentMegabytes());
    for (int number = 1; number <= 100; ++number) {
        times.push_back(screen.show());
        if (number == 1)
            std::printf("first Show to its first frame %.1f ms\n", times.front());
        screen.close();
        if (number == 1 || number == 10 || number == 100)
            std::printf("resident after %3d Shows    %6.1f MB\n", number, residentMegabytes());
    }
    print(surface, "Show to the first frame, 100 times", std::move(times));
}

} // namespace
} // namespace kova::bench

int main() {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    // One at a time for the whole process, as in a host.
    kova::bench::showOften({1920, 1080});
    for (const QSize surface : {QSize(1280, 800), QSize(1920, 1080), QSize(3840, 2160)})
        kova::bench::touchEverything(surface);
}
