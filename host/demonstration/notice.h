#pragma once
#include <QLabel>
#include <QTimer>

namespace kova {

/// A sign that stands above all windows, a modal dialog too, for a short time. It takes no touches: they go
/// to what lies below.
class Notice final : public QLabel {
  public:
    enum class Kind { Success, Failure };
    Notice();
    /// Replaces what is shown.
    void display(const QString& text, Kind kind, double scale);

  private:
    QTimer end_;
};

} // namespace kova
