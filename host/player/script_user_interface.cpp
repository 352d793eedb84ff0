#include "player/script_user_interface.h"

#include "player/control_finder.h"
#include "widgets/captioned_controls.h"
#include "widgets/window.h"

namespace kova {
namespace {

constexpr std::string_view MessageWindow = "frmMsgBox";

MessageAnswer defaultAnswer(const PlatformMessage& message) {
    return (message.buttons & PlatformMessage::YesNo) != 0 ? MessageAnswer::Yes : MessageAnswer::Ok;
}

template <class Kind>
Kind* findKind(Window& window, std::string_view name) {
    Control* control = window.find(name);
    return control == nullptr ? nullptr : asKind<Kind>(*control);
}

} // namespace

void ScriptUserInterface::runModal(Window& window) {
    if (window.name() == MessageWindow) {
        traceMessageWindow(window);
        if (auto* button = findKind<PushButton>(window, "cmd1"); button != nullptr && !keepsMessageWindows_)
            cashier_.press(*button);
    }
    playWhile_([&window] { return window.visible(); });
}

MessageAnswer ScriptUserInterface::messageBox(const PlatformMessage& message) {
    MessageAnswer answer = defaultAnswer(message);
    if (!answers_.empty()) {
        answer = answers_.front();
        answers_.pop_front();
    }
    const bool service = message.route == PlatformMessage::Route::Service;
    trace_.add(TraceLine(service ? "message service" : "message platform")
                   .with("title", message.title)
                   .with("text", message.text)
                   .with("buttons", message.buttons)
                   .with("answer", static_cast<std::int32_t>(answer)));
    return answer;
}

void ScriptUserInterface::traceMessageWindow(Window& window) {
    const auto* label = findKind<Label>(window, "lblMessaggio");
    trace_.add(TraceLine("message window")
                   .with("title", window.caption())
                   .with("text", label == nullptr ? std::string() : label->caption())
                   .with("icon", static_cast<std::int32_t>(window.severity())));
}

} // namespace kova
