#include "base/utf8.h"
#include "player/cashier.h"
#include "player/control_finder.h"
#include "player/player_commands.h"
#include "player/scenario_player.h"
#include "player/script_world.h"
#include "player/trace.h"
#include "widgets/button_grid.h"
#include "widgets/captioned_controls.h"
#include "widgets/keyboards.h"
#include "widgets/report_grid.h"
#include "widgets/tab_control.h"
#include "widgets/text_box.h"

#include <algorithm>
#include <utility>

namespace kova {
namespace {

/// As `ignored` lines name a control. A copy: the control may be gone after the gesture.
std::string lineName(const Control& control) {
    std::string name = control.name();
    if (control.index())
        name.append(" ").append(std::to_string(*control.index()));
    return name;
}

/// Makes a gesture and prints `ignored …` when it did not get through. What a handler without a trap throws
/// ends there, as in a toolkit's event loop. Returns whether it got through.
template <class Body>
bool gesture(Scene& scene, const std::string& what, Body body) {
    Gesture outcome = Gesture::Done;
    try {
        outcome = body();
    } catch (const ScenarioError&) {
        throw;
    } catch (const std::exception&) {
        return true;
    }
    if (outcome == Gesture::Done)
        return true;
    const char* reason = outcome == Gesture::Hidden     ? "hidden"
                         : outcome == Gesture::Disabled ? "disabled"
                                                        : "locked";
    scene.trace.add("ignored " + what + ": " + reason);
    return false;
}

void touch(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(2);
    auto& grid = requireKind<ButtonGrid>(findControl(scene, {arguments.text(0), {}}), "ButtonGrid");
    const std::string& key = arguments.text(1);
    gesture(scene, "touch " + lineName(grid) + " " + key, [&] {
        if (const Gesture reached = grid.reach(); reached != Gesture::Done)
            return reached;
        if (grid.find(key) == nullptr)
            throw ScenarioError(grid.name() + " has no button with the key " + key);
        return scene.cashier.touch(grid, key);
    });
}

void press(Scene& scene, const Arguments& arguments) {
    auto& button = requireKind<PushButton>(findControl(scene, controlName(arguments)), "push button");
    gesture(scene, "press " + lineName(button), [&] { return scene.cashier.press(button); });
}

void key(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    auto& keypad = firstOfKind<NumericKeypad>({&activeWindow(scene)}, "numeric keypad");
    const std::string& text = arguments.text(0);
    gesture(scene, "key " + traced(text), [&] { return scene.cashier.touchKey(keypad, text); });
}

void keyboard(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    const std::string& text = arguments.text(0);
    const std::u32string characters = fromUtf8(text);
    for (const char32_t character : characters)
        if (!OnScreenKeyboard::hasKey(character))
            throw ScenarioError("the keyboard has no key for " + toUtf8({&character, 1}));
    for (const char32_t character : characters) {
        auto& keys = firstOfKind<OnScreenKeyboard>(loadedWindows(scene), "on-screen keyboard");
        const auto touchKey = [&] { return scene.cashier.touchKey(keys, character); };
        if (!gesture(scene, "keyboard " + traced(text), touchKey) || scene.player.ended())
            return;
    }
}

/// Text and pictures, and what holds other controls, never have the keyboard.
bool takesFocus(Control& control) {
    return asKind<Window>(control) == nullptr && asKind<TabPage>(control) == nullptr &&
           asKind<Label>(control) == nullptr && asKind<GroupFrame>(control) == nullptr &&
           asKind<PictureArea>(control) == nullptr;
}

void focus(Scene& scene, const Arguments& arguments) {
    Control& control = findControl(scene, controlName(arguments));
    if (!takesFocus(control))
        throw ScenarioError(control.name() + " cannot have the focus");
    gesture(scene, "focus " + lineName(control), [&] { return scene.cashier.focus(control); });
}

void type(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    const std::string& text = arguments.text(0);
    activeWindow(scene);
    for (const char32_t character : fromUtf8(text)) {
        Window* window = scene.process.windows.active(); // a key may have closed the one before
        if (window == nullptr || scene.player.ended())
            return;
        const auto typeOne = [&] { return scene.cashier.type(*window, character); };
        if (!gesture(scene, "type " + traced(text), typeOne))
            return;
    }
}

void text(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(2, 3);
    const std::string& pasted = arguments.text(arguments.count() - 1);
    const auto index = arguments.count() == 3 ? std::optional<int>(arguments.int32(1)) : std::nullopt;
    Control& control = findControl(scene, {arguments.text(0), index});
    auto* box = asKind<TextBox>(control);
    auto* date = asKind<DateField>(control);
    if (box == nullptr && date == nullptr)
        throw ScenarioError(control.name() + " is neither a text box nor a date field");
    gesture(scene, "text " + lineName(control) + " " + traced(pasted),
            [&] { return box != nullptr ? box->paste(pasted) : date->paste(pasted); });
}

void tab(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    auto& tabs = firstOfKind<TabControl>(loadedWindows(scene), "tab control");
    const std::int32_t index = arguments.natural(0);
    if (static_cast<std::size_t>(index) >= tabs.pages().size())
        throw ScenarioError("no such tab: " + arguments.text(0));
    gesture(scene, "tab " + std::to_string(index), [&] { return scene.cashier.selectTab(tabs, index); });
}

/// The movements list and the number of the column that the line names by its caption.
std::pair<ReportGrid*, std::size_t> reportColumn(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    auto& grid = firstOfKind<ReportGrid>(loadedWindows(scene), "report grid");
    const auto& columns = grid.columns();
    const auto found = std::ranges::find(columns, arguments.text(0), &ReportGrid::Column::caption);
    if (found == columns.end())
        throw ScenarioError(grid.name() + " has no column " + arguments.text(0));
    return {&grid, static_cast<std::size_t>(found - columns.begin())};
}

void sort(Scene& scene, const Arguments& arguments) {
    const auto [grid, column] = reportColumn(scene, arguments);
    gesture(scene, "sort " + traced(arguments.text(0)),
            [&, list = grid, touched = column] { return list->touchHeader(touched); });
}

void group(Scene& scene, const Arguments& arguments) {
    const auto [grid, column] = reportColumn(scene, arguments);
    gesture(scene, "group " + traced(arguments.text(0)),
            [&, list = grid, dragged = column] { return list->groupBy(dragged); });
}

void ungroup(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    auto& grid = firstOfKind<ReportGrid>(loadedWindows(scene), "report grid");
    gesture(scene, "ungroup", [&] { return grid.ungroup(); });
}

void close(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    Window& window = activeWindow(scene);
    gesture(scene, "close", [&] {
        scene.cashier.requestClose(window);
        return Gesture::Done;
    });
}

void wait(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    const std::chrono::milliseconds time(arguments.natural(0));
    gesture(scene, "wait", [&] {
        scene.time.wait(time);
        return Gesture::Done;
    });
}

void screenshot(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    scene.cashier.screenshot(activeWindow(scene), arguments.text(0));
}

} // namespace

std::span<const Command> cashierCommands() {
    static constexpr Command Commands[] = {
        {"touch", touch},     {"press", press},
        {"key", key},         {"keyboard", keyboard},
        {"focus", focus},     {"type", type},
        {"text", text},       {"tab", tab},
        {"sort", sort},       {"group", group},
        {"ungroup", ungroup}, {"close", close},
        {"wait", wait},       {"screenshot", screenshot},
    };
    return Commands;
}

} // namespace kova
