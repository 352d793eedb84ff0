#pragma once
#include "screen/geometry.h"

#include <QBackingStore>
#include <QString>
#include <QWidget>
#include <QWindow>

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace kova {

class WindowFrame;

/// A thread beside the user interface's, made for the first work and kept for what comes soon after it: to
/// make one takes longer than many a query. It is told to end and never waited for, since it could not end
/// where Windows waits for the end of another.
class WorkThread {
  public:
    WorkThread() = default;
    WorkThread(const WorkThread&) = delete;
    WorkThread& operator=(const WorkThread&) = delete;
    ~WorkThread();

  private:
    friend class WatchedWork;
    struct Shared {
        std::mutex mutex;
        std::condition_variable changed;
        const std::function<void()>* work = nullptr; ///< until it has ended
        std::exception_ptr failure;                  ///< of the last
        bool served = false;                         ///< there is a thread
        bool over = false;
    };
    static void serve(Shared& shared);
    std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
};

/// Work on such a thread, one at a time.
class WatchedWork {
  public:
    /// It begins at once. Throws std::system_error when there can be no thread.
    WatchedWork(WorkThread& thread, const std::function<void()>& work);
    WatchedWork(const WatchedWork&) = delete;
    WatchedWork& operator=(const WatchedWork&) = delete;
    /// Waits for the end of the work.
    ~WatchedWork();
    /// Waits for the end, but no longer than that.
    bool endsWithin(std::chrono::milliseconds patience);
    /// Throws what the ended work threw.
    void rethrow() const;

  private:
    [[nodiscard]] bool ended() const { return shared_.work == nullptr; }
    WorkThread::Shared& shared_;
};

/// What the user waits for, and a mark that moves. May be painted on any thread.
struct WaitingPicture {
    /// In the middle of `room`.
    static QRect place(const QRect& room, const Scale& scale);
    void paint(QPainter& painter, const QRectF& area, const Scale& scale) const;

    QString text;
    int steps = 0; ///< of the mark
};

/// Says what the user waits for. It needs no event to be handled: it is painted at once, and what was below
/// it too when it goes.
class WaitingSign {
  public:
    static constexpr std::chrono::milliseconds Noticeable{300}; ///< what takes longer has a sign
    static constexpr std::chrono::milliseconds Step{80};        ///< from picture to picture
    virtual ~WaitingSign() = default;
    /// The next picture.
    void step(const QString& text) {
        picture_.text = text;
        ++picture_.steps;
        paintNow();
    }

  protected:
    explicit WaitingSign(const QString& text) : picture_{text} {}
    [[nodiscard]] const WaitingPicture& picture() const { return picture_; }

  private:
    virtual void paintNow() = 0;
    WaitingPicture picture_;
};

/// Over a window that is on the screen.
class SignInWindow final : public QWidget, public WaitingSign {
  public:
    SignInWindow(WindowFrame& frame, const QString& text);
    ~SignInWindow() override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void paintNow() override { repaint(); }
    WindowFrame& frame_;
};

/// For work that must stay on this thread, where nothing can be painted until it is done: a sign on a thread
/// of its own, once the work takes long. None where there can be no thread, and on systems whose databases
/// are read on any thread. Throws nothing.
class SignBeside {
  public:
    /// In the middle of `over`, a window of this thread's; of the screen where it is 0 or shows nothing.
    /// `scale` in the screen's own pixels; nothing for as much as the screen has. `text` says what for how
    /// long, and is called on the other thread.
    SignBeside(WId over, const std::optional<Scale>& scale,
               const std::function<QString(std::chrono::seconds)>& text) noexcept;
    SignBeside(const SignBeside&) = delete;
    SignBeside& operator=(const SignBeside&) = delete;
    ~SignBeside();

  private:
    class Thread;
    std::unique_ptr<Thread> thread_;
};

/// On its own while no window is on the screen, in front of all and without the keyboard.
class SignOnScreen final : public WaitingSign {
  public:
    SignOnScreen(const QRect& room, const Scale& scale, const QString& text);

  private:
    void paintNow() override;
    Scale scale_;
    QWindow window_;
    QBackingStore pixels_{&window_};
};

} // namespace kova
