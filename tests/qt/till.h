#pragma once
#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "player/qt/pointing.h"
#include "player/qt/stepped_event_loop.h"
#include "unit/test_world.h"

#include <QCoreApplication>
#include <QWidget>

#include <gtest/gtest.h>

#define KOVA_TRACES std::string(QT_TESTCASE_SOURCEDIR "/qt/")

namespace kova::test {

/// Windows that are drawn, and a test in the place of who works in them.
class AttendedInterface final : public UserInterface {
  public:
    explicit AttendedInterface(QtUserInterface& drawing) : drawing_(drawing) {}
    std::unique_ptr<WindowView> present(Window& window) override { return drawing_.present(window); }
    void runModal(Window& window) override { modalLoop(window); }
    /// Shows the box and presses the button of the answer.
    MessageAnswer messageBox(const PlatformMessage& message) override;
    void await(const Awaited& awaited, const std::function<void()>& work) override {
        drawing_.await(awaited, work);
    }
    void setLanguage(std::int32_t id) override { drawing_.setLanguage(id); }

    std::function<void(Window&)> modalLoop;
    std::function<MessageAnswer(const PlatformMessage&)> answer;

  private:
    QtUserInterface& drawing_;
};

/// Real windows of one size.
struct QtScreen {
    QtScreen(const QSize& surface, std::unique_ptr<QtEventLoop> eventLoop);
    const RegionalSettings italian;
    const std::unique_ptr<QtEventLoop> ownLoop;
    QtEventLoop& loop = *ownLoop;
    QtUserInterface userInterface;
    AttendedInterface attended{userInterface};
};

/// A component with its rules on real windows, on the doubles of the unit tests for all else. No error may be
/// recorded.
class Till : public QtScreen, public World {
  public:
    explicit Till(const QSize& surface = {1280, 800},
                  std::unique_ptr<QtEventLoop> eventLoop = std::make_unique<SteppedEventLoop>());
    ~Till();
    Till(const Till&) = delete;
    Till& operator=(const Till&) = delete;

    enum class Layout { Single, DrawersAndCurrencies, Double, ManyButtons };
    /// Connects and shows the dialog.
    void show(Layout layout = Layout::Single);
    WindowFrame& frame() { return *userInterface.frame(dialog()); }
    QWidget& widget(const std::string& name, std::optional<int> index = {}) {
        return userInterface.view(*dialog().find(name, index))->widget();
    }
    /// For the usual loop only.
    SteppedEventLoop& time() { return dynamic_cast<SteppedEventLoop&>(loop); }
    void wait(int milliseconds) {
        time().advance(std::chrono::milliseconds(milliseconds));
        loop.settle();
    }
    /// Fills in everything that a single movement needs but the amount.
    void composeMovement();

    using QtScreen::loop;

  private:
    void fillCatalogues();
};

/// With the dialog of a single movement on the screen.
class ShownTill : public testing::Test {
  protected:
    ShownTill() { till.show(); }
    Till till;
};

} // namespace kova::test
