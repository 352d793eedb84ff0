#pragma once
#include "widgets/notices.h"

#include <QTimer>
#include <QVariantAnimation>
#include <QWidget>

namespace kova {

class WindowFrame;

/// Draws a notice over its page and lets it fade, once it is no longer pending; touches go through it. Its
/// time is that of the wall.
class PageNoticeView final : public QWidget {
  public:
    static constexpr int StayMilliseconds = 2500;
    static constexpr int FadeMilliseconds = 400;

    PageNoticeView(PageNotice& notice, WindowFrame& frame, QWidget& page);
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
