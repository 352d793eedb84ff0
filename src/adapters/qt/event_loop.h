#pragma once
#include "adapters/qt/display.h"
#include "adapters/qt/event_descriptor.h"
#include "adapters/qt/turns.h"
#include "ports/event_loop.h"
#include "ports/timers.h"
#include "screen/unanswered_times.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QPointer>
#include <QTimer>

#include <exception>
#include <memory>
#include <vector>

class QApplication;

namespace kova {

/// The event loop, run by Qt's. Makes a QApplication when the process has none, so that a host needs no Qt
/// code; it must then outlive whatever else uses Qt. Throws Error when that is not possible: there is no
/// display, or the application that is there has no widgets or belongs to another thread.
///
/// Exceptions cannot pass through Qt. Views therefore run every operation of a model through `runHandler`,
/// and whoever waits for Qt (a modal loop, a gesture, a pause) is a `Caller` and throws on what was kept.
class QtEventLoop : public EventLoop {
  public:
    using Milliseconds = std::chrono::milliseconds;
    QtEventLoop();
    QtEventLoop(const QtEventLoop&) = delete;
    QtEventLoop& operator=(const QtEventLoop&) = delete;
    ~QtEventLoop() override;

    TimerId startTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
    void stopTimer(TimerId id) override;
    void processPendingEvents() override;

    /// Handles the events that wait, and returns even where a handler opens a window and waits for it: it
    /// goes on in a later turn. For hosts with an event loop of their own; in one of Qt's, handlers wait as
    /// ever. Throws what a handler threw.
    void takeTurn();
    /// Goes on with what waited for windows that are closed by now.
    void finishTurns();
    /// Calls a function of the host's on the stack that the host runs on.
    void onHostStack(const std::function<void()>& call) { turns_.onHostStack(call); }
    /// A descriptor that can be read when something waits for `takeTurn`; -1 where the system's own queue of
    /// messages says so. This object's, and valid as long. Throws Error when there can be none.
    int eventDescriptor();
    /// A handler, or a call of the host's, begins, perhaps inside another.
    void workBegins() {
        unanswered_.begin([this] { return elapsed(); });
    }
    void workEnds() {
        unanswered_.end([this] { return elapsed(); });
    }
    /// The outermost one is over, which may have begun timers.
    void hostLeaves();

    /// Waiting for a window to close: in a loop of Qt's or, in a turn, until a later one.
    class Wait {
      public:
        explicit Wait(QtEventLoop& owner) : owner_(owner) {}
        /// Returns after `end` was called.
        void run();
        void end();

      private:
        QtEventLoop& owner_;
        QEventLoop loop_;
        bool ended_ = false;
    };

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

    /// Whether nothing could answer the user `age` ago.
    [[nodiscard]] bool unansweredBefore(Milliseconds age) const;

    /// Whether a handler is running.
    [[nodiscard]] bool handling() const { return runningHandlers_ > 0; }
    /// Calls `action` at once, or from Qt's loop after the outermost handler has returned; a later action
    /// replaces one that waits. It may destroy this object.
    void afterHandlers(std::function<void()> action);

    /// Somebody who waits for handlers that Qt calls. `onFailure` is called when one has failed.
    class Caller {
      public:
        explicit Caller(QtEventLoop& owner, std::function<void()> onFailure = {});
        Caller(const Caller&) = delete;
        Caller& operator=(const Caller&) = delete;
        ~Caller();
        /// Throws the failure of a handler that ran since, if there was one.
        void rethrow();

      private:
        friend class QtEventLoop;
        QtEventLoop& owner_;
        std::function<void()> onFailure_;
        HostLoop hostLoop_;
    };

  protected:
    /// Counts a handler as running; when the outermost ends, deletes what was to be deleted after them.
    class Handler {
      public:
        explicit Handler(QtEventLoop& loop);
        Handler(const Handler&) = delete;
        Handler& operator=(const Handler&) = delete;
        ~Handler();

      private:
        QtEventLoop& loop_;
    };

  private:
    /// Events are handled while this lives.
    class Answering {
      public:
        explicit Answering(QtEventLoop& loop);
        Answering(const Answering&) = delete;
        Answering& operator=(const Answering&) = delete;
        ~Answering();

      private:
        QtEventLoop& loop_;
        int running_;
    };
    void deleteLeft() const;
    void runDeferred();
    void keepFailure(std::exception_ptr failure);
    [[nodiscard]] Milliseconds elapsed() const { return Milliseconds(clock_.elapsed()); }
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
    std::vector<Caller*> callers_;   ///< the innermost last
    std::exception_ptr failure_;
    UnansweredTimes unanswered_;
    Turns turns_;
    int loops_ = 0;                               ///< of Qt's in which handlers wait
    std::unique_ptr<EventDescriptor> descriptor_; ///< where the host has asked for it
};

} // namespace kova
