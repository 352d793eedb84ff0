#pragma once
#include "adapters/qt/display.h"
#include "ports/event_loop.h"
#include "ports/timers.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <exception>
#include <memory>
#include <vector>

class QApplication;
class QEventLoop;

namespace kova {

/// The event loop, run by Qt's. Makes a QApplication when the process has none, so that a host needs no Qt
/// code; it must then outlive whatever else uses Qt. Throws Error when that is not possible: there is no
/// display, or the application that is there has no widgets or belongs to another thread.
///
/// Exceptions cannot pass through Qt. Views therefore run every operation of a model through `runHandler`,
/// and whoever waits for Qt (a modal loop, a gesture, a pause) is a `Caller` and throws on what was kept.
class QtEventLoop : public EventLoop {
  public:
    QtEventLoop();
    QtEventLoop(const QtEventLoop&) = delete;
    QtEventLoop& operator=(const QtEventLoop&) = delete;
    ~QtEventLoop() override;

    TimerId startTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
    void stopTimer(TimerId id) override;
    void processPendingEvents() override;

    /// Handles what Qt has waiting (painting, focus, deletion).
    void settle();

    /// Ends the QApplication, if it is this object's. No window may be left, and none can be shown
    /// afterwards.
    void endApplication();

    /// Runs a handler that Qt called, and keeps what it throws for the innermost caller.
    void runHandler(const std::function<void()>& handler) noexcept;
    /// Deletes the object as soon as no handler is running any more, so that one which is on the stack may
    /// be given.
    void deleteAfterHandlers(QObject* object);

    /// Whether a handler is running.
    [[nodiscard]] bool handling() const { return runningHandlers_ > 0; }
    /// Calls `action` at once, or from Qt's loop after the outermost handler has returned; a later action
    /// replaces one that waits. It may destroy this object.
    void afterHandlers(std::function<void()> action);

    /// Somebody who waits for handlers that Qt calls. A failure ends `loop`, if given.
    class Caller {
      public:
        explicit Caller(QtEventLoop& owner, QEventLoop* loop = nullptr);
        Caller(const Caller&) = delete;
        Caller& operator=(const Caller&) = delete;
        ~Caller();
        /// Throws the failure of a handler that ran since, if there was one.
        void rethrow();

      private:
        QtEventLoop& owner_;
        HostLoop hostLoop_;
    };

  protected:
    using Milliseconds = std::chrono::milliseconds;
    /// Counts a handler as running; when the outermost ends, deletes what was to be deleted after them.
    class Handler {
      public:
        explicit Handler(QtEventLoop& loop) : loop_(loop) { ++loop_.runningHandlers_; }
        Handler(const Handler&) = delete;
        Handler& operator=(const Handler&) = delete;
        ~Handler();

      private:
        QtEventLoop& loop_;
    };

  private:
    void runDeferred();
    void keepFailure(std::exception_ptr failure);
    [[nodiscard]] Milliseconds wall() const;
    void alignWithWall();
    void arm();
    void onAlarm();

    std::unique_ptr<QApplication> application_; ///< null when the host has its own
    TimerQueue timers_;
    QElapsedTimer clock_;
    Milliseconds slip_{0}; ///< how far the queue's time line lies behind the clock
    std::unique_ptr<QTimer> alarm_;
    int runningHandlers_ = 0;
    std::vector<QPointer<QObject>> toDelete_;
    std::function<void()> deferred_; ///< what waits for the handlers
    std::vector<QEventLoop*> callers_;
    std::exception_ptr failure_;
};

} // namespace kova
