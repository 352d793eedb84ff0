// The coin count on a real window, driven by real events.
#include "adapters/qt/user_interface.h"
#include "adapters/qt/window_frame.h"
#include "coin_count/coin_controls.h"
#include "widgets/window_stack.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTest>

#include <gtest/gtest.h>

namespace kova {
namespace {

/// The coin count's controls on the screen, without its rules.
class CoinWindow : public testing::Test {
  protected:
    CoinWindow() {
        controls.view = userInterface.present(controls.window);
        stack.show(controls.window, true);
        keys = controls.window.keyPress.connect([this](char32_t character) { typed += character; });
        loop.settle();
    }
    ~CoinWindow() override {
        stack.remove(controls.window);
        controls.retire();
    }
    WindowFrame& frame() { return *userInterface.frame(controls.window); }
    /// Touches what a person sees there, be it this control or one in front of it.
    void touch(Control& control) {
        const auto place = userInterface.touchPoint(control);
        const QPoint onFrame = place->widget->mapTo(&frame(), place->point.toPoint());
        QWidget* const seen = frame().childAt(onFrame);
        QTest::mouseClick(seen, Qt::LeftButton, {}, seen->mapFrom(&frame(), onFrame));
    }
    void press(int key, const QString& text, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(kind, key, modifiers, text);
            QApplication::sendEvent(frame().focusWidget() != nullptr ? frame().focusWidget() : &frame(),
                                    &event);
        }
    }

    QtEventLoop loop{QtEventLoop::Time::Stepped};
    RegionalSettings regional;
    QtUserInterface userInterface{loop, regional};
    WindowStack stack;
    CoinControls controls;
    Connection keys;
    std::u32string typed;
};

TEST_F(CoinWindow, SelectsTheFieldThatIsSeenUnderTheFinger) {
    const Control* touched = nullptr;
    std::vector<Connection> watches;
    const auto watch = [&](TextBox& box) {
        watches.push_back(box.gotFocus.connect([&touched, &box] { touched = &box; }));
    };
    for (auto& box : controls.txtValuta)
        watch(box);
    for (auto& box : controls.FlatEdit)
        watch(box);
    for (auto& box : controls.txtValuta) {
        touch(box);
        EXPECT_EQ(touched, &box) << *box.index();
    }
    controls.txtValuta[29].setLocked(true);
    touch(controls.txtValuta[29]);
    EXPECT_EQ(touched, &controls.txtValuta[29]) << "a locked one too";
    touch(controls.FlatEdit[1]);
    EXPECT_EQ(touched, &controls.FlatEdit[1]);
}

TEST_F(CoinWindow, TakesEveryKeyBeforeTheFieldsDo) {
    touch(controls.txtValuta[3]);
    controls.txtValuta[3].setText("12");
    press(Qt::Key_7, "7");
    press(Qt::Key_A, "a");
    press(Qt::Key_Backspace, "\b");
    press(Qt::Key_Delete, "\x7f");
    press(Qt::Key_Left, "");
    press(Qt::Key_X, "\x18", Qt::ControlModifier);
    press(Qt::Key_5, "5", Qt::AltModifier);
    QInputMethodEvent composed("", {});
    composed.setCommitString("8");
    QApplication::sendEvent(frame().focusWidget(), &composed);
    EXPECT_EQ(typed, U"7a\b\x7f"
                     U"8");
    EXPECT_EQ(controls.txtValuta[3].text(), "12");

    int pressed = 0;
    const auto watch = controls.CMD_Carica.pressed.connect([&] { ++pressed; });
    controls.window.moveFocus(controls.CMD_Carica);
    press(Qt::Key_Space, " ");
    press(Qt::Key_Return, "\r");
    EXPECT_EQ(pressed, 0);
    touch(controls.CMD_Carica);
    EXPECT_EQ(pressed, 1);

    stack.remove(controls.window);
    controls.window.typeCharacter(U'9');
    EXPECT_EQ(typed.find(U'9'), std::u32string::npos) << "not while it is hidden";
}

TEST_F(CoinWindow, TabsPastWhatCannotBeFilledIn) {
    for (auto& box : controls.txtValuta)
        box.setTabStop(*box.index() < CoinCount::FirstOfSecondCurrency);
    std::vector<const Control*> stops;
    for (int i = 0; i < 60 && (stops.empty() || controls.window.focus() != stops.front()); ++i) {
        stops.push_back(controls.window.focus());
        press(Qt::Key_Tab, "\t");
    }
    EXPECT_EQ(stops.size(), 1U + 4U + 15U) << "the entry, the buttons and the euro's fields";
    EXPECT_TRUE(std::ranges::none_of(stops, [&](const Control* stop) {
        return stop == &controls.txtValuta[15] || stop == &controls.FlatEdit[0] ||
               stop == &controls.txtPrimaValuta;
    }));
}

TEST_F(CoinWindow, ShowsEveryAmountWhole) {
    auto& editor = userInterface.view(controls.txtPrimaValuta)->widget();
    const int usual = editor.font().pixelSize();
    for (const char* amount : {"0,00", "9.999,99", "123.456,00", "12.345.678,00"}) {
        controls.txtPrimaValuta.setText(amount);
        EXPECT_LE(QFontMetrics(editor.font()).horizontalAdvance(amount), editor.width() - 10) << amount;
        EXPECT_GE(editor.font().pixelSize(), 8) << amount;
    }
    controls.txtPrimaValuta.setText("9.999,99");
    EXPECT_GE(editor.font().pixelSize(), usual - 2) << "what is common is not small";
}

} // namespace
} // namespace kova
