#include "adapters/qt/event_loop.h"
#include "adapters/qt/user_interface.h"
#include "host_options.h"
#include "qt_cashier.h"
#include "stage.h"

namespace kova {
namespace {

class QtStage final : public Stage {
  public:
    QtStage(const RegionalSettings& regional, const QSize& surface)
        : userInterface_(loop_, regional, {.modalLoop = {}, .answer = {}, .surface = surface}) {}
    EventLoop& eventLoop() override { return loop_; }
    UserInterface& userInterface() override { return userInterface_; }
    Cashier& cashier() override { return cashier_; }

  private:
    QtEventLoop loop_{QtEventLoop::Time::Stepped};
    QtUserInterface userInterface_;
    QtCashier cashier_{userInterface_};
};

} // namespace

std::unique_ptr<Stage> makeQtStage(const RegionalSettings& regional, const std::optional<SurfaceSize>& size) {
    // A script needs no screen: without one the windows are drawn into memory.
    const bool screen = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!screen && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QtStage>(regional, size ? QSize(size->width, size->height) : QSize());
}

} // namespace kova
