#pragma once
#include "player/cashier.h"
#include "player/trace.h"
#include "ports/user_interface.h"

#include <deque>
#include <functional>

namespace kova {

/// A user interface under a script: windows are drawn by another one, but modal loops play the script's next
/// lines, and messages are traced and answered.
class ScriptUserInterface final : public UserInterface {
  public:
    /// Plays lines as long as the condition holds.
    using PlayWhile = std::function<void(const std::function<bool()>&)>;

    /// All outlive this.
    ScriptUserInterface(UserInterface& drawing, Cashier& cashier, Trace& trace, PlayWhile playWhile)
        : drawing_(drawing), cashier_(cashier), trace_(trace), playWhile_(std::move(playWhile)) {}

    std::unique_ptr<WindowView> present(Window& window) override { return drawing_.present(window); }
    void runModal(Window& window) override;
    MessageAnswer messageBox(const PlatformMessage& message) override;
    void await(const Awaited& awaited, const std::function<void()>& work) override {
        drawing_.await(awaited, work);
    }
    void setLanguage(std::int32_t id) override { drawing_.setLanguage(id); }

    void queueAnswer(MessageAnswer answer) { answers_.push_back(answer); }
    /// Whether message windows stay open for the next lines, instead of being closed at once.
    void keepMessageWindowsOpen(bool keep) { keepsMessageWindows_ = keep; }

  private:
    void traceMessageWindow(Window& window);
    UserInterface& drawing_;
    Cashier& cashier_;
    Trace& trace_;
    PlayWhile playWhile_;
    std::deque<MessageAnswer> answers_;
    bool keepsMessageWindows_ = false;
};

} // namespace kova
