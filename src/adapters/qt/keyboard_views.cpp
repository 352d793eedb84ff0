#include "adapters/qt/keyboard_views.h"

#include "adapters/qt/notice_views.h"
#include "adapters/qt/window_frame.h"
#include "base/utf8.h"
#include "screen/physical_keys.h"
#include "widgets/text_box.h"

#include <QAccessibleWidget>
#include <QPainter>

#include <algorithm>
#include <array>

namespace kova {
namespace {

const Font Digit{.points = 20, .bold = true};

// The toolkit tells assistive technology of a name that is the same, too.
void name(KeyButton& key, const QString& spoken) {
    if (key.accessibleName() != spoken)
        key.setAccessibleName(spoken);
}

} // namespace

NumericKeypadView::NumericKeypadView(NumericKeypad& keypad, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(keypad, frame) {
    nameWidget();
    for (const auto& texts : NumericKeypad::keys()) {
        auto& row = rows_.emplace_back();
        for (const std::string& text : texts) {
            const QString caption = QString::fromStdString(text);
            auto* key = new KeyButton(*this, text, caption);
            key->setText(caption);
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

void NumericKeypadView::nameKeys() {
    updateSpokenName();
    for (const auto& row : rows_)
        for (KeyButton* key : row) {
            name(*key, QString::fromStdString(spokenKey(*model(), key->key(), frame().words())));
            if (key->key() == PadDecimalKey)
                key->setText(QString::fromStdString(model()->decimalMark()));
            if (key->key() == PadClearKey)
                key->setText(model()->takesAll() ? QStringLiteral("C") : QStringLiteral("\u232B"));
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
    looks.face.color = palette::PadKey;
    looks.text = palette::Ink;
    looks.font = look::font(Digit, scale());
    const double gap = FaceGap / 2 * scale().smaller();
    looks.inset = {gap, gap, gap, gap};
    looks.backdrop = [this] { return backdrop(); };
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
            if (rows_[row][column]->key() == PadClearKey)
                own.face.color = palette::PadClearKey;
            rows_[row][column]->setLooks(own);
        }
    }
    if (readBack_ != nullptr)
        showReadBack();
}

double NumericKeypadView::readBackHeight() const {
    return readBack_ == nullptr ? 0 : ReadBackView::height(model()->readBack()->content()) * scale().y;
}

void NumericKeypadView::showReadBack() {
    if (readBackHeight() != keysTop_)
        layOut();
    else
        readBack_->show(model()->readBack()->content(), QRectF(0, 0, width(), keysTop_).toRect(), scale());
    describeEntry();
}

// Who types without seeing is at the entry, and hears there what it will be, or that it is no number.
void NumericKeypadView::describeEntry() {
    const TextBox* const entry = model()->window().keyTargets().entry;
    ControlView* const drawn = entry == nullptr ? nullptr : frame().view(*entry);
    if (drawn != nullptr)
        drawn->describe(QString::fromStdString(model()->readBack()->content().amount));
}

namespace {

const Font Letter{.points = 14, .bold = true};
constexpr double HalfKeyGap = 4; // between faces, in design pixels: 1.5 mm on a 10 inch panel, rounded down
constexpr char32_t CapsLock = 0;

struct SpecialKey {
    char32_t character;
    double width;     ///< of a letter's
    const char* name; ///< of its widget
    const char* drawn;
};
constexpr std::array SpecialKeys{
    SpecialKey{CapsLock, 3, "CapsLock", "⇪"}, SpecialKey{key_character::Backspace, 2, "Backspace", "⌫"},
    SpecialKey{key_character::LineBreak, 2, "Enter", "↵"}, SpecialKey{key_character::Space, 12, "Space", ""}};

/// Null for a key that types what stands on it.
const SpecialKey* specialKey(char32_t character) {
    const auto found = std::ranges::find(SpecialKeys, character, &SpecialKey::character);
    return found == SpecialKeys.end() ? nullptr : &*found;
}

QString spokenName(char32_t character, const WindowFrame& frame) {
    return QString::fromStdString(
        spokenKey(character == CapsLock ? std::nullopt : std::optional(character), frame.words()));
}

QString drawnText(char32_t character) {
    const SpecialKey* const special = specialKey(character);
    return special != nullptr ? QString::fromUtf8(special->drawn) : QString::fromUcs4(&character, 1);
}

} // namespace

OnScreenKeyboardView::OnScreenKeyboardView(OnScreenKeyboard& keyboard, WindowFrame& frame, QWidget& parent)
    : QWidget(&parent), ModelView(keyboard, frame) {
    nameWidget();
    std::vector<Key> last;
    addKey(last, CapsLock);
    for (const std::u32string& characters : OnScreenKeyboard::rows()) {
        auto& row = rows_.emplace_back();
        for (const char32_t character : characters)
            addKey(character == key_character::Space ? last : row, character);
    }
    rows_.push_back(std::move(last));
}

void OnScreenKeyboardView::addKey(std::vector<Key>& row, char32_t character) {
    const SpecialKey* const special = specialKey(character);
    auto* button =
        new KeyButton(*this, special != nullptr ? special->name : toUtf8(std::u32string(1, character)),
                      spokenName(character, frame()));
    button->setCheckable(character == CapsLock);
    connect(button, &QAbstractButton::clicked, this, [this, character] {
        act([=](OnScreenKeyboard& target) {
            if (character == CapsLock)
                target.toggleCapsLock();
            else
                target.touchKey(character);
        });
    });
    row.push_back({character, special != nullptr ? special->width : 1, button});
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
    looks.text = dark ? QColor(Qt::white) : palette::Ink;
    looks.font = look::font(Letter, scale());
    looks.wrapped = false;
    const double gap = HalfKeyGap * scale().smaller();
    looks.inset = {gap, gap, gap, gap};
    looks.face.backdrop = back;
    for (const auto& row : rows_) {
        for (const Key& key : row) {
            const bool plain = key.character > key_character::Space;
            looks.face.color = dark ? look::mixed(back, Qt::black, plain ? 0.28 : 0.5)
                                    : (plain ? palette::Key : palette::Band);
            looks.face.marked = key.character == CapsLock && model()->capsLock();
            key.button->setChecked(looks.face.marked);
            key.button->setLooks(looks);
            const char32_t shown = plain ? model()->shown(key.character) : key.character;
            key.button->setText(drawnText(shown));
            name(*key.button, spokenName(shown, frame()));
            key.button->setShortcut({}); // "&" is a key here, not the mark of one
        }
    }
}

void OnScreenKeyboardView::showWords() {
    updateSpokenName();
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
    paintBoard(painter, model()->backColor(), look::BoardRadius);
}

} // namespace kova
