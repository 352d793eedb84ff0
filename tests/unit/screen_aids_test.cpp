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
    const ReadBack::Content& readBack() {
        return world.control<NumericKeypad>("Virtual_KeyPAD").readBack()->content();
    }
    std::string shownFor(const std::string& typed) {
        world.control<TextBox>("txtVisore").setText(typed);
        return readBack().amount;
    }
    std::string ways() {
        std::string all;
        for (const auto& way : readBack().ways)
            all += way.text + ';';
        return all;
    }
    std::string notice() { return world.dialog().notice()->text(); }
    void confirm() { world.control<PushButton>("cmdConferma").press(); }
    void composePair() {
        world.component->DoppioInserimentoObbligatorio(true);
        world.component->SetSoftwareName("Cassa");
        open();
        world.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
        world.control<ButtonGrid>("Pulsantiera_Pagamenti_Versamenti").touch("2");
        world.wait(50);
        world.control<TextBox>("txtVisore").setText("1060");
    }
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
    world.database().setting("CifreDecimali", "3");
    world.component->Inizializza(world.process.SharedConnection);
    EXPECT_EQ(shownFor("12,5"), "12,500 €");
}

TEST_F(ScreenAidsTest, TellsTheDirectionThatWouldBeSent) {
    open();
    auto& activities = world.control<ButtonGrid>("Pulsantiera_Attivita");
    activities.touch("3");
    EXPECT_EQ(ways(), "") << "it is not applied yet";
    world.wait(50);
    EXPECT_EQ(ways(), "+ Entrata;");
    activities.touch("2");
    world.wait(50);
    EXPECT_EQ(ways(), "− Uscita;");
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
    EXPECT_EQ(notice(), "Registrato: − 12,50 € · Prelievo · Contanti");
    EXPECT_EQ(shownFor("7"), "7,00 USD") << "what the handler chose is what would be sent next";

    world.composeMovement();
    const auto shown =
        world.dialog().notice()->shown.connect([] { ADD_FAILURE() << "not before it closes"; });
    world.component->ChiusuraAutomatica(true);
    confirm();
    EXPECT_EQ(world.sink.movements.size(), 2U);
}

TEST_F(ScreenAidsTest, NamesBothMovementsOfAPair) {
    composePair();
    EXPECT_EQ(ways(), "− Uscita;+ Entrata;");
    const Rect beside = world.dialog().notice()->bounds();
    world.dialog().moveFocus(world.control<TextBox>("txtNote"));
    const Rect& hide = world.control<PushButton>("cmdNascondiTastiera").bounds();
    EXPECT_LT(beside.top, hide.bottom());
    EXPECT_LE(world.dialog().notice()->bounds().bottom(),
              world.control<OnScreenKeyboard>("Virtual_Keyboard").bounds().top)
        << "the keyboard and its button stay free";
    confirm();
    EXPECT_EQ(ways(), "") << "nothing is typed";
    EXPECT_EQ(notice(), "Registrato: − 1.060,00 € · Prelievo · Contanti\n"
                        "+ 1.060,00 € · Versamento · Carta");
}

TEST_F(ScreenAidsTest, SaysWhatWasNotSavedUntilTheCashierGoesOn) {
    composePair();
    world.component->ChiusuraAutomatica(true);
    std::size_t stored = 0;
    world.sink.then = [&](const std::string&) {
        if (world.sink.movements.size() > stored)
            throw Error(5, "disk full");
    };
    confirm();
    EXPECT_EQ(notice(), "NULLA è stato registrato: disk full");
    stored = 2;
    confirm();
    EXPECT_EQ(notice(), "Registrato SOLO: − 1.060,00 € · Prelievo · Contanti\nNON registrato: disk full");
    EXPECT_EQ(world.takeLog(), (std::vector<LogRecord>(2, {"cmdConferma_Click", "disk full"})));
    world.runtime.change(1031);
    EXPECT_EQ(notice(), "NUR gebucht: − 1.060,00 € · Prelievo · Contanti\nNICHT gebucht: disk full");
    EXPECT_TRUE(world.dialog().notice()->pending());
    world.control<NumericKeypad>("Virtual_KeyPAD").touchKey("5");
    EXPECT_FALSE(world.dialog().notice()->pending());
}

TEST_F(ScreenAidsTest, TheDecimalKeyEntersTheRegionsSeparatorWhereThatIsWanted) {
    world.regional = *regionalSettings("de-CH");
    open();
    const auto entered = [&](const std::string& keys, std::u32string_view typed) {
        auto& display = world.control<TextBox>("txtVisore");
        display.setText("");
        for (const char key : keys)
            world.control<NumericKeypad>("Virtual_KeyPAD").touchKey(std::string(1, key));
        for (const char32_t character : typed)
            display.typeCharacter(character);
        return display.text();
    };
    const auto mark = [&] { return world.control<NumericKeypad>("Virtual_KeyPAD").decimalMark(); };
    EXPECT_EQ(entered("12.5", U".") + mark(), "12,5,,");
    world.process.decimalKey = DecimalKey::Region;
    world.process.entryChanged();
    EXPECT_EQ(entered("12.5.", U".,0") + mark(), "12.50.");
    EXPECT_EQ(entered("", U"1,5"), "1.5");
    world.control<TextBox>("txtVisore").select(0, 2);
    world.control<TextBox>("txtVisore").typeCharacter(U',');
    EXPECT_EQ(world.control<TextBox>("txtVisore").text(), ".5") << "the selected one gives way";
    world.dialog().requestClose();
    world.store.values = {{"DecimalKey", "Comma"}};
    world.show();
    EXPECT_EQ(entered("1.5", U"") + mark(), "1,5,") << "the machine decides";
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
    EXPECT_EQ(notice(), "");
    choose({});
    world.dialog().requestClose();
    world.store.values = {{"AmountReadBack", "0"}, {"Direction", "off"}, {"Confirmation", "0"}};
    world.show();
    world.composeMovement();
    EXPECT_FALSE(readBack().wanted) << "the keys get the whole pad";
    EXPECT_EQ(readBack().amount + ways(), "");
    confirm();
    EXPECT_EQ(notice(), "");
}

} // namespace
} // namespace kova::test
