#pragma once
#include "adapters/qt/accessible_views.h"
#include "adapters/qt/buttons.h"

#include <QFrame>
#include <QPointer>

#include <functional>
#include <vector>

class QKeyEvent;

namespace kova {

/// What stands in front of a window's other widgets for a moment, as large as fingers need and known to
/// assistive technology. While it is open it takes the window's keys and touches; one outside only closes it.
class Panel : public QFrame, public AccessibleView {
  public:
    struct Looks {
        Scale scale;
        QColor background; ///< of what lies behind, so that it belongs to the same scheme
        QRect beside;      ///< what it belongs to, in the window
    };
    void close();
    QAccessibleInterface* makeAccessible() override;

  protected:
    // Design pixels.
    static constexpr double Side = 45; ///< of a button: more than 9 mm on a small panel
    static constexpr double Margin = 6, FaceInset = 2;
    static constexpr double ButtonPoints = 11;

    explicit Panel(QWidget& window); ///< which owns it
    void setLooks(const Looks& looks);
    [[nodiscard]] const Looks& looks() const { return looks_; }
    [[nodiscard]] FaceButton::Looks buttonLooks(double points) const;
    FaceButton* addButton(const QString& name, std::function<void()> clicked);
    void moveInside(const QPoint& wanted); ///< as near as the window has room
    void appear(QWidget* focus);           ///< which may be null
    /// The stops of the tabulator, in its order.
    [[nodiscard]] virtual std::vector<QWidget*> stops() const = 0;
    /// Returns whether the key is taken.
    virtual bool takeKey(const QKeyEvent& event);
    void moveFocus(bool forward);
    bool eventFilter(QObject* watched, QEvent* event) override; ///< of the application, while it is open
    void paintEvent(QPaintEvent* event) override;

  private:
    Looks looks_;
    QPointer<QWidget> focusBefore_;
};

/// Things to do, one below the other, of which one is chosen.
class ChoicePanel final : public Panel {
  public:
    struct Choice {
        QString words;
        bool enabled;
        std::function<void()> chosen; ///< after it has closed
    };
    explicit ChoicePanel(QWidget& window) : Panel(window) {}
    /// Below what it belongs to, with the right edges in line.
    void open(const QString& name, const std::vector<Choice>& choices, const Looks& looks);

  protected:
    [[nodiscard]] std::vector<QWidget*> stops() const override;
    bool takeKey(const QKeyEvent& event) override;

  private:
    void place();
    std::vector<FaceButton*> buttons_; ///< owned
};

} // namespace kova
