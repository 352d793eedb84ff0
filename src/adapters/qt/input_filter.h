#pragma once
#include "screen/bounce_filter.h"
#include "screen/physical_keys.h"

#include <QObject>

#include <functional>
#include <vector>

class QKeyEvent;

namespace kova {

class WindowFrame;

/// Sees all input before the widgets do. Keeps it from windows that a modal one blocks, and drops bounced
/// touches. Of the keys it takes those that mean something wherever the focus is, gives the tabulator to the
/// models, which know the order of the controls, and all others to a window that takes them itself.
class InputFilter final : public QObject {
  public:
    /// Of these windows, which may come and go.
    explicit InputFilter(const std::vector<WindowFrame*>& frames);
    bool eventFilter(QObject* watched, QEvent* event) override;
    std::function<void()> touched; ///< a finger has come down on what can be touched; may be empty

  private:
    bool swallowsBounce(const QObject& target, const QEvent& event);
    /// What a program sends to a widget goes to that widget: only keys from the window system count. Where
    /// assistive technology listens, those are copies that Qt sends, but to a window.
    bool takeKey(WindowFrame& frame, const QKeyEvent& event);
    bool carryOut(const KeyMeaning& meaning, WindowFrame& frame, const QKeyEvent& event);

    const std::vector<WindowFrame*>& frames_;
    BounceFilter bounces_;
    PhysicalKeys keys_;
    const QEvent* keyOfWindow_ = nullptr; ///< the last; only compared
};

} // namespace kova
