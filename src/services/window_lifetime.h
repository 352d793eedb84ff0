#pragma once
#include "services/process_state.h"

#include <memory>
#include <utility>

namespace kova {

/// How a window comes and goes: each loading makes a fresh set of controls, which an unloading retires. A
/// retired set lives as long as somebody holds it, so that a handler may end in the unloading of its own
/// window. `Controls` has a `window`, a `view`, and `retire`, which makes every gesture ineffective.
template <class Controls>
class WindowLifetime {
  public:
    explicit WindowLifetime(ProcessState& process) : process_(process) {}

    /// Null while not loaded.
    [[nodiscard]] const std::shared_ptr<Controls>& controls() const { return controls_; }
    [[nodiscard]] bool loaded() const { return controls_ != nullptr; }
    [[nodiscard]] Controls* operator->() const { return controls_.get(); }
    [[nodiscard]] Controls& operator*() const { return *controls_; }
    [[nodiscard]] Window* window() const { return controls_ ? &controls_->window : nullptr; }

    /// The fresh set, presented but not visible. Must not be loaded; stays so when presenting throws.
    template <class... Arguments>
    std::shared_ptr<Controls> load(Arguments&&... arguments) {
        auto fresh = std::make_shared<Controls>(std::forward<Arguments>(arguments)...);
        fresh->view = process_.platform.userInterface.present(fresh->window);
        return controls_ = fresh;
    }

    /// Returns when the window has been hidden or unloaded. Whatever fails, it does not stay on the screen,
    /// where it would go on blocking the others.
    void showModal() {
        const auto shown = controls_;
        ended(
            [&] {
                process_.windows.show(shown->window, true);
                process_.platform.userInterface.runModal(shown->window);
            },
            [&] { process_.windows.remove(shown->window); });
    }

    /// No error while not loaded.
    void unload() {
        if (const auto unloaded = std::exchange(controls_, nullptr))
            ended([&] { process_.windows.remove(unloaded->window); }, [&] { unloaded->retire(); });
    }

  private:
    ProcessState& process_;
    std::shared_ptr<Controls> controls_;
};

} // namespace kova
