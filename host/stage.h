#pragma once
#include <memory>
#include <optional>
#include <string>

namespace kova {

class Cashier;
class EventLoop;
class UserInterface;
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
/// Real windows, whose time passes in the cashier's waits alone, and what is seen on them in the folder
/// `pictures`, if given. Only in builds with Qt. The settings outlive the stage.
std::unique_ptr<Stage> makeQtStage(const RegionalSettings& regional,
                                   const std::optional<std::string>& pictures);

} // namespace kova
