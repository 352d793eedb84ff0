#pragma once
#include "ports/database.h"

#include <algorithm>
#include <chrono>
#include <optional>

namespace kova {

/// Keeps a user from waiting again and again for a server that does not answer. After each attempt that was
/// waited for in vain, queries fail at once for a while, which grows as long as no answer comes.
class ServerPause {
  public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::seconds Longest{60};
    /// An attempt that fails sooner may be made again at once.
    static constexpr std::chrono::milliseconds BearableWait{500};

    explicit ServerPause(std::chrono::seconds first) : first_(first) {}

    /// Throws the failure of the last attempt while the pause lasts.
    void check(Clock::time_point now = Clock::now()) const {
        if (failure_ && now < end_)
            throw *failure_;
    }
    void attemptFailed(const DatabaseError& failure, Clock::time_point begun,
                       Clock::time_point now = Clock::now()) {
        if (now - begun < BearableWait)
            return;
        length_ = failure_ ? std::min<Clock::duration>(2 * length_, Longest) : first_;
        failure_ = failure;
        end_ = now + length_;
    }
    void answered() { failure_.reset(); }
    /// Asks the server by `ask`, outside of pauses, and returns what that returns. Throws what it throws.
    template <class Ask>
    auto asked(const Ask& ask) {
        check();
        const auto begun = Clock::now();
        try {
            auto answer = ask();
            answered();
            return answer;
        } catch (const DatabaseError& failure) {
            if (meansNoAnswer(failure))
                attemptFailed(failure, begun);
            throw;
        }
    }

  private:
    Clock::duration first_;
    std::optional<DatabaseError> failure_;
    Clock::duration length_{};
    Clock::time_point end_;
};

} // namespace kova
