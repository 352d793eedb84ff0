#include "services/message_box.h"

namespace kova {

struct frmMsgBox::Controls {
    Window window{"frmMsgBox", "Messaggio", {0, 0, 7200, 3000}};
    PictureArea PictureIcon{{&window, "PictureIcon", {240, 360, 720, 720}}};
    Label lblMessaggio{{&window, "lblMessaggio", {1200, 240, 5760, 1680}}, "messaggio"};
    PushButton cmd1{{&window, "cmd1", {2700, 2100, 1800, 690}}, "OK", {"Tahoma", 12, true}};
    std::vector<Connection> handlers;
    std::unique_ptr<WindowView> view;

    Controls() {
        window.setInitialFocus(cmd1);
        window.setKeyTargets({nullptr, nullptr, {&cmd1}, nullptr});
    }
    void retire() {
        handlers.clear();
        view.reset();
    }
};

Window* frmMsgBox::window() {
    return lifetime_.window();
}

void frmMsgBox::load() {
    if (loaded())
        return;
    const auto controls = lifetime_.load();
    controls->handlers.push_back(controls->cmd1.pressed.connect([this] { cmd1_Click(); }));
    controls->handlers.push_back(controls->window.closeRequested.connect([this] { unload(); }));
}

// Silent, and whatever fails does not keep the window open.
void frmMsgBox::cmd1_Click() {
    const auto controls = lifetime_.controls();
    attempt([&] { unload(); });
    attempt([&] { controls->window.setVisible(false); });
}

void frmMsgBox::unload() {
    lifetime_.unload();
}

void frmMsgBox::ShowMessage(const std::string& message, std::int32_t icon, const std::string& title,
                            const Control* inSight) {
    load();
    const auto shown = lifetime_.controls(); // the button that closes the window is in it
    shown->window.setCaption(title);
    shown->lblMessaggio.setCaption(message);
    shown->window.setSeverity(static_cast<Severity>(icon));
    shown->window.keepInSight(inSight);
    ended([&] { lifetime_.showModal(); },
          [&] {
              if (lifetime_.controls() == shown)
                  unload();
          });
}

void ShowMessage(ProcessState& process, const std::string& message, std::int32_t icon,
                 const std::string& title, const Control* inSight) {
    process.messageWindow().ShowMessage(message, icon, title, inSight);
}

} // namespace kova
