#pragma once
#include <QString>
#include <QWidget>

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace kova {

class WindowFrame;

/// Work on a thread of its own, which begins at once.
class WatchedWork {
  public:
    /// Throws std::system_error when there can be no thread.
    explicit WatchedWork(const std::function<void()>& work);
    WatchedWork(const WatchedWork&) = delete;
    WatchedWork& operator=(const WatchedWork&) = delete;
    ~WatchedWork() { thread_.join(); }
    /// Waits for the end of the work, but no longer than that.
    bool endsWithin(std::chrono::milliseconds patience);
    /// Throws what the ended work threw.
    void rethrow() const;

  private:
    std::mutex mutex_;
    std::condition_variable ending_;
    bool ended_ = false;
    std::exception_ptr failure_;
    std::thread thread_; ///< the last, which uses the others
};

/// Says over a window what the user waits for. It needs no event to be handled: it is painted at once, and
/// what was below it too when it goes.
class WaitingSign final : public QWidget {
  public:
    WaitingSign(WindowFrame& frame, const QString& text);
    ~WaitingSign() override;
    /// The next picture of its moving mark.
    void step(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    WindowFrame& frame_;
    QString text_;
    int steps_ = 0;
};

} // namespace kova
