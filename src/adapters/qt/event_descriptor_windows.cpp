#include "adapters/qt/event_descriptor.h"

namespace kova {

struct EventDescriptor::Waits {};

EventDescriptor::EventDescriptor() = default;
EventDescriptor::~EventDescriptor() = default;

int EventDescriptor::number() const {
    return -1;
}

void EventDescriptor::refresh() {}

} // namespace kova
