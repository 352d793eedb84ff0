#pragma once
#include <memory>
#include <optional>

namespace kova {

class Cashier;
class EventLoop;
class UserInterface;
struct RegionalSettings;
struct SurfaceSize;

/// One user interface for a script, with a cashier who works on it.
class Stage {
  public:
    virtual ~Stage() = default;
    virtual EventLoop& eventLoop() = 0;
    virtual UserInterface& userInterface() = 0;
    virtual Cashier& cashier() = 0;
};

/// Widget models alone, on virtual time.
std::unique_ptr<Stage> makeHeadlessStage();
/// Real windows, whose time passes in the cashier's waits alone. Only in builds with Qt. The settings outlive
/// the stage. Windows take the size given, or the screen's.
std::unique_ptr<Stage> makeQtStage(const RegionalSettings& regional, const std::optional<SurfaceSize>& size);

} // namespace kova
