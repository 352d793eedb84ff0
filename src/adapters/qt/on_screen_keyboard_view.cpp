#include "adapters/qt/on_screen_keyboard_view.h"

#include "adapters/qt/window_frame.h"
#include "base/utf8.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace kova {
namespace {

const Font Letter{"Tahoma", 14, true};
constexpr double HalfKeyGap = 4; // between faces, in design pixels: 1.5 mm on a 10 inch panel, rounded down
constexpr char32_t CapsLock = 0;
constexpr char32_t BackspaceCharacter = 8;
constexpr char32_t LineBreak = 10;
constexpr char32_t Space = 32;

double widthOf(char32_t character) {
    switch (character) {
    case BackspaceCharacter:
    case LineBreak:
        return 2;
    case CapsLock:
        return 3;
    case Space:
        return 12;
    default:
        return 1;
    }
}

QString objectNameOf(char32_t character) {
    switch (character) {
    case BackspaceCharacter:
        return "Backspace";
    case LineBreak:
        return "Enter";
    case CapsLock:
        return "CapsLock";
    case Space:
        return "Space";
    default:
        return QString::fromUcs4(&character, 1);
    }
}

QString spokenName(char32_t character, const WindowFrame& frame) {
    switch (character) {
    case BackspaceCharacter:
        return frame.words(Word::Backspace);
    case LineBreak:
        return frame.words(Word::Enter);
    case CapsLock:
        return frame.words(Word::CapsLock);
    case Space:
        return frame.words(Word::Space);
    default:
        return QString::fromUcs4(&character, 1);
    }
}

QString drawnText(char32_t character) {
    switch (character) {
    case BackspaceCharacter:
        return QStringLiteral("\u232B");
    case LineBreak:
        return QStringLiteral("\u21B5");
    case CapsLock:
        return QStringLiteral("\u21EA");
    case Space:
        return {};
    default:
        return QString::fromUcs4(&character, 1);
    }
}

} // namespace

OnScreenKeyboardView::OnScreenKeyboardView(OnScreenKeyboard& keyboard, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(keyboard, frame) {
    nameWidget(*this, frame.words(Word::Keyboard));
    std::vector<Key> last;
    addKey(last, CapsLock);
    for (const std::u32string& characters : OnScreenKeyboard::rows()) {
        auto& row = rows_.emplace_back();
        for (const char32_t character : characters)
            addKey(character == Space ? last : row, character);
    }
    rows_.push_back(std::move(last));
}

void OnScreenKeyboardView::addKey(std::vector<Key>& row, char32_t character) {
    auto* button =
        new KeyButton(*this, objectNameOf(character).toStdString(), spokenName(character, frame()));
    button->setCheckable(character == CapsLock);
    connect(button, &QAbstractButton::clicked, this, [this, character] {
        act([=](OnScreenKeyboard& target) {
            if (character == CapsLock)
                target.toggleCapsLock();
            else
                target.touchKey(character);
        });
    });
    row.push_back({character, widthOf(character), button});
}

QAccessibleInterface* OnScreenKeyboardView::makeAccessible() {
    return new QAccessibleWidget(this, QAccessible::Grouping);
}

void OnScreenKeyboardView::layOut() {
    ControlView::layOut();
    placeKeys();
    showKeys();
}

void OnScreenKeyboardView::placeKeys() {
    const QRectF area = rect();
    const double height = area.height() / static_cast<double>(rows_.size());
    double top = area.top();
    for (const auto& row : rows_) {
        double whole = 0;
        for (const Key& key : row)
            whole += key.width;
        double left = area.left();
        for (const Key& key : row) {
            const double width = area.width() * key.width / whole;
            key.button->setGeometry(QRectF(left, top, width, height).toRect());
            left += width;
        }
        top += height;
    }
}

void OnScreenKeyboardView::showKeys() {
    const QColor back = look::toQt(model()->backColor());
    const bool dark = look::isDark(back);
    FaceButton::Looks looks;
    looks.face.unit = scale().smaller();
    looks.text = dark ? QColor(Qt::white) : QColor(20, 30, 42);
    looks.font = look::font(Letter, scale());
    looks.wrapped = false;
    looks.inset = HalfKeyGap * scale().smaller();
    for (const auto& row : rows_) {
        for (const Key& key : row) {
            const bool plain = key.character > Space;
            looks.face.color = dark ? look::mixed(back, Qt::black, plain ? 0.28 : 0.5)
                                    : (plain ? QColor(252, 252, 253) : QColor(222, 228, 235));
            looks.face.marked = key.character == CapsLock && model()->capsLock();
            key.button->setChecked(looks.face.marked);
            key.button->setLooks(looks);
            const char32_t shown = plain ? model()->shown(key.character) : key.character;
            key.button->setText(drawnText(shown));
            key.button->setAccessibleName(spokenName(shown, frame()));
            key.button->setShortcut({}); // "&" is a key here, not the mark of one
        }
    }
}

void OnScreenKeyboardView::showWords() {
    setAccessibleName(frame().words(Word::Keyboard));
    showKeys();
}

void OnScreenKeyboardView::showProperty(Property property) {
    if (property == Property::BackColor || property == Property::CapsLock)
        showKeys();
    ControlView::showProperty(property);
}

void OnScreenKeyboardView::paintEvent(QPaintEvent*) {
    if (model() == nullptr)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look::toQt(model()->backColor()));
    painter.drawRoundedRect(rect(), pixels(6), pixels(6));
}

std::optional<TouchPoint> OnScreenKeyboardView::touchPoint(const std::optional<std::string>& part) {
    if (!part)
        return ControlView::touchPoint(part);
    const std::u32string wanted = fromUtf8(std::string_view(*part));
    for (const auto& row : rows_)
        for (const Key& key : row)
            if (key.character != CapsLock && wanted.size() == 1 && key.character == lowerCase(wanted.front()))
                return key.button->touchPoint();
    return std::nullopt;
}

} // namespace kova
