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

    world.sink.then = [](const std::string&) { throw Error(5, "not stored"); };
    world.composeMovement();
    const auto shown = world.dialog().notice()->shown.connect([] { ADD_FAILURE() << "nothing was saved"; });
    confirm();
    world.sink.then = {};
    world.component->ChiusuraAutomatica(true);
    confirm();
    EXPECT_EQ(world.sink.movements.size(), 3U) << "the last closes the dialog, which needs no notice";
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

TEST_F(ScreenAidsTest, SaysNothingOfAPairWhoseSecondHalfFailed) {
    composePair();
    world.sink.then = [&](const std::string&) {
        if (world.sink.movements.size() == 2)
            throw Error(5, "not stored");
    };
    confirm();
    EXPECT_EQ(notice(), "");
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
