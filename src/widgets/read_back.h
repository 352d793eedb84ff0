#pragma once
#include "base/signal.h"

#include <string>
#include <utility>
#include <vector>

namespace kova {

/// An entry read back to whoever types it. It is no control: no gesture reaches it and it has no place in the
/// order of tabbing. Texts are UTF-8 in the user's language.
class ReadBack {
  public:
    enum class Direction { In, Out };
    struct Way {
        Direction direction;
        std::string text; ///< sign and word
        friend bool operator==(const Way&, const Way&) = default;
    };
    struct Content {
        bool wanted = false; ///< whether room is kept for it, also while it is empty
        std::string amount;  ///< or the words that say that it is none; empty when nothing is entered
        bool isNumber = true;
        std::vector<Way> ways; ///< of the money, in their order; none while not known
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

} // namespace kova
