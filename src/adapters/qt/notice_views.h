#pragma once
#include "adapters/qt/accessible_views.h"
#include "adapters/qt/look.h"
#include "widgets/notices.h"

#include <QTimer>
#include <QVariantAnimation>
#include <QWidget>

#include <functional>

namespace kova {

class WindowFrame;

/// Draws an entry as it would be sent: the ways of the money on the left, the amount large on the right;
/// below them the rest of it, and what contradicts itself.
class ReadBackView final : public QWidget, public AccessibleView {
  public:
    /// `backdrop` tells what colour lies behind it, which may change.
    ReadBackView(QWidget& parent, std::function<QColor()> backdrop);
    QAccessibleInterface* makeAccessible() override;
    void show(const ReadBack::Content& content, const QRect& place, const Scale& scale);
    /// What it wants, in design pixels.
    [[nodiscard]] static double height(const ReadBack::Content& content);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Rows {
        QRectF amount, lines, hint; ///< empty where no room is kept
    };
    [[nodiscard]] Rows rows() const;
    /// Returns what is left for the amount.
    QRectF paintWays(QPainter& painter, QRectF area) const;
    void paintAmount(QPainter& painter, const QRectF& area) const;
    void paintLines(QPainter& painter, const QRectF& area) const;
    void paintWarning(QPainter& painter, const QRectF& area) const;
    ReadBack::Content content_;
    Scale scale_;
    std::function<QColor()> backdrop_;
};

/// Draws a notice over its page and lets it fade, once it is no longer pending; touches go through it. It
/// fades in real time, also where the event loop's is stepped.
class PageNoticeView final : public QWidget, public AccessibleView {
  public:
    static constexpr int StayMilliseconds = 2500;
    static constexpr int FadeMilliseconds = 400;

    PageNoticeView(PageNotice& notice, WindowFrame& frame, QWidget& page);
    QAccessibleInterface* makeAccessible() override;
    void layOut();
    /// Forgets the model and goes at once.
    void detach();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void appear();
    void follow();
    PageNotice* notice_;
    WindowFrame& frame_;
    Connection shown_, changed_;
    QTimer stay_;
    QVariantAnimation fade_; ///< of its opacity, from 1 to 0
};

} // namespace kova
