// The Qt rendering, driven by real events: what a scenario cannot reach, since it waits and looks through
// models.
#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "drawer_dialog/drawer_controls.h"
#include "host/qt_cashier.h"
#include "platform/error.h"
#include "widgets/window_stack.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>

#include <gtest/gtest.h>

namespace kova {
namespace {

using namespace std::chrono_literals;

/// The dialog's controls on the screen, without its rules.
class Screen : public testing::Test {
  protected:
    Screen() {
        controls->window.setBackColor(colors::White);
        for (auto* grid : {&controls->Pulsantiera_Attivita, &controls->Pulsantiera_Pagamenti}) {
            grid->setColumns(3);
            grid->setRows(1);
            grid->layoutButtons();
            for (const char* key : {"1", "2", "3"})
                grid->addButton(key, std::string("Tasto ") + key, {211, 211, 211}, colors::Black, "");
        }
        controls->view = userInterface.present(controls->window);
        controls->Virtual_Keyboard.bind(&controls->txtNote);
        stack.show(controls->window, false);
        loop.settle();
    }
    ~Screen() override { unload(); }
    void unload() {
        if (!controls)
            return;
        stack.remove(controls->window);
        controls->retire();
        controls.reset();
    }
    void type(const std::u32string& text) {
        for (const char32_t character : text)
            cashier.type(controls->window, character);
    }
    void click(const TouchPoint& at) { QTest::mouseClick(at.widget, Qt::LeftButton, {}, at.point.toPoint()); }

    QtEventLoop loop{QtEventLoop::Time::Stepped};
    RegionalSettings regional;
    QtUserInterface userInterface{loop, regional, {.modalLoop = [](Window&) {}, .surface = {1280, 800}}};
    QtCashier cashier{userInterface};
    WindowStack stack;
    std::shared_ptr<DrawerControls> controls = std::make_shared<DrawerControls>(loop);
};

TEST_F(Screen, TypesThroughTheFilterAtTheCaret) {
    auto& amount = controls->txtVisore;
    const auto filter = amount.keyPress.connect([](char32_t& character) {
        character = character == U'.' ? U',' : character == U'x' ? 0 : character;
    });
    type(U"1x2.5");
    EXPECT_EQ(amount.text(), "12,5");
    type(U"\b");
    EXPECT_EQ(amount.text(), "12,");
    amount.select(0, 2);
    type(U"9");
    EXPECT_EQ(amount.text(), "9,") << "the selection is replaced";
    EXPECT_EQ(amount.selectionStart(), 1U);
    amount.setText("7");
    type(U"8\n");
    EXPECT_EQ(amount.text(), "78") << "a text set by the rules has the caret at its end";
}

TEST_F(Screen, KeepsNotesByteForByteAndTheFocusInThem) {
    auto& note = controls->txtNote;
    EXPECT_EQ(cashier.focus(note), Gesture::Done);
    note.setText("riga\r\nduro\u00a0\U0001F600");
    type(U"è\n\U0001F600z\b\b");
    EXPECT_EQ(note.text(), "riga\r\nduro\u00a0\U0001F600è\n");
    for (const char32_t key : std::u32string(U"resto ß"))
        cashier.touchKey(controls->Virtual_Keyboard, key);
    EXPECT_EQ(note.text(), "riga\r\nduro\u00a0\U0001F600è\nRESTO ß");
    EXPECT_EQ(QApplication::focusWidget(), &userInterface.view(note)->keyboardWidget());
    note.setText("abc");
    note.select(1, 1);
    QKeyEvent remove(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
    QApplication::sendEvent(&userInterface.view(note)->keyboardWidget(), &remove);
    EXPECT_EQ(note.text(), "ac") << "the toolkit's own editing reaches the model";
}

TEST_F(Screen, LetsNoTouchThroughToABlockedWindow) {
    int presses = 0;
    const auto connection = controls->cmdConferma.pressed.connect([&] { ++presses; });
    const auto at = *userInterface.touchPoint(controls->cmdConferma);
    Window message("message", "title", {0, 0, 3000, 1500});
    auto view = userInterface.present(message);
    stack.show(message, true);
    EXPECT_EQ(cashier.press(controls->cmdConferma), Gesture::Disabled);
    click(at);
    EXPECT_EQ(presses, 0);
    stack.remove(message);
    view.reset();
    click(at);
    EXPECT_EQ(presses, 1);
}

TEST_F(Screen, SurvivesAWindowUnloadedInsideItsOwnEvents) {
    const auto kill = [this] {
        unload();
        loop.processPendingEvents();
        loop.advance(5ms);
    };
    const auto connection =
        controls->Pulsantiera_Attivita.buttonClick.connect([&](const std::string&) { kill(); });
    EXPECT_EQ(cashier.touch(controls->Pulsantiera_Attivita, "3"), Gesture::Done);
    EXPECT_EQ(controls, nullptr);
    loop.settle();
}

TEST_F(Screen, HandsFailuresOfHandlersToWhoeverMadeTheGesture) {
    const auto connection = controls->cmdAnnulla.pressed.connect([] { throw Error(5, "handler"); });
    EXPECT_THROW(cashier.press(controls->cmdAnnulla), Error);
    EXPECT_THROW(cashier.screenshot(controls->window, "/nonexistent/x.png"), Error);
}

TEST(LiveTime, RunsAModalWindowUntilItsTimersCloseIt) {
    QtEventLoop loop(QtEventLoop::Time::Live);
    const RegionalSettings regional;
    QtUserInterface userInterface(loop, regional);
    WindowStack stack;
    Window window("window", "title", {0, 0, 3000, 1500});
    const auto view = userInterface.present(window);
    Timer timer(loop, 20ms);
    int ticks = 0;
    const auto closing = timer.tick.connect([&] {
        if (++ticks == 3)
            stack.remove(window);
    });
    stack.show(window, true);
    timer.start();
    userInterface.runModal(window);
    EXPECT_EQ(ticks, 3);
    stack.show(window, true);
    const auto failing = timer.tick.connect([] { throw Error(1, "tick"); });
    EXPECT_THROW(userInterface.runModal(window), Error);
}

} // namespace
} // namespace kova
