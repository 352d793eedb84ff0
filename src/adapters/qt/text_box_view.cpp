#include "adapters/qt/text_box_view.h"

#include "adapters/qt/window_frame.h"
#include "screen/physical_keys.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QWidget>

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

namespace {

// The same keys that Qt's own editors take for text.
bool isText(const QKeyEvent& event) {
    const QString text = event.text();
    if (text.isEmpty() || event.modifiers() == Qt::ControlModifier ||
        event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier))
        return false;
    const QChar first = text.front();
    return first.isPrint() || first.category() == QChar::Other_Format ||
           first.category() == QChar::Other_PrivateUse || (text.size() >= 2 && first.isHighSurrogate());
}

} // namespace

TextPositions TextBoxView::positions() const {
    return {model()->text(),
            model()->multiLine() ? TextPositions::Breaks::Joined : TextPositions::Breaks::Kept};
}

void TextBoxView::startShowing() {
    nameWidget();
    showProperty(Property::Locked);
    showText();
}

void TextBoxView::layOut() {
    ControlView::layOut();
    showFont();
    showColors();
}

void TextBoxView::showProperty(Property property) {
    switch (property) {
    case Property::Text:
        showText();
        showFont();
        break;
    case Property::Locked:
        showLocked(onlyShows());
        widget().setFocusPolicy(model()->inert() ? Qt::NoFocus : Qt::ClickFocus);
        ControlView::showProperty(Property::Enabled);
        showFont();
        showColors();
        break;
    case Property::BackColor:
    case Property::ForeColor:
        showColors();
        break;
    default:
        break;
    }
    ControlView::showProperty(property);
}

// Of a box that is inert the toolkit keeps the touches, too.
bool TextBoxView::drawnEnabled() const {
    return ControlView::drawnEnabled() && !model()->inert();
}

void TextBoxView::showNeed() {
    showColors();
    ModelView::showNeed();
}

// Where the window takes all keys itself, a caret would suggest that typing goes into the box.
bool TextBoxView::onlyShows() const {
    return model()->locked() || model()->window().takesKeys();
}

// A text that cannot be scrolled has to be seen whole: half an amount is a wrong one.
void TextBoxView::showFont() {
    constexpr double Sides = 12; // borders and margins, in design pixels
    QFont font = look::font(model()->font(), scale());
    if (onlyShows() && !model()->multiLine())
        font =
            look::fitted(positions().editorText(), font,
                         QSizeF(widget().width() - pixels(Sides), font.pixelSize() * 2), {.wrapped = false});
    if (widget().font() != font)
        widget().setFont(font);
}

void TextBoxView::showColors() {
    const QColor back = look::toQt(model()->backColor());
    const QColor text =
        look::toQt(model()->foreColor()); // may be the same on purpose: content that is hidden
    const bool refused = model()->need() == Need::Refused;
    const QColor accent = refused ? look::warningOn(backdrop()) : look::accentOn(backdrop());
    const QColor faint = model()->inert() ? back : look::mixed(back, palette::Disabled, 0.35);
    const int padding = pixels(onlyShows() ? 2 : 4);
    // What cannot be filled in has no frame, so that it does not look as if it could.
    const QString frame = refused             ? accent.name()
                          : model()->locked() ? QStringLiteral("transparent")
                                              : look::borderOn(back, backdrop()).name();
    const int line = linePixels(refused ? look::RefusedRing : 1);
    const int thickest = std::max(line, linePixels(2)); // with the focus
    const QString sheet =
        QString("QLineEdit, QPlainTextEdit { background: %1; color: %2; border: %7px solid %3;"
                " border-radius: %6px; padding: %8px %11px; selection-background-color: %4;"
                " selection-color: %5; }"
                "QLineEdit:focus, QPlainTextEdit:focus { border: %9px solid %4; padding: 0px %12px; }"
                "QLineEdit:disabled, QPlainTextEdit:disabled { background: %10; }")
            .arg(back.name(), text.name(), frame, accent.name(), look::readableOn(accent, Qt::white).name())
            .arg(pixels(look::FieldRadius))
            .arg(line)
            .arg(thickest - line)
            .arg(thickest)
            .arg(faint.name())
            .arg(padding + thickest - line)
            .arg(padding);
    if (widget().styleSheet() != sheet)
        widget().setStyleSheet(sheet);
}

// Typing changes the least, so that it can be undone; what the program writes cannot.
void TextBoxView::showText() {
    const QScopedValueRollback guard(showing_, true);
    const QString before = editorText();
    const QString after = positions().editorText();
    if (before != after && !typing_) {
        setEditorText(after);
    } else if (before != after) {
        const auto shorter = std::min(before.size(), after.size());
        qsizetype head = 0;
        while (head < shorter && before[head] == after[head])
            ++head;
        qsizetype tail = 0;
        while (tail < shorter - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
            ++tail;
        replaceInEditor({static_cast<int>(head), static_cast<int>(before.size() - tail)},
                        after.mid(head, after.size() - tail - head));
    }
    showSelection();
}

void TextBoxView::showSelection() {
    const QScopedValueRollback guard(showing_, true);
    const TextPositions carry = positions();
    const Selection wanted{carry.toEditor(model()->selectionStart()),
                           carry.toEditor(model()->selectionEnd())};
    const Selection present = editorSelection();
    if (present.start != wanted.start || present.end != wanted.end)
        selectInEditor(wanted);
}

bool TextBoxView::takeKey(const QKeyEvent& event) {
    if (model() == nullptr)
        return true;
    showSelection(); // the program may have moved the caret
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        typeCharacters(QString(QChar(key_character::LineBreak)));
    else if (event.key() == Qt::Key_Backspace && event.modifiers() == Qt::NoModifier)
        typeCharacters(QString(QChar(key_character::Backspace)));
    else if (isText(event))
        typeCharacters(event.text());
    else
        return false;
    return true;
}

bool TextBoxView::takeCommit(const QInputMethodEvent& event) {
    if (event.commitString().isEmpty() || event.replacementLength() != 0)
        return false;
    typeCharacters(event.commitString());
    return true;
}

void TextBoxView::typeCharacters(const QString& text) {
    for (const char32_t character : text.toStdU32String()) {
        const QScopedValueRollback guard(typing_, true);
        act([&](TextBox& box) { box.typeCharacter(character); });
    }
    if (model() != nullptr)
        showSelection();
}

void TextBoxView::clicked() {
    act([](TextBox& box) { box.window().moveFocus(box); });
}

void TextBoxView::editorChanged() {
    if (showing_ || model() == nullptr)
        return;
    if (model()->reach() != Gesture::Done) { // assistive technology writes into what is locked, too
        showText();
        return;
    }
    const std::string text = editorText().toStdString();
    const TextPositions carry(text, TextPositions::Breaks::Kept); // the editor's own breaks are single units
    const Selection selection = editorSelection();
    act([&](TextBox& box) {
        box.adoptEdit(text, carry.toModel(selection.start), carry.toModel(selection.end));
    });
}

void TextBoxView::editorSelectionChanged() {
    if (showing_ || model() == nullptr)
        return;
    const TextPositions carry = positions();
    const Selection selection = editorSelection();
    model()->select(carry.toModel(selection.start), carry.toModel(selection.end));
}

} // namespace kova
