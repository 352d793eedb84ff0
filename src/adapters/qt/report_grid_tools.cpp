#include "adapters/qt/report_grid_tools.h"

#include "base/utf8.h"
#include "screen/geometry.h"
#include "screen/physical_keys.h"

#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

// Lengths in design pixels.
const Font BoardLetter{.points = 13, .bold = true};
const Font SearchText{.points = 11};
constexpr double BoardKeyHeight = 43;
constexpr double ToolInset = 4;
constexpr double ToolWidth = 46;

/// Small letters alone, since a search makes no difference.
const std::vector<std::u32string> BoardRows{U"1234567890,.-\x08", U"qwertyuiopèü€", U"asdfghjklòàäö",
                                            U"zxcvbnmìùéß/:", U" \n"};

QString keyText(char32_t character) {
    switch (character) {
    case key_character::Backspace:
        return QStringLiteral("⌫");
    case key_character::LineBreak:
        return QStringLiteral("↵");
    case key_character::Space:
        return {};
    default:
        return QString::fromUcs4(&character, 1);
    }
}

double keyShare(char32_t character) {
    return character == key_character::Space ? 4 : 1;
}

FaceButton::Looks keyLooks(const Scale& scale, const QColor& color) {
    FaceButton::Looks looks;
    looks.face.unit = scale.smaller();
    looks.face.color = color;
    looks.face.backdrop = palette::Band;
    looks.text = palette::Ink;
    looks.font = look::font(BoardLetter, scale);
    looks.wrapped = false;
    const double gap = ToolInset * scale.smaller();
    looks.inset = {gap, gap, gap, gap};
    return looks;
}

} // namespace

SearchBoard::SearchBoard(QWidget& page, const QString& name, QLineEdit& field)
    : QWidget(&page), field_(field) {
    setObjectName(name + "_board");
    hide();
    for (const std::u32string& characters : BoardRows) {
        auto& row = rows_.emplace_back();
        for (const char32_t character : characters) {
            auto* button = new KeyButton(*this, toUtf8(std::u32string(1, character)), keyText(character));
            button->setText(keyText(character));
            connect(button, &QAbstractButton::clicked, this, [this, character] { press(character); });
            row.push_back({character, button});
        }
    }
}

void SearchBoard::press(char32_t character) {
    if (character == key_character::LineBreak)
        done();
    else if (character == key_character::Backspace)
        field_.backspace();
    else
        field_.insert(QString::fromUcs4(&character, 1));
}

int SearchBoard::height(const Scale& scale) {
    return static_cast<int>(std::lround(BoardKeyHeight * scale.y)) * static_cast<int>(BoardRows.size());
}

void SearchBoard::layOut(const QRect& place, const Scale& scale) {
    setGeometry(place);
    const double height = place.height() / static_cast<double>(rows_.size());
    double top = 0;
    for (const auto& row : rows_) {
        double all = 0;
        for (const Key& key : row)
            all += keyShare(key.character);
        double left = 0;
        for (const Key& key : row) {
            const double width = place.width() * keyShare(key.character) / all;
            key.button->setGeometry(QRectF(left, top, width, height).toRect());
            key.button->setLooks(
                keyLooks(scale, key.character > key_character::Space ? palette::Key : palette::PadClearKey));
            left += width;
        }
        top += height;
    }
}

void SearchBoard::showWords(const Wording& words) {
    for (const auto& row : rows_)
        for (const Key& key : row)
            key.button->setAccessibleName(QString::fromStdString(spokenKey(key.character, words)));
}

void SearchBoard::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), palette::Band);
}

ReportGridTools::ReportGridTools(QWidget& page, const QString& name, Actions actions)
    : QWidget(&page), actions_(std::move(actions)), field_(new QLineEdit(this)),
      clear_(new FaceButton(*this)), menu_(new FaceButton(*this)) {
    setObjectName(name + "_tools");
    field_->setObjectName(name + "_search");
    clear_->setObjectName(name + "_clear");
    menu_->setObjectName(name + "_menu");
    clear_->setText(QStringLiteral("✕"));
    menu_->setText(QStringLiteral("☰"));
    clear_->hide();
    field_->installEventFilter(this);
    menu_->installEventFilter(this);
    for (QWidget* const part : {static_cast<QWidget*>(field_), static_cast<QWidget*>(menu_)})
        part->setFocusPolicy(Qt::ClickFocus); // a page that comes into sight gives the focus to none of them
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
        placeField();
        actions_.search(text.toStdString());
    });
    connect(clear_, &QAbstractButton::clicked, field_, &QLineEdit::clear);
    connect(menu_, &QAbstractButton::clicked, this, [this] { actions_.openMenu(); });
}

void ReportGridTools::showWords(const Wording& words) {
    const auto in = [&](Word word) { return QString::fromStdString(words(word)); };
    field_->setPlaceholderText(in(Word::SearchList));
    field_->setAccessibleName(in(Word::SearchList));
    clear_->setAccessibleName(in(Word::Clear));
    menu_->setAccessibleName(in(Word::ListMenu));
}

void ReportGridTools::empty() {
    const QSignalBlocker silent(field_);
    field_->clear();
    placeField();
}

void ReportGridTools::detach() {
    const auto nothing = [](auto&&...) {};
    actions_ = {nothing, nothing, nothing, nothing, nothing};
    hide();
}

void ReportGridTools::layOut(const QRect& place, const Scale& scale) {
    setGeometry(place);
    const int button = std::max(place.height(), static_cast<int>(std::lround(ToolWidth * scale.x)));
    menu_->setGeometry(width() - button, 0, button, height());
    clear_->setGeometry(width() - 2 * button, 0, button, height());
    for (FaceButton* const one : {clear_, menu_})
        one->setLooks(keyLooks(scale, palette::Key));
    field_->setFont(look::font(SearchText, scale));
    const auto pixels = [&](double design) { return std::max(1L, std::lround(design * scale.smaller())); };
    setStyleSheet(QString("QLineEdit { background: %1; color: %2; border: %3px solid %4; border-radius: %5px;"
                          " padding: 0px %5px; }"
                          "QLineEdit:focus { border: %6px solid %7; }")
                      .arg(palette::Paper.name(), palette::Ink.name())
                      .arg(pixels(1))
                      .arg(look::borderOn(palette::Paper, palette::Band).name())
                      .arg(pixels(look::FieldRadius))
                      .arg(pixels(2))
                      .arg(look::accentOn(palette::Paper).name()));
    QPalette colors = field_->palette();
    colors.setColor(QPalette::PlaceholderText, palette::PaleInk);
    field_->setPalette(colors);
    placeField();
}

void ReportGridTools::placeField() {
    const bool clears = !field_->text().isEmpty();
    clear_->setVisible(clears);
    field_->setGeometry(0, 0, (clears ? clear_ : menu_)->x(), height());
}

bool ReportGridTools::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (watched == field_)
            actions_.touchField();
        return false;
    case QEvent::FocusIn:
        actions_.focusMoved();
        return false;
    case QEvent::KeyPress:
        return takeKey(watched, static_cast<QKeyEvent*>(event)->key());
    default:
        return false;
    }
}

bool ReportGridTools::takeKey(QObject* part, int key) {
    const bool atEnd = part == menu_ || field_->cursorPosition() == field_->text().size();
    if (key == Qt::Key_Down || (part == field_ && (key == Qt::Key_Return || key == Qt::Key_Enter)))
        actions_.leave();
    else if (part == menu_ && key == Qt::Key_Left)
        field_->setFocus(Qt::OtherFocusReason);
    else if (part == field_ && key == Qt::Key_Right && atEnd)
        menu_->setFocus(Qt::OtherFocusReason);
    else
        return false;
    return true;
}

} // namespace kova
