// What the entry screen says beside its controls must be what is sent, to the last digit.
#include "services/conversions.h"
#include "test_world.h"
#include "widgets/page_notice.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

class ScreenAidsTest : public testing::Test {
  protected:
    void open() {
        world.connect();
        world.show();
    }
    TextBox& display() { return world.control<TextBox>("txtVisore"); }
    NumericKeypad& pad() { return world.control<NumericKeypad>("Virtual_KeyPAD"); }
    const ReadBack::Content& readBack() { return pad().readBack()->content(); }
    std::string shownFor(const std::string& typed) {
        display().setText(typed);
        return readBack().amount;
    }
    std::string ways() {
        std::string all;
        for (const auto& way : readBack().ways)
            all += way.text + ';';
        return all;
    }
    PageNotice& notice() { return *world.dialog().notice(); }
    void touch(const std::string& grid, const std::string& key) {
        world.control<ButtonGrid>("Pulsantiera_" + grid).touch(key);
    }
    void confirm() { world.control<PushButton>("cmdConferma").press(); }
    World world;
};

TEST_F(ScreenAidsTest, ReadsBackTheVeryNumberThatWouldBeSent) {
    open();
    const std::vector<std::pair<std::string, std::string>> entries{
        {"1250", "1.250,00 €"}, {"0,1", "0,10 €"}, {"12,", "12,00 €"}, {"1234567,125", "1.234.567,125 €"},
        {"1,005", "1,005 €"},   {"-3", "-3,00 €"}, {"", ""},           {"1.250", "1.250,00 €"}};
    for (const auto& [typed, shown] : entries)
        EXPECT_EQ(shownFor(typed), shown) << typed;
    for (const char* typed : {"0,30000000000000004", "12345678901234567", "0,1234567890123456789", "1e300",
                              "1e-300", "999999999999999,99", "8e14"}) {
        const std::string shown = shownFor(typed);
        EXPECT_EQ(parseNumber(shown, world.regional), parseNumber(typed, world.regional)) << shown;
    }
    for (const char* typed : {"12.5", "12,5,", ",", "1e999", "x"}) {
        EXPECT_EQ(shownFor(typed), "Non è un numero") << typed;
        EXPECT_FALSE(readBack().isNumber);
    }
    world.runtime.change(1031);
    EXPECT_EQ(readBack().amount, "Keine Zahl") << "the language changes with the dialog open";
    for (const auto& [decimals, shown] : {std::pair{"3", "12,500 €"}, {"0", "12,5 €"}}) {
        world.database().setting("CifreDecimali", decimals);
        world.component->Inizializza(world.process.SharedConnection);
        EXPECT_EQ(shownFor("12,5"), shown);
    }
}

TEST_F(ScreenAidsTest, TellsTheDirectionThatWouldBeSent) {
    open();
    touch("Attivita", "3");
    EXPECT_EQ(ways(), "") << "it is not applied yet";
    world.wait(50);
    EXPECT_EQ(ways(), "+ Entrata;");
    touch("Attivita", "2");
    world.wait(50);
    world.dialog().requestClose();
    world.show();
    EXPECT_EQ(ways(), "− Uscita;") << "the selection outlives the dialog";
    world.runtime.change(9);
    EXPECT_EQ(ways(), "− Out;");
    world.composeMovement();
    confirm();
    EXPECT_EQ(ways() + readBack().amount, "");
}

TEST_F(ScreenAidsTest, NamesWhatWasSentWhateverTheHandlerWrites) {
    world.sink.then = [&](const std::string&) {
        world.process.selection.Valuta = "USD";
        world.process.selection.idPagamento = 3;
    };
    open();
    world.composeMovement();
    confirm();
    EXPECT_EQ(notice().text(), "Registrato: − 12,50 € · Prelievo · Contanti");
    EXPECT_FALSE(notice().pending());
    EXPECT_EQ(shownFor("7"), "7,00 USD") << "what the handler chose is what would be sent next";

    world.composeMovement();
    const auto shown = notice().shown.connect([] { ADD_FAILURE() << "not before it closes"; });
    world.component->ChiusuraAutomatica(true);
    confirm();
    EXPECT_EQ(world.sink.movements.size(), 2U);
}

TEST_F(ScreenAidsTest, SaysWhatOfAPairWasNotSavedUntilTheCashierGoesOn) {
    world.component->DoppioInserimentoObbligatorio(true);
    world.component->SetSoftwareName("Cassa");
    world.component->ChiusuraAutomatica(true);
    open();
    touch("Pagamenti", "1");
    touch("Pagamenti_Versamenti", "2");
    world.wait(50);
    display().setText("1060");
    EXPECT_EQ(ways(), "− Uscita;+ Entrata;");
    std::size_t stored = 0;
    world.sink.then = [&](const std::string&) {
        if (world.sink.movements.size() > stored)
            throw Error(5, "disk full");
    };
    confirm();
    EXPECT_EQ(notice().text(), "NULLA è stato registrato: disk full");
    stored = 2;
    confirm();
    EXPECT_EQ(notice().text(),
              "Registrato SOLO: − 1.060,00 € · Prelievo · Contanti\nNON registrato: disk full");
    world.runtime.change(1031);
    EXPECT_EQ(notice().text(), "NUR gebucht: − 1.060,00 € · Prelievo · Contanti\nNICHT gebucht: disk full");

    for (const char* name : {"frame_valuta", "frameCassetti", "Pulsantiera_Attivita"})
        world.dialog().find(name)->setVisible(true);
    world.control<ButtonGrid>("Pulsantiera_Valuta").addButton("€", "€", {}, {}, "");
    const std::function<void()> steps[] = {[&] { pad().touchKey("5"); },
                                           [&] { world.control<TextBox>("txtNote").paste("n"); },
                                           [&] { touch("Attivita", "2"); },
                                           [&] { touch("Pagamenti", "1"); },
                                           [&] { touch("Pagamenti_Versamenti", "2"); },
                                           [&] { touch("Valuta", "€"); },
                                           [&] { world.control<PushButton>("cmdCassetto", 4).press(); }};
    for (const auto& step : steps) {
        confirm();
        EXPECT_TRUE(notice().pending());
        step();
        EXPECT_FALSE(notice().pending()) << "step " << &step - steps;
        world.wait(50);
    }
    world.component->ChiusuraAutomatica(false);
    world.sink.then = {};
    confirm();
    EXPECT_EQ(ways(), "") << "nothing is typed";
    EXPECT_EQ(notice().text(), "Gebucht: − 10.605,00 € · Prelievo · Contanti\n"
                               "+ 10.605,00 € · Versamento · Carta");
}

TEST_F(ScreenAidsTest, TheDecimalKeyEntersTheRegionsSeparatorWhereThatIsWanted) {
    world.regional = *regionalSettings("de-CH");
    open();
    const auto entered = [&](const std::string& keys, std::u32string_view typed) {
        display().setText("");
        for (const char key : keys)
            pad().touchKey(std::string(1, key));
        for (const char32_t character : typed)
            display().typeCharacter(character);
        return display().text() + " " + pad().decimalMark();
    };
    EXPECT_EQ(entered("12.5", U"."), "12,5, ,");
    world.process.decimalKey = DecimalKey::Region;
    world.process.entryChanged();
    EXPECT_EQ(entered("12.5.", U".,0"), "12.50 .");
    EXPECT_EQ(entered("", U"1,5"), "1.5 .");
    display().select(0, 2);
    display().typeCharacter(U',');
    EXPECT_EQ(display().text(), ".5") << "the selected one gives way";
    world.dialog().requestClose();
    world.store.values = {{"DecimalKey", "Comma"}};
    world.show();
    EXPECT_EQ(entered("1.5", U""), "1,5 ,") << "the machine decides";
}

TEST_F(ScreenAidsTest, AreSwitchedOffByTheHostAtOnceAndByTheMachineAtTheNextShow) {
    open();
    world.composeMovement();
    const auto choose = [&](const ScreenAids& aids) {
        world.process.screenAids = aids;
        world.process.entryChanged();
    };
    choose({.amountReadBack = false});
    EXPECT_EQ(readBack().amount + ways(), "− Uscita;");
    choose({.direction = false, .confirmation = false});
    EXPECT_EQ(readBack().amount + ways(), "12,50 €");
    confirm();
    EXPECT_EQ(notice().text(), "");
    choose({});
    world.dialog().requestClose();
    world.store.values = {{"AmountReadBack", "0"}, {"Direction", "off"}, {"Confirmation", "0"}};
    world.show();
    world.composeMovement();
    EXPECT_FALSE(readBack().wanted) << "the keys get the whole pad";
    EXPECT_EQ(readBack().amount + ways(), "");
    confirm();
    EXPECT_EQ(notice().text(), "");
}

} // namespace
} // namespace kova::test
