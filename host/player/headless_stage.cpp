#include "player/headless_cashier.h"
#include "player/stage.h"

namespace kova {
namespace {

class HeadlessStage final : public Stage {
  public:
    EventLoop& eventLoop() override { return loop_; }
    UserInterface& userInterface() override { return userInterface_; }
    Cashier& cashier() override { return cashier_; }

  private:
    HeadlessEventLoop loop_;
    HeadlessUserInterface userInterface_{[](Window&) {}}; // a script plays its modal loops itself
    HeadlessCashier cashier_{loop_};
};

} // namespace

std::unique_ptr<Stage> makeHeadlessStage() {
    return std::make_unique<HeadlessStage>();
}

} // namespace kova
