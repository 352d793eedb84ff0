#include "adapters/qt/event_loop.h"
#include "adapters/qt/user_interface.h"
#include "host_options.h"
#include "player/qt/qt_cashier.h"
#include "player/qt/recording.h"
#include "player/stage.h"

namespace kova {
namespace {

QSize surfaceOf(const HostOptions& options) {
    return options.size ? QSize(options.size->width, options.size->height) : QSize();
}

class QtStage final : public Stage {
  public:
    QtStage(const RegionalSettings& regional, const HostOptions& options)
        : userInterface_(loop_, regional, {.modalLoop = {}, .answer = {}, .surface = surfaceOf(options)}),
          recording_(options.pictures ? std::make_unique<Recording>(*options.pictures) : nullptr) {}
    EventLoop& eventLoop() override { return loop_; }
    UserInterface& userInterface() override { return userInterface_; }
    Cashier& cashier() override { return cashier_; }

  private:
    QtEventLoop loop_{QtEventLoop::Time::Stepped};
    QtUserInterface userInterface_;
    std::unique_ptr<Recording> recording_;
    QtCashier cashier_{userInterface_, recording_.get()};
};

} // namespace

std::unique_ptr<Stage> makeQtStage(const RegionalSettings& regional, const HostOptions& options) {
    // A script needs no screen: without one the windows are drawn into memory.
    const bool screen = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!screen && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QtStage>(regional, options);
}

} // namespace kova
