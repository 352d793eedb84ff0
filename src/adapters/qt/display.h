#pragma once
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

class QApplication;
class QWidget;

namespace kova {

/// The Qt application of a process whose host knows nothing of Qt. Throws Error when Qt would end the process
/// instead of making one, or make one that does not work: the display that it would use cannot be opened (it
/// is tried; what Qt draws on without a display, and what cannot be tried, is no error), or this thread
/// cannot have windows of Qt's. Qt keeps references to both arguments. Changes nothing of the process that
/// the host may have settled, and from then on the library's code stays loaded.
std::unique_ptr<QApplication> openApplication(int& count, char** arguments);

/// Lives while Qt handles this thread's messages in the host's stead. The request to end the host's own
/// message loop, which Qt would swallow, is handed on at the end of it. Does nothing on systems without such
/// a request.
class HostLoop {
  public:
    HostLoop();
    HostLoop(const HostLoop&) = delete;
    HostLoop& operator=(const HostLoop&) = delete;
    ~HostLoop();
};

/// The host's own windows behind a modal window of Qt's, which on its own account blocks windows of Qt alone.
/// They take no input from here on until the modal window is hidden or this ends; then the keyboard is where
/// it was. Does nothing on systems where nobody may block windows that another toolkit has made.
class HostWindows {
  public:
    /// `modal` is about to be shown.
    explicit HostWindows(QWidget& modal);
    HostWindows(const HostWindows&) = delete;
    HostWindows& operator=(const HostWindows&) = delete;
    ~HostWindows();

  private:
    struct Blocked;
    std::unique_ptr<Blocked> blocked_;
};

/// Lives while touches and keys may be refused as they come in. `unwanted` is asked of each that begins, with
/// its widget and how long ago the user made it; one that it wants not is dropped. What programs send is let
/// through.
class InputGate {
  public:
    using Unwanted = std::function<bool(const QWidget& target, std::chrono::milliseconds age)>;
    explicit InputGate(Unwanted unwanted);
    InputGate(const InputGate&) = delete;
    InputGate& operator=(const InputGate&) = delete;
    ~InputGate();

  private:
    struct Watch;
    std::unique_ptr<Watch> watch_;
};

/// A thread that the host's signals do not reach. Throws std::system_error.
std::thread quietThread(const std::function<void()>& work);

/// The system must not take this thread for dead: it handles no messages for a while, on purpose.
void stayAlive();

/// Freed memory between pieces in use goes back to the system, where it would stay this process's.
void giveBackMemory();

/// A font family to draw with when none that the design knows is installed.
QString standInFamily();

} // namespace kova
