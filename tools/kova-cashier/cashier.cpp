// A cashier inside the process of any host, a generic plugin of Qt: plays the cashier's lines of a scenario
// by real events at what is drawn. See docs/testing_a_host.md.
#include "cashier.h"

#include "base/utf8.h"
#include "player/qt/gestures.h"
#include "scenario/scenario_language.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>

namespace kova {
namespace {

using namespace std::chrono_literals;

constexpr auto Pace = 10ms;        // between gestures
constexpr auto Slack = 30ms;       // by which the dialog's timers may be late
constexpr auto ForTheHost = 30s;   // until it shows a dialog
constexpr auto ForTheControl = 3s; // until it can be touched, in a dialog that is there

/// What a line does; empty as long as what it touches cannot be reached.
using Gesture = std::function<void()>;

/// The window that takes touches; null when none is shown.
QWidget* front() {
    if (QWidget* const modal = QApplication::activeModalWidget())
        return modal;
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->objectName().startsWith("frm"))
            return window;
    return nullptr;
}

QWidget* reachable(const QString& name) {
    QWidget* const window = front();
    auto* const found = window == nullptr ? nullptr : window->findChild<QWidget*>(name);
    return found != nullptr && found->isVisible() && found->isEnabled() ? found : nullptr;
}

Gesture touch(QWidget* widget) {
    return widget == nullptr ? Gesture() : [widget] { touchAt(*widget, widget->rect().center()); };
}

/// The name behind a command, of an element of an array too.
QString nameIn(const Arguments& arguments, std::size_t count) {
    const QString name = QString::fromStdString(arguments.text(0));
    return count == 1 ? name : QString("%1_%2").arg(name).arg(arguments.int32(1));
}

Gesture press(const Arguments& arguments) {
    arguments.requireCount(1, 2);
    return touch(reachable(nameIn(arguments, arguments.count())));
}

Gesture touchCell(const Arguments& arguments) {
    arguments.requireCount(2);
    QWidget* const grid = reachable(QString::fromStdString(arguments.text(0)));
    const auto* const cells = grid == nullptr ? nullptr : QAccessible::queryAccessibleInterface(grid);
    for (int i = 0; cells != nullptr && i < cells->childCount(); ++i)
        if (const auto* const cell = cells->child(i);
            cell->text(QAccessible::UserText).toStdString() == arguments.text(1) &&
            cell->state().offscreen == 0)
            return [=, place = cell->rect()] { touchAt(*grid, grid->mapFromGlobal(place.center())); };
    return {};
}

QWidget* boardKey(const char* board, const std::string& key) {
    return reachable(QString("%1_%2").arg(board, QString::fromStdString(keyNamed(key))));
}

Gesture key(const Arguments& arguments) {
    arguments.requireCount(1);
    return touch(boardKey("Virtual_KeyPAD", arguments.text(0)));
}

Gesture keyboard(const Arguments& arguments) {
    arguments.requireCount(1);
    std::vector<QWidget*> keys;
    for (const char32_t character : fromUtf8(arguments.text(0)))
        keys.push_back(boardKey("Virtual_Keyboard", toUtf8({&character, 1})));
    return std::ranges::find(keys, nullptr) != keys.end() ? Gesture() : [keys] {
        for (QWidget* const key : keys)
            touch(key)();
    };
}

void typeAll(const QPointer<QWidget>& target, const std::string& text) {
    for (const char32_t character : fromUtf8(text))
        if (target)
            typeInto(*target, character);
}

Gesture type(const Arguments& arguments) {
    arguments.requireCount(1);
    QWidget* const focused = front() == nullptr ? nullptr : front()->focusWidget();
    return focused == nullptr ? Gesture() : [=, text = arguments.text(0)] { typeAll(focused, text); };
}

/// Marks what stands there and types over it.
Gesture text(const Arguments& arguments) {
    arguments.requireCount(2, 3);
    QWidget* target = reachable(nameIn(arguments, arguments.count() - 1));
    if (target == nullptr)
        return {};
    if (auto* const inside = target->findChild<QLineEdit*>()) // of a date field
        target = inside;
    const std::string& typed = arguments.text(arguments.count() - 1);
    return [target, typed = typed.empty() ? "\b" : typed] {
        QKeyEvent all(QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier);
        QApplication::sendEvent(target, &all);
        typeAll(target, typed);
    };
}

Gesture tab(const Arguments& arguments) {
    arguments.requireCount(1);
    auto* const bar = qobject_cast<QTabBar*>(reachable("TabControl_tabs"));
    const std::int32_t index = arguments.natural(0);
    return bar == nullptr || !bar->isTabVisible(index) ? Gesture()
                                                       : [=] { touchAt(*bar, bar->tabRect(index).center()); };
}

Gesture close(const Arguments&) {
    QWidget* const window = front();
    return window == nullptr ? Gesture() : [=] {
        QCloseEvent event;
        QApplication::sendEvent(window, &event);
    };
}

Gesture caption(const Arguments& arguments) {
    if (arguments.text(0) != "control")
        return [] {};
    auto* const control = reachable(nameIn(arguments.from(1), arguments.count() - 1));
    return control == nullptr ? Gesture() : [=, name = arguments.text(1)] {
        if (const auto* const button = qobject_cast<QAbstractButton*>(control))
            std::cerr << "caption " << name << " \"" << button->text().toStdString() << '"' << std::endl;
    };
}

Gesture refuse(const Arguments&) {
    throw ScenarioError("this cashier cannot do that");
}

const std::map<std::string, Gesture (*)(const Arguments&)> Commands{
    {"touch", touchCell}, {"press", press},       {"key", key},       {"keyboard", keyboard},
    {"focus", press},     {"type", type},         {"text", text},     {"tab", tab},
    {"close", close},     {"dump", caption},      {"sort", refuse},   {"group", refuse},
    {"ungroup", refuse},  {"screenshot", refuse}, {"answer", refuse}, {"messages", refuse}};

class Cashier final : public QObject {
  public:
    explicit Cashier(const QString& file) : file_(file.toStdString()) {
        std::ifstream script(file_, std::ios::binary);
        lines_ = scenarioLines(std::string(std::istreambuf_iterator<char>(script), {}));
        if (lines_.empty())
            fail("an empty scenario");
        QTimer::singleShot(Pace, this, &Cashier::tick);
    }
    Cashier(const Cashier&) = delete;
    Cashier& operator=(const Cashier&) = delete;
    ~Cashier() override {
        if (!done())
            fail("the host has ended");
    }

  private:
    /// Goes on to the next line of the cashier's; whether there is none.
    bool done() {
        for (; next_ < lines_.size(); ++next_)
            if (words_ = scenarioWords(lines_[next_]);
                !words_.empty() && (words_.front() == "wait" || Commands.contains(words_.front())))
                return false;
        return true;
    }

    [[noreturn]] void fail(const std::string& why) const {
        std::cerr << "kova-cashier: " << located(file_, next_ + 1, why) << std::endl;
        std::_Exit(3);
    }

    void tick() {
        // First, since a gesture may wait in a loop of its own.
        QTimer::singleShot(Pace, this, &Cashier::tick);
        if (!pause_.hasExpired())
            return;
        QWidget* const window = front();
        const bool changed = std::exchange(shown_, window != nullptr) != (window != nullptr);
        if (changed || (window == nullptr && done()))
            patience_ = QDeadlineTimer(shown_ ? ForTheControl : ForTheHost);
        try {
            if (const Gesture answer = answerTo(window))
                answer();
            else
                play();
        } catch (const std::exception& error) {
            fail(error.what());
        }
    }

    static Gesture answerTo(QWidget* message) {
        if (auto* const box = qobject_cast<QMessageBox*>(message))
            return touch(box->defaultButton());
        return message != nullptr && message->objectName() == "frmMsgBox" ? touch(reachable("cmd1"))
                                                                          : Gesture();
    }

    void play() {
        const bool last = done();
        const Gesture gesture = last ? close(Arguments({})) : reading();
        if (patience_.hasExpired() && (last || !gesture))
            fail(last ? "the dialog stays open" : shown_ ? "nothing there to touch" : "no dialog is shown");
        if (!gesture)
            return;
        if (!last) {
            ++next_;
            patience_ = QDeadlineTimer(ForTheControl);
        }
        gesture();
    }

    Gesture reading() {
        const Arguments arguments({words_.begin() + 1, words_.end()});
        if (words_.front() == "wait")
            return [this, time = arguments.natural(0)] { pause_ = QDeadlineTimer(time + Slack.count()); };
        return Commands.at(words_.front())(arguments);
    }

    const std::string file_;
    std::vector<std::string> lines_, words_;
    std::size_t next_ = 0;
    bool shown_ = false;
    QDeadlineTimer pause_, patience_{ForTheHost};
};

} // namespace

QObject* CashierPlugin::create(const QString&, const QString& file) {
    return new Cashier(file);
}

} // namespace kova
