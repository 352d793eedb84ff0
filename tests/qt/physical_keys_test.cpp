// The physical keyboard and a scanner, wherever the focus is.
#include "till.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace kova {
namespace {

using test::Till;

class PhysicalKeyboard : public testing::Test {
  protected:
    PhysicalKeyboard() { till.show(); }
    QWidget* target() { return till.frame().focusWidget() ? till.frame().focusWidget() : &till.frame(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(target(), key, modifiers, typingPause);
        till.loop.settle();
    }
    void type(const char* text, int pause = typingPause) {
        for (const char* character = text; *character != '\0'; ++character)
            QTest::keyClick(target(), *character, {}, pause);
    }
    void focus(const char* name) { till.dialog().moveFocus(*till.dialog().find(name)); }
    const std::string& text(const char* name) { return till.control<TextBox>(name).text(); }
    QLabel* help() { return till.frame().findChild<QLabel*>("KeyHelp"); }

    static constexpr int typingPause = 45; // ms
    Till till;
};

std::string tabOrder(Till::Layout layout) {
    Till till;
    till.show(layout);
    std::string order;
    const Control* const first = till.dialog().focus();
    do {
        const Control& at = *till.dialog().focus();
        order += at.name() + (at.index() ? std::to_string(*at.index()) : "") + ' ';
        QTest::keyClick(till.frame().focusWidget(), Qt::Key_Tab);
    } while (till.dialog().focus() != first && order.size() < 1000);
    return order;
}

TEST(TabOrder, FollowsTheWayOfAnEntry) {
    EXPECT_EQ(tabOrder(Till::Layout::Single),
              "txtVisore CMD_CaricaMoneta Pulsantiera_Pagamenti Pulsantiera_Attivita txtNote cmdConferma "
              "cmdAnnulla TabControl ");
    EXPECT_EQ(
        tabOrder(Till::Layout::DrawersAndCurrencies),
        "txtVisore CMD_CaricaMoneta Pulsantiera_Pagamenti Pulsantiera_Attivita cmdCassetto1 cmdCassetto2 "
        "cmdCassetto3 cmdCassetto4 Pulsantiera_Valuta txtNote cmdConferma cmdAnnulla TabControl ");
    EXPECT_EQ(tabOrder(Till::Layout::Double),
              "txtVisore CMD_CaricaMoneta Pulsantiera_Pagamenti Pulsantiera_Pagamenti_Versamenti txtNote "
              "cmdNascondiTastiera cmdConferma cmdAnnulla TabControl ");
}

TEST_F(PhysicalKeyboard, TypesTheAmountFromAnywhereButAnEditor) {
    focus("cmdConferma");
    type("1a2,5");
    EXPECT_EQ(text("txtVisore"), "12,5");
    EXPECT_EQ(till.dialog().focus(), till.dialog().find("txtVisore"));
    focus("txtNote");
    type("7,x");
    EXPECT_EQ(text("txtNote"), "7,x");
    EXPECT_EQ(text("txtVisore"), "12,5");
    till.control<TabControl>("TabControl").touchTab(1);
    focus("grd_mov_giornata");
    type("9");
    EXPECT_EQ(text("txtVisore"), "12,5") << "what is not seen takes no keys";
}

TEST_F(PhysicalKeyboard, ChoosesConfirmsAndBreaksLinesOfNotes) {
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    press(Qt::Key_F3);
    till.wait(50);
    EXPECT_TRUE(till.control<ButtonGrid>("Pulsantiera_Attivita").buttons()[1].marked);
    press(Qt::Key_F12);
    EXPECT_TRUE(till.control<ButtonGrid>("Pulsantiera_Attivita").buttons()[1].marked) << "no such activity";
    focus("txtNote");
    type("ab");
    press(Qt::Key_Return);
    EXPECT_EQ(text("txtNote"), "ab\n");
    EXPECT_TRUE(till.sink.movements.empty() && till.messages.empty());
    focus("txtVisore");
    type("20");
    press(Qt::Key_Enter, Qt::KeypadModifier);
    ASSERT_EQ(till.sink.movements.size(), 1U);
    EXPECT_EQ(till.sink.movements[0].importo, 20);
    EXPECT_EQ(till.sink.movements[0].tipoIncasso, 2);
    press(Qt::Key_Return);
    EXPECT_EQ(till.messages.size(), 1U) << "a refusal as by touch";
}

TEST(PhysicalKeyboardAlone, ComposesAMovement) {
    Till till;
    till.show(Till::Layout::DrawersAndCurrencies);
    const auto press = [&](std::initializer_list<Qt::Key> keys) {
        for (const Qt::Key key : keys)
            QTest::keyClick(till.frame().focusWidget(), key);
    };
    press({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Space}); // the third payment, in the second row
    press({Qt::Key_Tab, Qt::Key_End, Qt::Key_Left, Qt::Key_Space}); // the second activity
    auto* const spoken = QAccessible::queryAccessibleInterface(till.frame().focusWidget())->focusChild();
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Prelievo");
    till.wait(50);
    press({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab});
    press({Qt::Key_Right, Qt::Key_Space, Qt::Key_Tab, Qt::Key_X, Qt::Key_Tab, Qt::Key_4, Qt::Key_Return});
    ASSERT_EQ(till.sink.movements.size(), 1U);
    const auto& saved = till.sink.movements[0];
    EXPECT_EQ(saved.idpagamento, 3);
    EXPECT_EQ(saved.tipoIncasso, 2);
    EXPECT_EQ(saved.cassetto, 2);
    EXPECT_EQ(saved.Valuta, "CHF");
    EXPECT_EQ(saved.importo, 4);
}

TEST_F(PhysicalKeyboard, SendsNoBarCodeAsAnAmount) {
    till.composeMovement();
    focus("cmdAnnulla");
    quint64 time = 1000; // ms
    const auto scan = [&](int key, const QString& character) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, character);
        event.setTimestamp(time += 5);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(target(), &event); // sending would make it a program's event
    };
    for (const QChar digit : QString("8012345678901"))
        scan(digit.unicode(), digit);
    scan(Qt::Key_Return, "\r");
    till.loop.settle();
    EXPECT_TRUE(till.sink.movements.empty());
    EXPECT_NE(till.component->dialog()->window(), nullptr);
    EXPECT_EQ(text("txtVisore"), "8012345678901") << "seen, so that it can be cleared";
}

TEST_F(PhysicalKeyboard, ClosesByTheRuleOfTheCloseButton) {
    till.control<PushButton>("cmdAnnulla").setEnabled(false);
    press(Qt::Key_Escape);
    ASSERT_NE(till.component->dialog()->window(), nullptr);
    till.control<PushButton>("cmdAnnulla").setEnabled(true);
    QTest::keyPress(target(), Qt::Key_Escape); // there is nothing left to let go of it in
    EXPECT_TRUE(till.component->dialog() == nullptr || till.component->dialog()->window() == nullptr);
}

TEST_F(PhysicalKeyboard, ShowsItsKeysWithoutTakingTheFocus) {
    const Control* const before = till.dialog().focus();
    press(Qt::Key_F1);
    ASSERT_NE(help(), nullptr);
    for (const char* words :
         {"F2", "Fondo cassa", "F4", "Versamento", "Esc", "Chiudi", "Conferma", "Importo digitato"})
        EXPECT_TRUE(help()->text().contains(words)) << words;
    EXPECT_TRUE(till.frame().rect().contains(help()->geometry()));
    EXPECT_EQ(till.dialog().focus(), before);
    press(Qt::Key_Escape);
    EXPECT_EQ(help(), nullptr);
    EXPECT_NE(till.component->dialog()->window(), nullptr) << "that closed the help alone";
    press(Qt::Key_F1);
    QTest::mouseClick(help(), Qt::LeftButton);
    EXPECT_EQ(help(), nullptr);
}

TEST_F(PhysicalKeyboard, LeavesKeysSentByProgramsToTheirWidget) {
    focus("cmdConferma");
    QKeyEvent digit(QEvent::KeyPress, Qt::Key_5, Qt::NoModifier, "5");
    QApplication::sendEvent(target(), &digit);
    EXPECT_EQ(text("txtVisore"), "");
}

} // namespace
} // namespace kova
