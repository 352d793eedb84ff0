#pragma once
#include "ports/event_loop.h"
#include "ports/timers.h"
#include "ports/user_interface.h"

#include <deque>
#include <functional>

namespace kova {

/// An event loop on virtual time: nothing happens until somebody lets time pass.
class HeadlessEventLoop final : public EventLoop {
  public:
    TimerId startTimer(std::chrono::milliseconds interval, std::function<void()> tick) override {
        return timers_.start(interval, std::move(tick));
    }
    void stopTimer(TimerId id) override { timers_.stop(id); }
    /// Runs the events posted before this call; time stands still.
    void processPendingEvents() override;

    /// An event that waits for the next processPendingEvents.
    void post(std::function<void()> event) { posted_.push_back(std::move(event)); }
    void advance(std::chrono::milliseconds time) { timers_.advance(time); }
    [[nodiscard]] TimerQueue& timers() { return timers_; }

  private:
    TimerQueue timers_;
    std::deque<std::function<void()>> posted_;
};

/// Windows that nobody draws. What happens inside a modal loop, and the answers to message boxes, come from
/// the functions given; the loop function must return only when the window is no longer visible.
class HeadlessUserInterface final : public UserInterface {
  public:
    using ModalLoop = std::function<void(Window&)>;
    using Answer = std::function<MessageAnswer(const PlatformMessage&)>;

    explicit HeadlessUserInterface(ModalLoop modalLoop, Answer answer = {})
        : modalLoop_(std::move(modalLoop)), answer_(std::move(answer)) {}
    std::unique_ptr<WindowView> present(Window&) override { return std::make_unique<WindowView>(); }
    void runModal(Window& window) override { modalLoop_(window); }
    /// Without an answer function the default button: OK, or Yes.
    MessageAnswer messageBox(const PlatformMessage& message) override;
    void setLanguage(std::int32_t) override {} // it says nothing

  private:
    ModalLoop modalLoop_;
    Answer answer_;
};

} // namespace kova
