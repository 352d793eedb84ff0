#pragma once
#include "demonstration/texts.h"

#include <QFrame>

#include <array>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace kova {

/// What the demonstration is, in three sentences, until the dialog was opened or the panel was touched for
/// the first time. The user's settings remember that.
class Introduction final : public QFrame {
  public:
    Introduction();
    void setLanguage(std::int32_t id);
    void setScale(double scale);
    /// It is not shown again, at later starts neither.
    void dismiss();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    std::array<QLabel*, 3> sentences_; ///< owned by this widget, like those below
    QPushButton* understood_;
    QHBoxLayout* layout_;
};

} // namespace kova
