#pragma once
#include "base/signal.h"
#include "services/texts.h"

#include <QString>

namespace kova {

/// The words of the drawing itself, in the component's language.
class Wording {
  public:
    QString operator()(Word word) const {
        const std::string_view text = inWords(word, languageId_);
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    void setLanguage(std::int32_t id) {
        if (std::exchange(languageId_, id) != id)
            changed();
    }
    Signal<> changed;

  private:
    std::int32_t languageId_ = 0;
};

} // namespace kova
