#pragma once
#include <memory>

namespace kova {

class Cashier;
class EventLoop;
class UserInterface;
struct HostOptions;
struct RegionalSettings;

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
/// the stage. Of the options count the size of windows, the screen's without it, and the folder for pictures.
std::unique_ptr<Stage> makeQtStage(const RegionalSettings& regional, const HostOptions& options);

} // namespace kova
