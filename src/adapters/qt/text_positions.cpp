#include "adapters/qt/text_positions.h"

#include <algorithm>

namespace kova {

QString TextPositions::editorText() const {
    QString text = QString::fromUtf8(text_.data(), static_cast<qsizetype>(text_.size()));
    if (breaks_ == Breaks::Joined)
        text.replace("\r\n", "\n").replace('\r', '\n');
    return text;
}

TextPositions::Step TextPositions::stepAt(std::size_t byte) const {
    if (breaks_ == Breaks::Joined && text_.substr(byte, 2) == "\r\n")
        return {2, 1};
    const auto lead = static_cast<unsigned char>(text_[byte]);
    std::size_t length = 1;
    if (lead >= 0xC0)
        length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    return {std::min(length, text_.size() - byte), length == 4 ? 2 : 1};
}

int TextPositions::toEditor(std::size_t byte) const {
    int unit = 0;
    for (std::size_t at = 0; at < std::min(byte, text_.size());) {
        const Step step = stepAt(at);
        at += step.bytes;
        if (at <= byte)
            unit += step.units;
    }
    return unit;
}

std::size_t TextPositions::toModel(int unit) const {
    std::size_t at = 0;
    while (at < text_.size()) {
        const Step step = stepAt(at);
        if (unit < step.units)
            break;
        unit -= step.units;
        at += step.bytes;
    }
    return at;
}

} // namespace kova
