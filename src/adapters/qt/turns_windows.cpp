#include "adapters/qt/turns.h"

namespace kova {

struct Turns::State {};

Turns::Turns() = default;
Turns::~Turns() = default;

void Turns::run(const std::function<void()>& handle) {
    handle();
}

bool Turns::inside() const {
    return false;
}

bool Turns::waiting() const {
    return false;
}

void Turns::waitUntil(const std::function<bool()>&) {}

void Turns::onHostStack(const std::function<void()>& call) {
    call();
}

} // namespace kova
