#include "player/component_door.h"

#include <utility>

namespace kova {
namespace {

class DirectDoor final : public ComponentDoor {
  public:
    explicit DirectDoor(std::shared_ptr<cls_Kova_Drawer_Man> component) : component_(std::move(component)) {}
    Variant get(std::string_view name) override { return component_->get(name); }
    void set(std::string_view name, const Variant& value) override { component_->set(name, value); }
    Variant invoke(std::string_view method, std::span<Variant> arguments) override {
        return component_->invoke(method, arguments);
    }
    std::shared_ptr<void> connect(EventSink& sink) override {
        return std::make_shared<Connection>(component_->connect(sink));
    }

  private:
    std::shared_ptr<cls_Kova_Drawer_Man> component_;
};

} // namespace

std::shared_ptr<ComponentDoor> openDoor(const std::shared_ptr<cls_Kova_Drawer_Man>& component) {
    return std::make_shared<DirectDoor>(component);
}

} // namespace kova
