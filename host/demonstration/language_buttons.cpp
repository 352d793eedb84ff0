#include "demonstration/language_buttons.h"

#include "demonstration/look.h"
#include "demonstration/texts.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>
#include <QWindow>

#include <array>

namespace kova {
namespace {

struct LanguageChoice {
    std::int32_t id;
    const char* name;
};
constexpr std::array languageChoices{LanguageChoice{Italian, "Italiano"}, LanguageChoice{German, "Deutsch"},
                                     LanguageChoice{English, "English"}};

constexpr double CornerGap = 4;

// The focus stays in the dialog.
constexpr Qt::WindowFlags StripFlags =
    Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus | Qt::WindowStaysOnTopHint;

} // namespace

LanguageButtons::LanguageButtons(Place place)
    : QWidget(nullptr, place == Place::Strip ? StripFlags : Qt::WindowFlags()),
      buttons_(new QButtonGroup(this)) {
    setObjectName("LanguageButtons");
    setAttribute(Qt::WA_StyledBackground);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating, place == Place::Strip);
    auto* const layout = new QHBoxLayout(this);
    for (const LanguageChoice& choice : languageChoices) {
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

} // namespace kova
