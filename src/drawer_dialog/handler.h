#pragma once
#include "drawer_dialog/frm_Drawer_Management.h"

namespace kova {

/// A running handler of the dialog, or an operation of its component, with the controls that it began with.
/// Handlers nest: the host may discard the dialog inside one, and show it afresh with controls of its own.
class frm_Drawer_Management::Handler {
  public:
    Handler(frm_Drawer_Management& dialog, DrawerControls* controls)
        : dialog_(dialog), controls_(controls), outer_(std::exchange(dialog.running_, this)),
          outerActing_(std::exchange(dialog.process_.acting, &dialog)) {}
    ~Handler() {
        dialog_.running_ = outer_;
        dialog_.process_.acting = outerActing_;
    }
    Handler(const Handler&) = delete;
    Handler& operator=(const Handler&) = delete;

    /// Null where the dialog was not loaded.
    [[nodiscard]] DrawerControls* controls() const { return controls_; }
    [[nodiscard]] bool outermost() const { return outer_ == nullptr; }

  private:
    frm_Drawer_Management& dialog_;
    DrawerControls* controls_;
    Handler* outer_;
    const frm_Drawer_Management* outerActing_;
};

// A handler may end in the unloading of its own dialog, or in the host's release of the component: both live
// on until it has returned.
template <class Body>
void frm_Drawer_Management::handled(const std::shared_ptr<DrawerControls>& controls, const Body& body) {
    const auto component = parent().keptAlive();
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the reference may be to the dialog's own
    const auto kept = controls;
    const Handler handler(*this, kept.get());
    ended(body, [this] { handlerEnded(); });
}

} // namespace kova
