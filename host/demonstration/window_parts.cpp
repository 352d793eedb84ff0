#include "demonstration/window_parts.h"

#include "demonstration/look.h"
#include "demonstration/texts.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QStandardPaths>
#include <QWindow>

#include <array>
#include <chrono>

namespace kova {
namespace {

constexpr std::array Sentences{Caption::FirstSentence, Caption::SecondSentence, Caption::ThirdSentence};
const QString Seen = QStringLiteral("introduction/seen");

QSettings userSettings() {
    return {QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + "/kova-host.ini",
            QSettings::IniFormat};
}

struct LanguageChoice {
    std::int32_t id;
    const char* name;
};
constexpr std::array LanguageChoices{LanguageChoice{Italian, "Italiano"}, LanguageChoice{German, "Deutsch"},
                                     LanguageChoice{English, "English"}};

constexpr double CornerGap = 4;

// The focus stays in the dialog.
constexpr Qt::WindowFlags StripFlags =
    Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus | Qt::WindowStaysOnTopHint;

using namespace std::chrono_literals;

constexpr auto SuccessTime = 2500ms;
constexpr auto FailureTime = 7000ms; // there is a reason to read

const QScreen& screenInUse() {
    const QWidget* const window = QApplication::activeWindow();
    return window != nullptr ? *window->screen() : *QGuiApplication::primaryScreen();
}

} // namespace

Introduction::Introduction() : understood_(new QPushButton), layout_(new QHBoxLayout(this)) {
    setObjectName("Introduction");
    for (QLabel*& sentence : sentences_) {
        sentence = new QLabel;
        sentence->setWordWrap(true);
        layout_->addWidget(sentence, 1);
    }
    understood_->setObjectName("Understood");
    layout_->addWidget(understood_);
    connect(understood_, &QPushButton::clicked, this, &Introduction::dismiss);
    if (userSettings().value(Seen).toBool())
        hide();
}

void Introduction::dismiss() {
    if (isHidden())
        return;
    hide();
    userSettings().setValue(Seen, true);
}

void Introduction::mouseReleaseEvent(QMouseEvent*) {
    dismiss();
}

void Introduction::setLanguage(std::int32_t id) {
    for (std::size_t i = 0; i < sentences_.size(); ++i)
        sentences_[i]->setText(QString("%1.  %2").arg(i + 1).arg(caption(Sentences[i], id)));
    understood_->setText(caption(Caption::Understood, id));
}

void Introduction::setScale(double scale) {
    const auto px = [scale](double length) { return host_look::pixels(length, scale); };
    layout_->setContentsMargins(px(16), px(10), px(12), px(10));
    layout_->setSpacing(px(20));
}

LanguageButtons::LanguageButtons(Place place)
    : QWidget(nullptr, place == Place::Strip ? StripFlags : Qt::WindowFlags()),
      buttons_(new QButtonGroup(this)) {
    setObjectName("LanguageButtons");
    setAttribute(Qt::WA_StyledBackground);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating, place == Place::Strip);
    auto* const layout = new QHBoxLayout(this);
    for (const LanguageChoice& choice : LanguageChoices) {
        auto* const button = new QPushButton(QString::fromUtf8(choice.name));
        button->setObjectName("LanguageSegment");
        button->setCheckable(true);
        button->setFocusPolicy(place == Place::Strip ? Qt::NoFocus : Qt::StrongFocus);
        buttons_->addButton(button, choice.id);
        layout->addWidget(button);
    }
    connect(buttons_, &QButtonGroup::idClicked, this, [this](int id) {
        const QString name = buttons_->button(id)->text();
        chosen(id, name);
    });
    select(Italian);
}

void LanguageButtons::select(std::int32_t languageId) {
    if (QAbstractButton* const button = buttons_->button(languageId))
        button->setChecked(true);
}

void LanguageButtons::setScale(double scale) {
    layout()->setContentsMargins(0, 0, 0, 0);
    layout()->setSpacing(host_look::pixels(6, scale));
}

void LanguageButtons::accompanyModalWindows(double scale) {
    setScale(scale);
    setStyleSheet(host_look::styleSheet(scale));
    adjustSize();
    placed_ = false;
    following_ = connect(qApp, &QGuiApplication::focusWindowChanged, this, [this, scale](QWindow* window) {
        if (window != nullptr && window->isModal())
            showAbove(*window, host_look::pixels(CornerGap, scale));
    });
}

/// A window that belongs to the modal one is not blocked by it; that is decided when it is shown.
void LanguageButtons::showAbove(QWindow& modal, int gap) {
    hide();
    winId(); // makes the native window, so that it can be told which one it belongs to
    windowHandle()->setTransientParent(&modal);
    if (!placed_) // the dialog comes first, messages in front of it are smaller
        move(modal.geometry().right() - width() - gap, modal.geometry().top() + gap);
    placed_ = true;
    show();
    raise();
}

void LanguageButtons::leave() {
    disconnect(following_);
    hide();
}

Notice::Notice()
    : QLabel(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput |
                          Qt::WindowDoesNotAcceptFocus) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    setObjectName("Notice");
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    end_.setSingleShot(true);
    connect(&end_, &QTimer::timeout, this, &QWidget::hide);
}

void Notice::display(const QString& text, Kind kind, double scale) {
    const QColor ground = kind == Kind::Success ? host_look::Incoming : host_look::Failure;
    setFont(host_look::font(22, scale, QFont::Bold));
    setStyleSheet(QString("background: %1; color: white; padding: %2px %3px;")
                      .arg(ground.name())
                      .arg(host_look::pixels(14, scale))
                      .arg(host_look::pixels(28, scale)));
    setText(text);
    const QRect room = screenInUse().availableGeometry();
    const int widest = room.width() * 2 / 3;
    setWordWrap(false);
    const bool tooLong = sizeHint().width() > widest;
    setWordWrap(tooLong);
    const int width = tooLong ? widest : sizeHint().width();
    resize(width, tooLong ? heightForWidth(width) : sizeHint().height());
    move(room.center().x() - width / 2, room.top() + host_look::pixels(12, scale));
    show();
    end_.start(kind == Kind::Success ? SuccessTime : FailureTime);
}

} // namespace kova
