#pragma once
#include "widgets/control.h"

#include <string>
#include <utility>

namespace kova {

/// A short text over a page that a rendering lets go by itself after a while. It is no control: no gesture
/// reaches it and it has no place in the order of tabbing.
class PageNotice {
  public:
    /// The page outlives it.
    explicit PageNotice(const Control& page) : page_(page) {}

    [[nodiscard]] const Control& page() const { return page_; }
    [[nodiscard]] const Rect& bounds() const { return bounds_; } ///< relative to the page
    void setBounds(const Rect& bounds) {
        bounds_ = bounds;
        moved();
    }
    /// The last text shown, UTF-8, one line per thing that happened; empty before the first.
    [[nodiscard]] const std::string& text() const { return text_; }
    /// Replaces what is still to be seen of the last one.
    void show(std::string text) {
        text_ = std::move(text);
        shown();
    }
    Signal<> shown;
    Signal<> moved;

  private:
    const Control& page_;
    Rect bounds_;
    std::string text_;
};

} // namespace kova
