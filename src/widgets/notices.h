#pragma once
#include "base/signal.h"
#include "widgets/control.h"

#include <string>
#include <utility>
#include <vector>

namespace kova {

/// What would be sent, read back to whoever enters it. It is no control: no gesture reaches it and it has no
/// place in the order of tabbing. Texts are UTF-8 in the user's language.
class ReadBack {
  public:
    enum class Direction { In, Out };
    struct Way {
        Direction direction;
        std::string text; ///< sign and word
        friend bool operator==(const Way&, const Way&) = default;
    };
    /// One thing that would be sent. Without a text it is missing, which `missing` says in words.
    struct Part {
        std::string text, missing;
        friend bool operator==(const Part&, const Part&) = default;
    };
    using Line = std::vector<Part>;
    /// Room is kept for what is wanted also while it is empty.
    struct Content {
        bool wanted = false; ///< amount and ways
        std::string amount;  ///< or the words that say that it is none; empty when nothing is entered
        bool isNumber = true;
        std::vector<Way> ways; ///< of the money, in their order; none while not known
        bool wholeWanted = false;
        Part currency;           ///< of the amount, which names it where it has one
        std::vector<Line> lines; ///< the rest of what would be sent, one a movement
        bool hintWanted = false;
        std::string hint; ///< what contradicts itself; empty for nothing
        friend bool operator==(const Content&, const Content&) = default;
    };

    [[nodiscard]] const Content& content() const { return content_; }
    void show(Content content) {
        if (content == content_)
            return;
        content_ = std::move(content);
        changed();
    }
    Signal<> changed;

  private:
    Content content_;
};

/// A short text over a page that a rendering lets go by itself after a while; a failure's while begins when
/// its reader goes on. It is no control: no gesture reaches it and it has no place in the order of
/// tabbing.
class PageNotice {
  public:
    enum class Kind { Success, Failure };

    /// The page outlives it.
    explicit PageNotice(const Control& page) : page_(page) {}

    [[nodiscard]] const Control& page() const { return page_; }
    [[nodiscard]] const Rect& bounds() const { return bounds_; } ///< relative to the page
    void setBounds(const Rect& bounds) {
        bounds_ = bounds;
        changed();
    }
    /// The last text shown, UTF-8, one line per thing that happened; empty before the first,
    /// and when it was withdrawn.
    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] Kind kind() const { return kind_; }
    /// Whether it still waits for its reader to go on.
    [[nodiscard]] bool pending() const { return pending_; }
    /// Replaces what is still to be seen of the last one.
    void show(std::string text, Kind kind = Kind::Success) {
        text_ = std::move(text);
        kind_ = kind;
        pending_ = kind == Kind::Failure;
        shown();
    }
    /// Says the same in other words; nothing before the first text.
    void rephrase(std::string text) {
        if (text_.empty() || text == text_)
            return;
        text_ = std::move(text);
        changed();
    }
    /// What it says is no longer so.
    void withdraw() {
        text_.clear();
        pending_ = false;
        changed();
    }
    /// Its reader does something else.
    void goOn() {
        if (std::exchange(pending_, false))
            changed();
    }
    Signal<> shown;   ///< a new text
    Signal<> changed; ///< its place, its words, or whether it is pending

  private:
    const Control& page_;
    Rect bounds_;
    std::string text_;
    Kind kind_ = Kind::Success;
    bool pending_ = false;
};

} // namespace kova
