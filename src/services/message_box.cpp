#include "services/message_box.h"

namespace kova {

struct frmMsgBox::Controls {
    Window window{"frmMsgBox", "Messaggio", {0, 0, 7200, 3000}};
    PictureArea PictureIcon{{&window, "PictureIcon", {240, 360, 720, 720}}};
    Label lblMessaggio{{&window, "lblMessaggio", {1200, 240, 5760, 1680}}, "messaggio"};
    PushButton cmd1{{&window, "cmd1", {2700, 2100, 1800, 690}}, "OK", {"Tahoma", 12, true}};
    std::vector<Connection> handlers;
    std::unique_ptr<WindowView> view;
};

Window* frmMsgBox::window() {
    return loaded_ ? &loaded_->window : nullptr;
}

void frmMsgBox::load() {
    if (loaded_)
        return;
    loaded_ = std::make_shared<Controls>();
    auto& controls = *loaded_;
    controls.window.setInitialFocus(controls.cmd1);
    controls.window.setKeyTargets({nullptr, nullptr, {&controls.cmd1}, nullptr});
    controls.handlers.push_back(controls.cmd1.pressed.connect([this] { cmd1_Click(); }));
    controls.handlers.push_back(controls.window.closeRequested.connect([this] { unload(); }));
    controls.view = process_.platform.userInterface.present(controls.window);
}

// Silent, and whatever fails does not keep the window open.
void frmMsgBox::cmd1_Click() {
    const auto controls = loaded_;
    attempt([&] { unload(); });
    attempt([&] { controls->window.setVisible(false); });
}

void frmMsgBox::unload() {
    // The button that closes the window is inside the set: it lives until ShowMessage returns.
    const auto controls = std::exchange(loaded_, nullptr);
    if (!controls)
        return;
    process_.windows.remove(controls->window);
    controls->handlers.clear();
    controls->view.reset();
}

void frmMsgBox::ShowMessage(const std::string& message, std::int32_t icon, const std::string& title) {
    load();
    const auto shown = loaded_;
    shown->window.setCaption(title);
    shown->lblMessaggio.setCaption(message);
    shown->window.setSeverity(static_cast<Severity>(icon));
    try {
        process_.windows.show(shown->window, true);
        process_.platform.userInterface.runModal(shown->window);
    } catch (...) {
        unload(); // a message that could not be shown must not go on blocking the dialog
        throw;
    }
    if (loaded_ == shown)
        unload();
}

void ShowMessage(ProcessState& process, const std::string& message, std::int32_t icon,
                 const std::string& title) {
    process.messageWindow().ShowMessage(message, icon, title);
}

} // namespace kova
