#pragma once
#include <functional>
#include <memory>

namespace kova {

/// Lets a host with an event loop of its own handle events in turns that always end, although handlers wait
/// for windows to close. What runs in a turn has a stack of its own: where it has to wait, the turn ends, and
/// a later one goes on there. Where handlers wait inside one another, they go on in the reverse order, as
/// nested loops do. On systems whose hosts handle the events of all windows in one loop of the system's, a
/// turn is a plain call, in which nothing can wait.
class Turns {
  public:
    Turns();
    Turns(const Turns&) = delete;
    Turns& operator=(const Turns&) = delete;
    /// What still waits is forgotten, without running its destructors.
    ~Turns();

    /// One turn: calls `handle`, then goes on with what waits as far as it can. Throws what that throws.
    /// Inside a turn, and in a function of the host's that one calls, it is a plain call, in which nothing
    /// can wait: what began later has to end before.
    void run(const std::function<void()>& handle);
    /// Whether the caller is inside a turn, and may wait.
    [[nodiscard]] bool inside() const;
    /// Whether anything waits.
    [[nodiscard]] bool waiting() const;
    /// Ends the turn until `over` holds, which is asked in each later one.
    void waitUntil(const std::function<bool()>& over);
    /// Calls a function of the host's on the stack that the host runs on, which languages that look at their
    /// stack ask for. Nothing may wait in it. Throws what the function throws.
    void onHostStack(const std::function<void()>& call);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace kova
