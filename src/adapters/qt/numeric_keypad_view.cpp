#include "adapters/qt/numeric_keypad_view.h"

#include "adapters/qt/read_back_view.h"
#include "adapters/qt/window_frame.h"

#include <QAccessibleWidget>

#include <cmath>

namespace kova {
namespace {

const Font Digit{"Tahoma", 20, true};
constexpr double HalfGap = 3.5;       // between faces, in design pixels: 1.5 mm on a 10 inch panel
constexpr double ReadBackHeight = 36; // design pixels; the keys keep more than 11 mm
const std::string Backspace = "BACKSPACE";

const std::string DecimalKeyText = ".";

} // namespace

NumericKeypadView::NumericKeypadView(NumericKeypad& keypad, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(keypad, frame) {
    nameWidget(*this, {});
    for (const auto& texts : NumericKeypad::keys()) {
        auto& row = rows_.emplace_back();
        for (const std::string& text : texts) {
            const QString caption = QString::fromStdString(text);
            auto* key = new KeyButton(*this, text, caption);
            key->setText(text == Backspace ? QStringLiteral("\u232B") : caption);
            connect(key, &QAbstractButton::clicked, this,
                    [this, text] { act([&](NumericKeypad& target) { target.touchKey(text); }); });
            row.push_back(key);
        }
    }
    nameKeys();
    if (ReadBack* const readBack = keypad.readBack()) {
        readBack_ = new ReadBackView(*this, [this] { return backdrop(); });
        readBackChanged_ = readBack->changed.connect([this] { showReadBack(); });
    }
}

// Not all keys of this pad do what their texts say.
void NumericKeypadView::nameKeys() {
    setAccessibleName(frame().words(Word::Keypad));
    const QString mark = QString::fromStdString(model()->decimalMark());
    for (const auto& row : rows_)
        for (KeyButton* key : row) {
            if (key->key() == Backspace) {
                key->setAccessibleName(frame().words(Word::Clear));
            } else if (key->key() == DecimalKeyText) {
                key->setText(mark);
                key->setAccessibleName(mark == ","   ? frame().words(Word::Comma)
                                       : mark == "." ? frame().words(Word::Point)
                                                     : mark);
            }
        }
}

void NumericKeypadView::showProperty(Property property) {
    if (property == Property::Caption)
        nameKeys();
    ControlView::showProperty(property);
}

void NumericKeypadView::detach() {
    readBackChanged_.disconnect();
    ModelView::detach();
}

QAccessibleInterface* NumericKeypadView::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Grouping);
}

void NumericKeypadView::layOut() {
    ControlView::layOut();
    FaceButton::Looks looks;
    looks.face.unit = scale().smaller();
    looks.face.color = QColor(250, 250, 251);
    looks.text = QColor(20, 30, 42);
    looks.font = look::font(Digit, scale());
    looks.inset = HalfGap * scale().smaller();
    keysTop_ = readBackHeight();
    const QRectF board = QRectF(rect()).adjusted(0, keysTop_, 0, 0);
    const double height = board.height() / static_cast<double>(rows_.size());
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        const double width = board.width() / static_cast<double>(rows_[row].size());
        for (std::size_t column = 0; column < rows_[row].size(); ++column) {
            const QRectF place(static_cast<double>(column) * width,
                               board.top() + static_cast<double>(row) * height, width, height);
            rows_[row][column]->setGeometry(place.toRect());
            FaceButton::Looks own = looks;
            if (rows_[row][column]->key() == Backspace)
                own.face.color = QColor(226, 231, 237);
            rows_[row][column]->setLooks(own);
        }
    }
    if (readBack_ != nullptr)
        showReadBack();
}

double NumericKeypadView::readBackHeight() const {
    return readBack_ != nullptr && model()->readBack()->content().wanted ? ReadBackHeight * scale().y : 0;
}

void NumericKeypadView::showReadBack() {
    if (readBackHeight() != keysTop_)
        layOut();
    else
        readBack_->show(model()->readBack()->content(), QRectF(0, 0, width(), keysTop_).toRect(), scale());
}

std::optional<TouchPoint> NumericKeypadView::touchPoint(const std::optional<std::string>& part) {
    if (!part)
        return ControlView::touchPoint(part);
    for (const auto& row : rows_)
        for (KeyButton* key : row)
            if (key->key() == *part)
                return key->touchPoint();
    return std::nullopt;
}

} // namespace kova
