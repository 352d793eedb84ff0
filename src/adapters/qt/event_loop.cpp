#include "adapters/qt/event_loop.h"

#include "adapters/qt/application.h"

#include <QApplication>

#include <algorithm>
#include <utility>

namespace kova {

using namespace std::chrono_literals;

QtEventLoop::Handler::Handler(QtEventLoop& loop) : loop_(loop) {
    ++loop_.runningHandlers_;
    loop_.workBegins();
}

QtEventLoop::Handler::~Handler() {
    loop_.workEnds();
    if (--loop_.runningHandlers_ > 0)
        return;
    for (const auto& object : std::exchange(loop_.toDelete_, {}))
        if (object)
            object->deleteLater();
    if (loop_.deferred_)
        QMetaObject::invokeMethod(
            qApp,
            [&loop = loop_, alive = QPointer<QTimer>(loop_.alarm_.get())] {
                if (alive)
                    loop.runDeferred();
            },
            Qt::QueuedConnection);
}

QtEventLoop::Answering::Answering(QtEventLoop& loop)
    : loop_(loop), running_(loop.unanswered_.suspend(loop.elapsed())) {}

QtEventLoop::Answering::~Answering() {
    loop_.unanswered_.resume(running_, loop_.elapsed());
}

bool QtEventLoop::unansweredBefore(Milliseconds age) const {
    return unanswered_.contain(elapsed() - age, elapsed());
}

QtEventLoop::QtEventLoop() : application_(makeApplication()), alarm_(std::make_unique<QTimer>()) {
    clock_.start();
    alarm_->setSingleShot(true);
    alarm_->setTimerType(Qt::PreciseTimer);
    QObject::connect(alarm_.get(), &QTimer::timeout, alarm_.get(), [this] { onAlarm(); });
}

QtEventLoop::~QtEventLoop() {
    for (const auto& object : toDelete_)
        if (object)
            object->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TimerId QtEventLoop::startTimer(Milliseconds interval, std::function<void()> tick) {
    alignWithWall();
    const TimerId id = timers_.start(interval, [this, tick = std::move(tick)] {
        const Handler handler(*this);
        arm(); // other timers go on while this tick waits in a loop of its own
        tick();
    });
    arm();
    return id;
}

void QtEventLoop::stopTimer(TimerId id) {
    timers_.stop(id);
    arm();
}

void QtEventLoop::processPendingEvents() {
    Caller caller(*this);
    const Answering answering(*this);
    QCoreApplication::processEvents();
    caller.rethrow();
}

void QtEventLoop::takeTurn() {
    if (loops_ > 0) // whose handlers wait on this stack
        processPendingEvents();
    else
        turns_.run([this] { processPendingEvents(); });
    deleteLeft();
}

void QtEventLoop::finishTurns() {
    if (turns_.waiting() && !turns_.inside())
        turns_.run([] {});
}

int QtEventLoop::eventDescriptor() {
    if (!descriptor_)
        descriptor_ = std::make_unique<EventDescriptor>();
    descriptor_->refresh();
    return descriptor_->number();
}

void QtEventLoop::hostLeaves() {
    if (descriptor_)
        descriptor_->refresh();
}

void QtEventLoop::Wait::run() {
    const Answering answering(owner_);
    if (owner_.turns_.inside()) {
        owner_.turns_.waitUntil([this] { return ended_; });
        return;
    }
    ++owner_.loops_;
    if (!ended_)
        loop_.exec();
    --owner_.loops_;
}

void QtEventLoop::Wait::end() {
    ended_ = true;
    loop_.quit();
}

void QtEventLoop::endApplication() {
    alarm_.reset();
    application_.reset();
}

void QtEventLoop::settle() {
    QCoreApplication::processEvents();
    deleteLeft();
}

// With no Qt loop running nobody else carries out deleteLater.
void QtEventLoop::deleteLeft() const {
    if (runningHandlers_ == 0)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtEventLoop::runHandler(const std::function<void()>& handler) noexcept {
    const Handler running(*this);
    try {
        handler();
    } catch (...) {
        keepFailure(std::current_exception());
    }
}

void QtEventLoop::deleteAfterHandlers(QObject* object) {
    if (runningHandlers_ == 0)
        object->deleteLater();
    else
        toDelete_.emplace_back(object);
}

void QtEventLoop::afterHandlers(std::function<void()> action) {
    deferred_ = std::move(action);
    runDeferred();
}

void QtEventLoop::runDeferred() {
    if (runningHandlers_ > 0)
        return;
    if (const auto action = std::exchange(deferred_, nullptr))
        action();
}

void QtEventLoop::keepFailure(std::exception_ptr failure) {
    if (callers_.empty()) {
        try {
            std::rethrow_exception(std::move(failure));
        } catch (const std::exception& error) {
            qWarning("Unhandled failure: %s", error.what());
        } catch (...) {
            qWarning("Unhandled failure");
        }
        return;
    }
    if (!failure_)
        failure_ = std::move(failure);
    if (callers_.back()->onFailure_)
        callers_.back()->onFailure_();
}

QtEventLoop::Caller::Caller(QtEventLoop& owner, std::function<void()> onFailure)
    : owner_(owner), onFailure_(std::move(onFailure)) {
    owner_.callers_.push_back(this);
}

// Callers in turns need not go in the order in which they came.
QtEventLoop::Caller::~Caller() {
    std::erase(owner_.callers_, this);
}

void QtEventLoop::Caller::rethrow() {
    if (auto failure = std::exchange(owner_.failure_, nullptr))
        std::rethrow_exception(std::move(failure));
}

// The queue's time line stands still while a handler keeps Qt from its timers: ticks come late
// then, but never early and never in a burst.

QtEventLoop::Milliseconds QtEventLoop::wall() const {
    return elapsed() - slip_;
}

void QtEventLoop::alignWithWall() {
    auto step = wall() - timers_.now();
    if (const auto next = timers_.untilNext())
        step = std::min(step, *next - 1ms); // a timer may be due already; it ticks from Qt's loop, not here
    if (step > 0ms)
        timers_.advance(step);
    slip_ += wall() - timers_.now();
}

void QtEventLoop::arm() {
    if (!alarm_)
        return;
    const auto next = timers_.untilNext();
    if (next)
        alarm_->start(std::max(*next - (wall() - timers_.now()), 0ms));
    else
        alarm_->stop();
}

void QtEventLoop::onAlarm() {
    const auto next = timers_.untilNext();
    const auto late = wall() - timers_.now();
    if (next && late >= *next) {
        slip_ += late - *next;
        runHandler([this, step = *next] { timers_.advance(step); });
    }
    arm();
}

} // namespace kova
