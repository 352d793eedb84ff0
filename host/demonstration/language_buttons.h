#pragma once
#include <QWidget>

#include <cstdint>
#include <functional>

class QButtonGroup;

namespace kova {

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

} // namespace kova
