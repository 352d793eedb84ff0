#include "library/library_process.h"

#include "adapters/system/own_folder.h"
#include "adapters/system/system_regional_settings.h"
#include "services/file_error_logger.h"

#include <cstdlib>

namespace kova {
namespace {

/// Destroyed from the last member to the first: the component before what it lives on.
struct ComponentWithProcess {
    std::shared_ptr<LibraryProcess> process;
    std::shared_ptr<cls_Kova_Drawer_Man> component;
};

bool exiting = false;

/// A component that a host still holds when the process exits stays as it is: Qt's own static objects may be
/// gone by then, and nothing can be drawn or closed any more.
void release(ComponentWithProcess* whole) {
    if (!exiting) {
        delete whole;
        return;
    }
    static auto* const left = new std::vector<ComponentWithProcess*>;
    left->push_back(whole);
}

} // namespace

LibraryProcess::LibraryProcess() : regional_(systemRegionalSettings()), state_(platform()) {}

Platform LibraryProcess::platform() {
    return {.userInterface = userInterface_,
            .eventLoop = eventLoop_,
            .clock = clock_,
            .languageRuntime = language_,
            .settingsStore = settings_,
            .databases = databases_,
            .regional = regional_,
            .makeErrorLogger = [this] { return std::make_unique<FileErrorLogger>(clock_); },
            .componentFolder = ownFolder()};
}

std::shared_ptr<cls_Kova_Drawer_Man> LibraryProcess::createComponent() {
    std::erase_if(components_, [](const auto& component) { return component.expired(); });
    static const int registered = std::atexit([] { exiting = true; });
    (void)registered;
    const std::shared_ptr<ComponentWithProcess> whole(new ComponentWithProcess{shared_from_this(), {}},
                                                      release);
    whole->component = cls_Kova_Drawer_Man::create(state_);
    components_.push_back(whole->component);
    return {whole, whole->component.get()};
}

void LibraryProcess::setScreenAids(const ScreenAids& aids) {
    state_.screenAids = aids;
    state_.entryChanged();
}

void LibraryProcess::setDecimalKey(DecimalKey key) {
    state_.decimalKey = key;
    state_.entryChanged();
}

void LibraryProcess::end() {
    for (const auto& known : components_)
        if (const auto component = known.lock())
            component->DiscardForm();
    eventLoop_.settle();
    eventLoop_.endApplication();
}

} // namespace kova
