#include "player/control_finder.h"

#include "coin_count/frm_CaricaMoneta.h"
#include "component/component_state.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "player/script_host.h"

#include <algorithm>

namespace kova {

std::vector<Window*> loadedWindows(const Scene& scene) {
    const auto& shown = scene.process.windows.windows();
    std::vector<Window*> windows(shown.rbegin(), shown.rend());
    const auto addHidden = [&windows](Window* window) {
        if (window != nullptr && std::ranges::find(windows, window) == windows.end())
            windows.push_back(window);
    };
    if (const auto* current = scene.host.currentIfAny())
        if (auto* dialog = dialogOf(*current->component()))
            addHidden(dialog->window());
    if (const auto& coins = scene.process.coinDialog)
        addHidden(coins->window());
    return windows;
}

Window& activeWindow(const Scene& scene) {
    Window* window = scene.process.windows.active();
    if (window == nullptr)
        throw ScenarioError("no window is open");
    return *window;
}

ControlName controlName(const Arguments& arguments) {
    arguments.requireCount(1, 2);
    return {arguments.text(0),
            arguments.count() == 2 ? std::optional<int>(arguments.int32(1)) : std::nullopt};
}

Control& findControl(const Scene& scene, const ControlName& wanted) {
    for (Window* window : loadedWindows(scene))
        if (Control* control = window->find(wanted.name, wanted.index))
            return *control;
    throw ScenarioError("no such control: " + wanted.name +
                        (wanted.index ? " " + std::to_string(*wanted.index) : std::string()));
}

} // namespace kova
