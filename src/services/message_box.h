#pragma once
#include "services/window_lifetime.h"
#include "widgets/captioned_controls.h"

#include <memory>

namespace kova {

/// The component's own modal message window; one per process, loaded around each message.
class frmMsgBox {
  public:
    explicit frmMsgBox(ProcessState& process) : lifetime_(process) {}

    /// Shows the message and returns when the window has closed. Throws what loading or showing throws.
    /// `inSight` is what the message is about; null for nothing that could be covered.
    void ShowMessage(const std::string& message, std::int32_t icon, const std::string& title,
                     const Control* inSight = nullptr);
    /// Closes the window if it is open, which ends the ShowMessage that opened it.
    void unload();
    [[nodiscard]] bool loaded() const { return lifetime_.loaded(); }
    /// Null while not loaded.
    [[nodiscard]] Window* window();

  private:
    struct Controls;
    void load();
    void cmd1_Click();
    WindowLifetime<Controls> lifetime_;
};

/// Shows a message of the component with the icon code 64 (information) or 16 (critical); the window looks
/// the same with either.
void ShowMessage(ProcessState& process, const std::string& message, std::int32_t icon,
                 const std::string& title, const Control* inSight = nullptr);

} // namespace kova
