#pragma once
#include "c_interface/calls.h"
#include "c_interface/handles.h"
#include "component/cls_Kova_Drawer_Man.h"
#include "ports/event_loop.h"

#include <memory>
#include <thread>

namespace kova::c_interface {

/// A component that a host holds, and what the host wants to know of its dialog.
class HeldComponent {
  public:
    explicit HeldComponent(std::shared_ptr<cls_Kova_Drawer_Man> component);
    HeldComponent(const HeldComponent&) = delete;
    HeldComponent& operator=(const HeldComponent&) = delete;
    ~HeldComponent();

    [[nodiscard]] cls_Kova_Drawer_Man& component() const { return *component_; }
    /// To see whether anybody else keeps it.
    [[nodiscard]] std::weak_ptr<cls_Kova_Drawer_Man> observed() const { return component_; }
    [[nodiscard]] bool onItsThread() const { return std::this_thread::get_id() == thread_; }
    [[nodiscard]] bool open() const;
    void onClosed(kova_closed_handler handler, void* user);
    /// Tells the host at once that the dialog has closed, where it has not heard it yet.
    void tellClosed();

  private:
    void closed();

    const std::shared_ptr<cls_Kova_Drawer_Man> component_;
    const std::thread::id thread_ = std::this_thread::get_id();
    EventLoop& eventLoop_;
    kova_closed_handler handler_ = nullptr;
    void* user_ = nullptr;
    TimerId telling_ = 0; ///< of a closing that the host has not heard of
    Connection closing_;
};

Handles<kova_component, HeldComponent>& components();
/// For a call that may be made on the component's thread alone. `function` names it in the log.
std::shared_ptr<HeldComponent> held(kova_component component, const char* function);

/// One call of a component's member.
template <class Body>
kova_status call(kova_component component, const char* function, const Body& body) noexcept {
    return guarded([&] { body(held(component, function)->component()); });
}

Handles<kova_database, std::shared_ptr<DatabaseConnection>>& databases();
/// Empty for a null handle.
std::shared_ptr<DatabaseConnection> databaseOf(kova_database database);

/// A text that C hosts change: their own, or for as long as an event lasts the component's.
struct ReferredText {
    std::string own;
    std::string* content = &own;
};
Handles<kova_text, ReferredText>& texts();
/// For as long as it is held, whoever releases it meanwhile. Throws for a handle that is none.
std::shared_ptr<ReferredText> keptText(kova_text text);

/// Lends a text of the component's to a handler.
class LentText {
  public:
    explicit LentText(std::string& text);
    LentText(const LentText&) = delete;
    LentText& operator=(const LentText&) = delete;
    ~LentText() { texts().remove(handle_); }
    [[nodiscard]] kova_text handle() const { return handle_; }

  private:
    kova_text handle_;
};

} // namespace kova::c_interface
