#include "c_interface/held_component.h"

#include "component/component_state.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "library/library_process.h"

#include <utility>

namespace kova::c_interface {

using namespace std::chrono_literals;

HeldComponent::HeldComponent(std::shared_ptr<cls_Kova_Drawer_Man> component)
    : component_(std::move(component)),
      eventLoop_(ComponentState::of(*component_).process().platform.eventLoop),
      closing_(ComponentState::of(*component_).closed.connect([this] { closed(); })) {}

HeldComponent::~HeldComponent() {
    closing_.disconnect();
    if (telling_ != 0)
        eventLoop_.stopTimer(telling_);
}

bool HeldComponent::open() const {
    auto* const dialog = dialogOf(*component_);
    return dialog != nullptr && dialog->loaded() && dialog->window()->visible();
}

void HeldComponent::onClosed(kova_closed_handler handler, void* user) {
    handler_ = handler;
    user_ = user;
}

// From the loop: the dialog is still busy with its closing, and the handler may show it again.
void HeldComponent::closed() {
    if (handler_ != nullptr && telling_ == 0)
        telling_ = eventLoop_.startTimer(1ms, [this] { tellClosed(); });
}

void HeldComponent::tellClosed() {
    if (const TimerId telling = std::exchange(telling_, 0))
        eventLoop_.stopTimer(telling);
    else
        return;
    if (handler_ != nullptr) // which may release this
        onHostStack([handler = handler_, user = user_] { handler(user); });
}

Handles<kova_component, HeldComponent>& components() {
    static auto* const all = new Handles<kova_component, HeldComponent>; // threads may outlive static objects
    return *all;
}

std::shared_ptr<HeldComponent> held(kova_component component, const char* function) {
    auto found = components().find(component);
    if (!found)
        throw Refusal(KOVA_INVALID_HANDLE, "Not a component");
    if (found->onItsThread())
        return found;
    constexpr const char* Words = "Called from another thread than the user interface's";
    LibraryProcess::log().LogError(function, Words, nullptr, 0, "");
    throw Refusal(KOVA_WRONG_THREAD, Words);
}

Handles<kova_database, std::shared_ptr<DatabaseConnection>>& databases() {
    static auto* const all = new Handles<kova_database, std::shared_ptr<DatabaseConnection>>;
    return *all;
}

std::shared_ptr<DatabaseConnection> databaseOf(kova_database database) {
    if (database == nullptr)
        return nullptr;
    const auto found = databases().find(database);
    if (!found)
        throw Refusal(KOVA_INVALID_HANDLE, "Not a database");
    return *found;
}

Handles<kova_text, ReferredText>& texts() {
    static auto* const all = new Handles<kova_text, ReferredText>;
    return *all;
}

std::shared_ptr<ReferredText> keptText(kova_text text) {
    auto found = texts().find(text);
    if (!found)
        throw Refusal(KOVA_INVALID_HANDLE, "Not a text");
    return found;
}

LentText::LentText(std::string& text) {
    auto lent = std::make_shared<ReferredText>();
    lent->content = &text;
    handle_ = texts().add(std::move(lent));
}

} // namespace kova::c_interface
