#pragma once
#include "component/cls_Kova_Drawer_Man.h"
#include "drawer_dialog/frm_Drawer_Management.h"

namespace kova {

/// Stands around every handler of the dialog. A handler may end in the unloading of its own dialog, or in the
/// host's release of the component: both live on until the outermost handler has returned.
class frm_Drawer_Management::HandlerScope {
  public:
    explicit HandlerScope(frm_Drawer_Management& dialog)
        : component_(dialog.component().weak_from_this().lock()),
          controls_(dialog.controls_ ? dialog.controls_ : dialog.retired_.lock()), dialog_(dialog) {
        ++dialog_.runningHandlers_;
    }
    ~HandlerScope() {
        --dialog_.runningHandlers_;
        dialog_.process_.entryChanged(); // no slot of it throws
    }
    HandlerScope(const HandlerScope&) = delete;
    HandlerScope& operator=(const HandlerScope&) = delete;

  private:
    std::shared_ptr<cls_Kova_Drawer_Man> component_;
    std::shared_ptr<DrawerControls> controls_;
    frm_Drawer_Management& dialog_;
};

} // namespace kova
