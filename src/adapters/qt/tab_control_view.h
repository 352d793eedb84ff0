#pragma once
#include "adapters/qt/control_view.h"
#include "widgets/tab_control.h"

#include <QTabBar>

namespace kova {

/// A real tab bar, as high as the pages leave room for; it asks for a tab when the finger goes up.
class TouchTabBar final : public QTabBar, public AccessibleView {
  public:
    struct Looks {
        Scale scale;
        QColor backdrop, page;
    };
    explicit TouchTabBar(QWidget& parent);
    QAccessibleInterface* makeAccessible() override { return makeAccessibleTabBar(*this); }
    void setLooks(const Looks& looks);
    std::function<void(int)> touched;
    std::function<void(int)> chosen; ///< by assistive technology

  protected:
    QSize tabSizeHint(int index) const override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent*) override {}
    void wheelEvent(QWheelEvent*) override {}
    void keyPressEvent(QKeyEvent* event) override;

  private:
    Looks looks_;
    int pressed_ = -1;
};

class TabControlView final : public QWidget, public ModelView<TabControl> {
  public:
    TabControlView(TabControl& tabs, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QWidget& keyboardWidget() override { return *bar_; }
    void detach() override;
    QAccessibleInterface* makeAccessible() override;

  protected:
    void layOut() override;
    void showProperty(Property property) override;
    void showSpokenName(const QString& name) override;
    [[nodiscard]] bool drawnEnabled() const override { return true; } // Qt would disable the controls inside

  private:
    void showTabs();
    void focusPage();
    TouchTabBar* bar_;
    std::vector<Connection> pages_;
};

class TabPageView final : public QWidget, public ModelView<TabPage> {
  public:
    TabPageView(TabPage& page, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    void detach() override;
    QAccessibleInterface* makeAccessible() override;

  protected:
    void showProperty(Property property) override;
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool drawnEnabled() const override { return true; }
    [[nodiscard]] bool drawnVisible() const override;

  private:
    Connection selection_;
};

} // namespace kova
