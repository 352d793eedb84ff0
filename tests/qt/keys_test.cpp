// The physical keyboard and a scanner, wherever the focus is.
#include "till.h"
#include "unit/trace_file.h"

#include "coin_count/coin_count.h"

#include <QAccessible>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace kova {
namespace {

using test::Till;
using Movements = std::vector<Movement>;

class PhysicalKeyboard : public test::ShownTill {
  protected:
    QWidget* target() { return till.frame().focusWidget() ? till.frame().focusWidget() : &till.frame(); }
    void press(std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(target(), key, {}, typingPause);
        till.loop.settle();
    }
    void type(const char* text) {
        for (const char* character = text; *character != '\0'; ++character)
            QTest::keyClick(target(), *character, {}, typingPause);
    }
    void focus(const char* name) { till.dialog().moveFocus(*till.dialog().find(name)); }
    const std::string& text(const char* name) { return till.control<TextBox>(name).text(); }
    QLabel* help() { return till.frame().findChild<QLabel*>("KeyHelp"); }

    static constexpr int typingPause = 45; // ms
};

std::string tabOrder(Window& window, QWidget& frame) {
    std::string order;
    const Control* const first = window.focus();
    do {
        const Control& at = *window.focus();
        order += at.name() + (at.index() ? std::to_string(*at.index()) : "") + ' ';
        QTest::keyClick(frame.focusWidget(), Qt::Key_Tab);
    } while (window.focus() != first && order.size() < 1000);
    return order;
}

TEST(TabOrder, FollowsTheWayOfAnEntry) {
    std::string seen;
    for (const auto layout :
         {Till::Layout::Single, Till::Layout::DrawersAndCurrencies, Till::Layout::Double}) {
        Till till;
        till.show(layout);
        seen += tabOrder(till.dialog(), till.frame()) + '\n';
    }
    test::expectTrace("tab_order", seen);
}

TEST_F(PhysicalKeyboard, TypesTheAmountFromAnywhereButAnEditor) {
    focus("cmdConferma");
    type("1a2,5");
    EXPECT_EQ(text("txtVisore"), "12,5");
    EXPECT_EQ(till.dialog().focus(), till.dialog().find("txtVisore"));
    focus("txtNote");
    type("7,x");
    EXPECT_EQ(text("txtNote"), "7,x");
    QKeyEvent digit(QEvent::KeyPress, Qt::Key_5, Qt::NoModifier, "5");
    focus("cmdConferma");
    QApplication::sendEvent(target(), &digit);
    till.control<TabControl>("TabControl").touchTab(1);
    focus("grd_mov_giornata");
    type("9");
    EXPECT_EQ(text("txtVisore"), "12,5") << "neither a program's key, nor one where the amount is not seen";
}

TEST_F(PhysicalKeyboard, ChoosesADayAndReachesNothingElseMeanwhile) {
    till.control<TabControl>("TabControl").touchTab(1);
    auto& field = till.control<DateField>("comboData");
    const auto widget = [&](const char* name) { return till.frame().findChild<QWidget*>(name); };
    const auto openOn = [&](const std::string& day) {
        field.setText(day);
        QTest::mouseClick(widget("comboData_calendar"), Qt::LeftButton);
    };
    openOn("31/01/2026");
    QTest::mouseClick(widget("nextMonth"), Qt::LeftButton);
    press({Qt::Key_Left, Qt::Key_Up, Qt::Key_5, Qt::Key_F2, Qt::Key_Home, Qt::Key_Down, Qt::Key_Enter});
    EXPECT_EQ(field.text() + text("txtVisore"), "08/02/2026");
    openOn("08/02/2026");
    press({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}); // around to the year before
    press({Qt::Key_End, Qt::Key_Return});
    EXPECT_EQ(field.text(), "28/02/2025");
    openOn("28/02/2025");
    QTest::mouseClick(widget("PushButton1"), Qt::LeftButton); // only closes the calendar
    EXPECT_FALSE(widget("comboData_popup")->isVisible());
    openOn("28/02/2025");
    QTest::mouseClick(widget("nextMonth"), Qt::LeftButton);
    press({Qt::Key_Right, Qt::Key_Escape});
    EXPECT_EQ(field.text(), "28/02/2025");
    EXPECT_TRUE(till.dialog().visible());
    for (const char* const name : {"comboData_after", "comboData_after", "comboData_before"})
        QTest::mouseClick(widget(name), Qt::LeftButton);
    EXPECT_EQ(field.text(), "01/03/2025");
    till.dialog().moveFocus(field);
    press({Qt::Key_Up, Qt::Key_Up, Qt::Key_Down});
    EXPECT_EQ(field.text(), "02/03/2025");
    field.setText("domani");
    QTest::mouseClick(widget("comboData_after"), Qt::LeftButton);
    EXPECT_EQ(field.text(), QDate::currentDate().addDays(1).toString("dd/MM/yyyy").toStdString());
}

TEST_F(PhysicalKeyboard, ChoosesConfirmsAndKeepsNotesByteForByte) {
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    press({Qt::Key_F3});
    till.wait(50);
    press({Qt::Key_F12}); // of no activity
    till.control<TextBox>("txtNote").setText("riga\r\nduro\u00a0\U0001F600\U0001F600");
    focus("txtNote");
    press({Qt::Key_Backspace, Qt::Key_X, Qt::Key_Return});
    EXPECT_TRUE(till.sink.movements.empty() && till.messages.empty());
    focus("txtVisore");
    type("20");
    QTest::keyClick(target(), Qt::Key_Enter, Qt::KeypadModifier);
    till.loop.settle();
    EXPECT_EQ(till.sink.movements, (Movements{{1, 20, "€", "riga\r\nduro\u00a0\U0001F600x\n", 0, 2, false}}));
    press({Qt::Key_Return});
    EXPECT_TRUE(till.messages.empty()) << "too soon to be meant";
    QTest::qSleep(static_cast<int>(PushButton::RestTime.count()));
    press({Qt::Key_Return});
    EXPECT_EQ(till.messages.size(), 1U) << "a refusal as by touch";
}

TEST_F(PhysicalKeyboard, ComposesAMovementAlone) {
    till.dialog().requestClose();
    till.show(Till::Layout::DrawersAndCurrencies);
    press({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Space}); // the third payment, in the second row
    press({Qt::Key_Tab, Qt::Key_End, Qt::Key_Left, Qt::Key_Space}); // the second activity
    EXPECT_EQ(QAccessible::queryAccessibleInterface(target())->focusChild()->text(QAccessible::Name),
              "Prelievo");
    till.wait(50);
    press({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab});
    press({Qt::Key_Right, Qt::Key_Space, Qt::Key_Tab, Qt::Key_X, Qt::Key_Tab, Qt::Key_4, Qt::Key_Return});
    EXPECT_EQ(till.sink.movements, (Movements{{3, 4, "CHF", "x", 2, 2, false}}));
}

TEST_F(PhysicalKeyboard, SendsNoBarCodeAsAnAmount) {
    till.composeMovement();
    focus("cmdAnnulla");
    quint64 time = 1000; // ms
    for (const QChar character : QString("8012345678901\r")) {
        QKeyEvent event(QEvent::KeyPress, character == '\r' ? int(Qt::Key_Return) : character.unicode(),
                        Qt::NoModifier, character);
        event.setTimestamp(time += 5);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(target(), &event); // sending would make it a program's event
    }
    till.loop.settle();
    EXPECT_TRUE(till.sink.movements.empty());
    EXPECT_NE(dialogOf(*till.component)->window(), nullptr);
    EXPECT_EQ(text("txtVisore"), "8012345678901") << "seen, so that it can be cleared";
}

TEST_F(PhysicalKeyboard, ShowsItsKeysAndClosesByTheRuleOfTheCloseButton) {
    const Control* const before = till.dialog().focus();
    press({Qt::Key_F1});
    ASSERT_NE(help(), nullptr);
    for (const char* words : {"F2", "Fondo cassa", "F4", "Versamento", "Esc", "Chiudi", "Conferma"})
        EXPECT_TRUE(help()->text().contains(words)) << words;
    EXPECT_TRUE(till.frame().rect().contains(help()->geometry()));
    EXPECT_EQ(till.dialog().focus(), before);
    press({Qt::Key_Escape});
    EXPECT_EQ(help(), nullptr);
    ASSERT_NE(dialogOf(*till.component)->window(), nullptr) << "that closed the help alone";
    till.control<PushButton>("cmdAnnulla").setEnabled(false);
    press({Qt::Key_Escape});
    ASSERT_NE(dialogOf(*till.component)->window(), nullptr);
    till.control<PushButton>("cmdAnnulla").setEnabled(true);
    QTest::keyPress(target(), Qt::Key_Escape); // there is nothing left to let go of it in
    EXPECT_TRUE(dialogOf(*till.component) == nullptr || dialogOf(*till.component)->window() == nullptr);
}

TEST_F(PhysicalKeyboard, EntersWhatIsCountedWhereverTheFocusIs) {
    bool counted = false;
    till.countCoins([&] {
        Window& window = *till.process.coinDialog->window();
        WindowFrame& frame = *till.userInterface.frame(window);
        const std::string order = tabOrder(window, frame);
        EXPECT_EQ(std::ranges::count(order, ' '), 1 + 4 + 15) << "the entry, the buttons, the euro's fields";
        EXPECT_TRUE(order.find("FlatEdit0") == order.npos && order.find("txtPrima") == order.npos) << order;

        const Control* touched = nullptr;
        for (int i = 0; i < CoinCount::FieldCount; ++i) {
            auto& field = till.coin<TextBox>("txtValuta", i);
            const auto watch = field.gotFocus.connect([&] { touched = &field; });
            const auto place = touchPoint(till.userInterface, field);
            const QPoint onFrame = place->widget->mapTo(&frame, place->point.toPoint());
            QWidget* const seen = frame.childAt(onFrame); // perhaps what stands in front of it
            QTest::mouseClick(seen, Qt::LeftButton, {}, seen->mapFrom(&frame, onFrame));
            EXPECT_EQ(touched, i < CoinCount::FirstOfSecondCurrency ? &field : nullptr) << i << " is grey";
            if (touched == nullptr)
                continue;
            field.window().moveFocus(till.coin<TextBox>("txt_valuta"));
            touched = nullptr;
            QAccessible::queryAccessibleInterface(place->widget)
                ->actionInterface()
                ->doAction(QAccessibleActionInterface::setFocusAction());
            EXPECT_EQ(touched, &field) << i;
            touched = nullptr;
        }
        EXPECT_EQ(till.process.coinDialog->IndiceMoneta(), 14);
        std::u32string typed;
        const auto keys = window.keyPress.connect([&](char32_t character) { typed += character; });
        for (const Qt::Key key : {Qt::Key_7, Qt::Key_A, Qt::Key_Backspace, Qt::Key_Left})
            QTest::keyClick(frame.focusWidget(), key);
        QTest::keyClick(frame.focusWidget(), Qt::Key_X, Qt::ControlModifier);
        QTest::keyClick(frame.focusWidget(), Qt::Key_5, Qt::AltModifier);
        QInputMethodEvent composed("", {});
        composed.setCommitString("8");
        QApplication::sendEvent(frame.focusWidget(), &composed);
        EXPECT_EQ(typed, U"7a\b8");
        window.moveFocus(*window.find("CMD_CaricaMoneta"));
        QTest::keyClick(frame.focusWidget(), Qt::Key_Space);
        QTest::keyClick(frame.focusWidget(), Qt::Key_Return);
        counted = window.visible();
    });
    EXPECT_TRUE(counted) << "no key presses a button";
}

} // namespace
} // namespace kova
