#include "adapters/headless/headless.h"

namespace kova {

void HeadlessEventLoop::processPendingEvents() {
    for (auto waiting = posted_.size(); waiting > 0 && !posted_.empty(); --waiting) {
        const auto event = std::move(posted_.front());
        posted_.pop_front();
        event();
    }
}

MessageAnswer HeadlessUserInterface::messageBox(const PlatformMessage& message) {
    if (answer_)
        return answer_(message);
    return (message.buttons & PlatformMessage::YesNo) != 0 ? MessageAnswer::Yes : MessageAnswer::Ok;
}

} // namespace kova
