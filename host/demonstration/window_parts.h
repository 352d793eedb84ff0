#pragma once
#include "demonstration/texts.h"

#include <QFrame>
#include <QLabel>
#include <QTimer>
#include <QWidget>

#include <array>
#include <cstdint>
#include <functional>

class QButtonGroup;
class QHBoxLayout;
class QLabel;
class QPushButton;

namespace kova {

/// Explains the demonstration in three sentences, until the dialog is opened or these are touched for the
/// first time. The user's settings remember that.
class Introduction final : public QFrame {
  public:
    Introduction();
    void setLanguage(std::int32_t id);
    void setScale(double scale);
    /// Hides it, also at later starts.
    void dismiss();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    std::array<QLabel*, 3> sentences_; ///< owned by this widget, like those below
    QPushButton* understood_;
    QHBoxLayout* layout_;
};

/// One button for each language of the component; one of them is chosen. As a strip it is a window of its own
/// that modal dialogs neither cover nor block.
class LanguageButtons final : public QWidget {
  public:
    enum class Place { InWindow, Strip };
    explicit LanguageButtons(Place place);
    /// Shows it as the chosen one, without announcing it.
    void select(std::int32_t languageId);
    void setScale(double scale);
    /// From now on the strip is shown above whatever modal window is in use, in the upper right corner of the
    /// first one, until `leave`.
    void accompanyModalWindows(double scale);
    void leave();

    /// Called when a button is touched: Windows language identifier, and the language's own name.
    std::function<void(std::int32_t, const QString&)> chosen;

  private:
    void showAbove(QWindow& modal, int gap);
    QMetaObject::Connection following_;
    bool placed_ = false;
    QButtonGroup* buttons_; ///< owned by this widget
};

/// A message above all windows, a modal dialog too, for a short time. Touches go through it to what lies
/// below.
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
