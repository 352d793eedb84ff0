#pragma once
#include "component/cls_Kova_Drawer_Man.h"

#include <memory>
#include <span>
#include <string_view>

namespace kova {

/// How a script's host reaches its component: everything by name, as late-bound hosts do. Failures are those
/// of `cls_Kova_Drawer_Man`.
class ComponentDoor {
  public:
    virtual ~ComponentDoor() = default;
    virtual Variant get(std::string_view name) = 0;
    virtual void set(std::string_view name, const Variant& value) = 0;
    virtual Variant invoke(std::string_view method, std::span<Variant> arguments = {}) = 0;
    /// Connects a sink, which must outlive the connection, until what it returns is released.
    virtual std::shared_ptr<void> connect(EventSink& sink) = 0;
};

/// As a host in C++ does.
std::shared_ptr<ComponentDoor> openDoor(const std::shared_ptr<cls_Kova_Drawer_Man>& component);

/// As a host does that knows nothing but Windows' automation: the component is created by its registered
/// name, and called and heard through dispatch interfaces alone. Only a connection to a database, which a
/// script has no automation object of, is handed over directly. Throws Error where there is no automation or
/// the class is not registered.
std::shared_ptr<ComponentDoor> openAutomationDoor(const std::shared_ptr<cls_Kova_Drawer_Man>& component);

} // namespace kova
