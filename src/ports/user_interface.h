#pragma once
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace kova {

class Window;

/// The drawing of one window; destroying it takes the window off the screen.
class WindowView {
  public:
    virtual ~WindowView() = default;
};

/// A standard message box of the platform.
struct PlatformMessage {
    enum class Route { MessageBox, Service }; ///< called directly, or through the message-box service
    static constexpr std::int32_t OkOnly = 0;
    static constexpr std::int32_t YesNo = 4;
    static constexpr std::int32_t Information = 64;

    std::string text;
    std::int32_t buttons = OkOnly; ///< sum of a button set (OkOnly, YesNo) and an icon (Information)
    std::string title;
    Route route = Route::MessageBox;
};

enum class MessageAnswer : std::int32_t { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

/// What a user waits for.
struct Awaited {
    /// Says it and how long it has taken so far, UTF-8, a line or two. May be called on any thread until the
    /// work is done, by one at a time.
    std::function<std::string(std::chrono::seconds)> text;
    bool onAnyThread = false; ///< the work may be done beside the user interface's thread
};

/// What the component asks of the toolkit that shows it.
class UserInterface {
  public:
    virtual ~UserInterface() = default;
    /// Draws `window` from now on, which must outlive the view. A window that is not visible is drawn when it
    /// becomes so.
    virtual std::unique_ptr<WindowView> present(Window& window) = 0;
    /// Handles events until `window` is no longer visible. `window` must stay alive until this returns.
    virtual void runModal(Window& window) = 0;
    /// Shows a message box and returns the button that closed it.
    virtual MessageAnswer messageBox(const PlatformMessage& message) = 0;
    /// Does `work` and returns when it is done; nothing else of this thread's happens meanwhile, no event is
    /// handled. A toolkit may show what is awaited, and paint what waits to be painted: work that may be done
    /// on any thread must leave the models alone. Throws what `work` throws.
    virtual void await(const Awaited& awaited, const std::function<void()>& work) {
        (void)awaited;
        work();
    }
    /// The component's language, 1040, 1031 or 9, in which the toolkit is to say what it says by itself; on
    /// open windows too.
    virtual void setLanguage(std::int32_t id) = 0;
};

} // namespace kova
