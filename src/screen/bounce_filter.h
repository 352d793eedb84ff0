#pragma once
#include "screen/geometry.h"

#include <chrono>

namespace kova {

/// Finds the second touch of a panel that bounces: down again, within 40 ms of going up, at the same spot of
/// the same widget. A finger needs more than 60 ms to leave the glass and come back, so that no double digit
/// and no double touch meant as one is lost. Events without a time are never taken for bounced ones.
class BounceFilter {
  public:
    static constexpr std::chrono::milliseconds Pause{40}; ///< less than this between up and down is a bounce
    static constexpr double Reach = 20; ///< pixels that a bounced touch may lie beside the first

    enum class Phase { Down, Up };
    struct Touch {
        const void* target = nullptr; ///< the widget; only compared
        Point place;                  ///< on the screen
        std::chrono::milliseconds time{0};
    };
    /// Whether the touch is a bounced one, whose release goes with its press.
    bool swallows(Phase phase, const Touch& touch);

  private:
    Touch up_;
    bool swallowing_ = false;
};

} // namespace kova
