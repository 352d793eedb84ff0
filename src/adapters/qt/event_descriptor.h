#pragma once
#include <memory>

namespace kova {

/// A file descriptor that can be read when Qt has something to do on this thread: an event that arrived, one
/// that waits, or a timer that is due. Throws Error when the system has none left.
class EventDescriptor {
  public:
    EventDescriptor();
    EventDescriptor(const EventDescriptor&) = delete;
    EventDescriptor& operator=(const EventDescriptor&) = delete;
    ~EventDescriptor();
    /// -1 on systems where a queue of the thread's messages says it.
    [[nodiscard]] int number() const;
    /// Waits for what Qt waits for now, after events were handled or timers begun.
    void refresh();

  private:
    struct Waits;
    std::unique_ptr<Waits> waits_;
};

} // namespace kova
