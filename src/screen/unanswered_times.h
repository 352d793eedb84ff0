#pragma once
#include <array>
#include <chrono>
#include <cstddef>

namespace kova {

/// When nothing could answer the user: a handler or a call of the host's ran. What is touched meanwhile was
/// meant for what the screen showed then, and must not act on what it shows afterwards. Times are of one
/// steady clock.
class UnansweredTimes {
  public:
    using Time = std::chrono::milliseconds;
    /// What is touched in shorter ones is answered: whoever knows the way is faster than the screen, and must
    /// lose nothing.
    static constexpr Time Noticed{500};

    /// Something runs, possibly inside of something that runs already. `now` is asked for the time where it
    /// matters: a clock costs more than the whole of a short call.
    template <class Clock>
    void begin(const Clock& now) {
        if (running_++ == 0)
            since_ = now();
    }
    template <class Clock>
    void end(const Clock& now) {
        if (running_ > 0 && --running_ == 0)
            close(now());
    }
    /// What runs waits for the user and lets events be handled. Returns what `resume` takes.
    [[nodiscard]] int suspend(Time now);
    void resume(int running, Time now);
    /// Whether nothing could have answered at that time, which lies a minute back at most.
    [[nodiscard]] bool contain(Time touched, Time now) const;

  private:
    struct Span {
        Time begin{0}, end{0};
    };
    void close(Time now);
    int running_ = 0;
    Time since_{0};              ///< while something runs
    std::array<Span, 16> spans_; ///< the last ones
    std::size_t next_ = 0;       ///< where the next goes
};

} // namespace kova
