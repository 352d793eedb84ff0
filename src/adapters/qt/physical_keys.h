#pragma once
#include <QtGlobal>

class QKeyEvent;

namespace kova {

class WindowFrame;

/// Keys of the physical keyboard, and of a scanner that types like one, that mean something wherever the
/// focus is: see KeyTargets. F1 shows which. Only keys that come from the window system count; what a program
/// sends to a widget goes to that widget.
class PhysicalKeys {
  public:
    /// Whether the key has been dealt with.
    bool take(WindowFrame& frame, const QKeyEvent& event);

  private:
    // A scanner ends what it types with Enter, which must not send a bar code as an amount.
    static constexpr quint64 ScannerMilliseconds = 30; ///< at most, from key to key
    static constexpr int ScannerKeys = 6;              ///< at least, before its Enter
    void watchSpeed(const QKeyEvent& event);
    quint64 last_ = 0; ///< when the last character was typed, in milliseconds
    int quickKeys_ = 0;
};

} // namespace kova
