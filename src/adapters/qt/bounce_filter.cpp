#include "adapters/qt/bounce_filter.h"

#include <QEvent>
#include <QPointerEvent>

namespace kova {

BounceFilter::Touch BounceFilter::read(const QObject& target, const QEvent& event) {
    Phase phase = Phase::Other;
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TouchBegin:
        phase = Phase::Down;
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::TouchEnd:
        phase = Phase::Up;
        break;
    default:
        return {};
    }
    const auto& pointer = static_cast<const QPointerEvent&>(event);
    if (pointer.pointCount() == 0)
        return {};
    return {&target, pointer.points().first().globalPosition(), pointer.timestamp(), phase};
}

bool BounceFilter::swallows(const QObject& target, const QEvent& event) {
    const Touch touch = read(target, event);
    if (touch.phase == Phase::Down) {
        swallowing_ = touch.time > 0 && touch.target == up_.target && touch.time >= up_.time &&
                      touch.time - up_.time < WindowMilliseconds &&
                      (touch.place - up_.place).manhattanLength() < Reach;
        return swallowing_;
    }
    if (touch.phase != Phase::Up)
        return false;
    const bool swallowed = swallowing_ && touch.target == up_.target;
    if (touch.time != up_.time) // the same event comes again for the parents of a widget that ignored it
        up_ = touch;
    swallowing_ = false;
    return swallowed;
}

} // namespace kova
