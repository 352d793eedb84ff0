#include "base/error.h"
#include "player/component_door.h"

namespace kova {

std::shared_ptr<ComponentDoor> openAutomationDoor(const std::shared_ptr<cls_Kova_Drawer_Man>&) {
    throw Error(429, "There is no automation on this system");
}

} // namespace kova
