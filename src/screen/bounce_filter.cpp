#include "screen/bounce_filter.h"

#include <cmath>

namespace kova {

bool BounceFilter::swallows(Phase phase, const Touch& touch) {
    if (phase == Phase::Down) {
        const Point apart = touch.place - up_.place;
        swallowing_ = touch.time.count() > 0 && touch.target == up_.target && touch.time >= up_.time &&
                      touch.time - up_.time < Pause && std::abs(apart.x) + std::abs(apart.y) < Reach;
        return swallowing_;
    }
    const bool swallowed = swallowing_ && touch.target == up_.target;
    if (touch.time != up_.time) // the same event comes again for the parents of a widget that ignored it
        up_ = touch;
    swallowing_ = false;
    return swallowed;
}

} // namespace kova
