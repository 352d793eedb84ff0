// What is injected below the rules: windows, timers, boxes and the log that fail. One record each, and what
// the cashier can still do.
#include "test_world.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

using Log = std::vector<LogRecord>;

class Failures : public testing::Test {
  protected:
    void SetUp() override { world.connect(); }
    void expectOneRecord(const std::string& label, const std::string& message = "no drawing") {
        EXPECT_EQ(world.takeLog(), (Log{{label, message}}));
    }
    template <class Kind>
    Kind& control(const std::string& name, std::optional<int> index = {}) {
        return world.control<Kind>(name, index);
    }
    ButtonGrid& grid(const std::string& name) { return control<ButtonGrid>("Pulsantiera_" + name); }
    void press(const char* button) { control<PushButton>(button).press(); }
    bool canConfirm() { return control<PushButton>("cmdConferma").enabled(); }
    /// Makes every window of the coin count fail so from its loading on.
    void failWhenCounting(const std::string& name, Property property, std::optional<int> index = {}) {
        world.onPresent = [=, this](Window& window) {
            if (window.name() == "frm_CaricaMoneta")
                fault = failAt(*window.find(name, index), property);
        };
    }
    TextBox& field(int index) { return world.coin<TextBox>("txtValuta", index); }
    void select(Control& control) { control.window().moveFocus(control); }
    void load(int index, const std::string& count) {
        select(field(index));
        world.coin<TextBox>("txt_valuta").paste(count);
        pressCoin("CMD_Carica");
    }
    void pressCoin(const char* button) { world.coin<PushButton>(button).press(); }
    std::string display() { return control<TextBox>("txtVisore").text(); }
    frm_CaricaMoneta& coins() { return *world.process.coinDialog; }

    World world;
    cls_Kova_Drawer_Man& component = *world.component;
    SelectionState& selection = world.process.selection;
    Connection fault;
};

TEST_F(Failures, OfTheComponentNeverReachTheHost) {
    world.faults.present = true;
    EXPECT_EQ(component.Show(), "");
    expectOneRecord("RicercaCliente.Show: ", "no window");
    EXPECT_FALSE(component.dialog()->loaded());
    world.faults.present = false;
    world.show();
    EXPECT_TRUE(component.dialog()->loaded()) << "the next Show starts afresh";

    world.database().setting("CifreDecimali", "x");
    world.faults.log = 1; // the settings' own record fails
    component.InizializzaByConnString("good");
    expectOneRecord("InizializzaByConnString: ", "no log");
    world.faults.log = 1;
    component.Inizializza(world.process.SharedConnection);
    expectOneRecord("RicercaCliente.Inizializza : ", "no log");

    component.Inizializza(nullptr);
    world.log.clear();
    component.InizializzaByConnString("bad");
    expectOneRecord("InizializzaByConnString: ", "cannot open");
    component.InizializzaByConnString("good");
    EXPECT_EQ(world.takeLog().back().label, "InitOpt : ") << "the unopened connection stays in its place";

    struct Odd final : DatabaseConnection {
        Recordset query(const Query&) override { throw 1; } // NOLINT: no exception of anybody's
    };
    component.Inizializza(std::make_shared<Odd>());
    EXPECT_EQ(world.takeLog().at(0).label, "getDbValue") << "whatever is thrown";
}

TEST_F(Failures, OfStartUpActivationAndPresetKeepTheDialogUsable) {
    component.DoppioInserimentoObbligatorio(true);
    world.onPresent = [&](Window& window) {
        fault = failAt(*window.find("grd_mov_giornata"), Property::Text);
    };
    world.show();
    expectOneRecord("setupReportControl");
    EXPECT_EQ(grid("Attivita").buttons().size(), 3U) << "start-up goes on";
    world.onPresent = {};

    world.runtime.change(1031);
    fault = failAt(world.dialog(), Property::Caption);
    world.process.windows.show(world.dialog(), false);
    expectOneRecord("cmdCassetto_Click");
    EXPECT_EQ(control<Label>("Label2").caption(), "Levy");

    fault = failAt(grid("Pagamenti"), Property::Enabled);
    component.PredisponiInserimentoFondoCassaIniziale(true);
    world.show();
    expectOneRecord("PredisponiPerInserimentoFondoCassaIniziale");
    EXPECT_TRUE(grid("Attivita").enabled());
}

TEST_F(Failures, OfSelectingLeaveTheFormerSelection) {
    world.show();
    for (const char* name : {"frame_valuta", "Pulsantiera_Pagamenti_Versamenti"})
        world.dialog().find(name)->setVisible(true);
    for (const char* name : {"Pagamenti_Versamenti", "Valuta"})
        grid(name).addButton("2", "", {}, {}, "");
    fault = failAt(grid("Valuta"), Property::Marks);
    grid("Valuta").touch("2");
    expectOneRecord("Pulsantiera_Valuta_buttonClick");
    EXPECT_EQ(selection.Valuta, "€");

    world.faults.startTimer = true;
    for (const char* name : {"Attivita", "Pagamenti_Versamenti"}) {
        grid(name).touch("2");
        expectOneRecord("Pulsantiera_" + std::string(name) + "_buttonClick", "no timer");
    }
}

TEST_F(Failures, OfEntryAreRecordedUnderTheirOwnLabels) {
    world.show();
    fault = failAt(control<TextBox>("txtVisore"), Property::Text);
    control<NumericKeypad>("Virtual_KeyPAD").touchKey("5");
    expectOneRecord("Virtual_KeyPAD_Keyboard");

    control<GroupFrame>("frameCassetti").setVisible(true);
    auto& third = control<PushButton>("cmdCassetto", 3);
    fault = failAt(third, Property::Latched);
    third.press();
    expectOneRecord("set_button_Drawer");
    EXPECT_EQ(selection.Cassetto, 3);
    world.faults.log = 1;
    third.press();
    expectOneRecord("cmdCassetto_Click", "no log");

    fault.disconnect();
    selection.Cassetto = 7;
    world.show();
    EXPECT_EQ(world.takeLog().at(0).label, "set_button_Drawer");
    EXPECT_FALSE(third.latched());
}

TEST_F(Failures, OfConfirmingNeverLeaveTheButtonDisabled) {
    world.show();
    world.faults.runModal = true;
    press("cmdConferma");
    expectOneRecord("cmdConferma_Click", "no loop");
    EXPECT_TRUE(canConfirm());
    EXPECT_EQ(control<PushButton>("cmdConferma").reach(), Gesture::Done) << "no message blocks it";
    world.faults.runModal = false;

    // A host that throws what is no exception of the standard library's.
    world.composeMovement();
    world.sink.then = [](const std::string&) { throw 1; }; // NOLINT
    press("cmdConferma");
    expectOneRecord("cmdConferma_Click", "Unknown error");
    EXPECT_TRUE(canConfirm());
    EXPECT_EQ(display(), "12,5");
    world.sink = {};

    component.ChiusuraAutomatica(true);
    world.faults.startTimer = true;
    press("cmdConferma");
    expectOneRecord("cmdConferma_Click", "no timer");
    EXPECT_EQ(world.sink.movements.size(), 1U);
    EXPECT_TRUE(canConfirm());
    EXPECT_EQ(display(), "");
    world.faults.startTimer = false;

    // A failing reload after the host has stored the movement still counts as saved.
    world.composeMovement();
    fault = failAt(control<TextBox>("txtNote"), Property::Text);
    press("cmdConferma");
    expectOneRecord("cmdConferma_Click");
    EXPECT_EQ(world.sink.movements.size(), 2U);
    world.wait(10);
    EXPECT_FALSE(component.dialog()->loaded()) << "the automatic close follows";
}

TEST_F(Failures, OfClosingAreRecordedWhereTheyHappen) {
    world.show();
    component.PredisponiInserimentoFondoCassaIniziale(true);
    world.faults.messageBox = true;
    press("cmdAnnulla");
    expectOneRecord("cmdAnnulla_Click", "no box");
    component.PredisponiInserimentoFondoCassaIniziale(false);

    // The message window that cannot be closed keeps the dialog open.
    world.insideModal = [&](Window& message) {
        fault = failAt(message, Property::Visible);
        component.DiscardForm();
        expectOneRecord("AnnullaClick");
        EXPECT_TRUE(component.dialog()->loaded());
    };
    press("cmdConferma");
    world.insideModal = {};

    for (const auto& [lost, label, message] : {std::tuple{0, "ProceduraChiudi", "no drawing"},
                                               {1, "AnnullaClick", "no log"},
                                               {2, "DiscardForm: ", "no log"}}) {
        world.show();
        fault = failAt(world.dialog(), Property::Visible);
        world.faults.log = lost;
        component.DiscardForm();
        expectOneRecord(label, message);
    }
}

TEST_F(Failures, AreSilentAtTheKeyboardAndTheMessageButton) {
    component.DoppioInserimentoObbligatorio(true);
    world.show();
    auto& keyboard = control<OnScreenKeyboard>("Virtual_Keyboard");
    fault = failAt(control<PushButton>("cmdNascondiTastiera"), Property::Visible);
    world.dialog().moveFocus(control<TextBox>("txtNote"));
    EXPECT_TRUE(keyboard.visible());
    press("cmdNascondiTastiera");
    EXPECT_FALSE(keyboard.visible()) << "the next step runs";

    world.insideModal = [&](Window& message) {
        fault = failAt(world.dialog(), Property::Enabled); // of the window below, which is to be unblocked
        as<PushButton>(message.find("cmd1")).press();
        EXPECT_FALSE(message.visible());
    };
    press("cmdConferma");
    EXPECT_EQ(world.messages.size(), 1U);
    EXPECT_TRUE(world.takeLog().empty());
}

TEST_F(Failures, OfTakingACountKeepItForTheNextOpening) {
    world.show();
    fault = failAt(control<TextBox>("txtVisore"), Property::Text);
    world.countCoins([&] {
        load(8, "5");
        field(28).setText("7"); // a new start-up would make it 0
        pressCoin("CMD_CaricaMoneta");
    });
    expectOneRecord("cmd_CaricaMoneta_Click");
    fault.disconnect();
    EXPECT_EQ(display(), "5") << "the amount is there";
    EXPECT_EQ(selection.idPagamento, -1) << "the payment was not reached";
    ASSERT_NE(world.process.coinDialog, nullptr);
    EXPECT_FALSE(coins().window()->visible());
    EXPECT_EQ(control<PushButton>("cmdConferma").reach(), Gesture::Done) << "nothing blocks the dialog";

    control<TextBox>("txtVisore").setText("");
    world.countCoins([&] {
        EXPECT_EQ(field(8).text() + field(28).text(), "57");
        EXPECT_EQ(coins().IndiceMoneta(), 8);
        EXPECT_EQ(coins().getImportoPrimaValuta(), 5);
        pressCoin("CMD_Annulla");
    });
    EXPECT_EQ(display(), "") << "cancelling takes nothing, though the count was confirmed before";
    EXPECT_EQ(world.process.coinDialog, nullptr);
}

TEST_F(Failures, OfOpeningACountLeaveNothingBehind) {
    world.show();
    world.faults.present = true;
    press("CMD_CaricaMoneta");
    expectOneRecord("cmd_CaricaMoneta_Click", "no window");
    EXPECT_EQ(world.process.coinDialog, nullptr);
    world.faults.present = false;

    // The captions come before the start-up's own trap.
    world.runtime.change(1031);
    failWhenCounting("CMD_Annulla", Property::Caption);
    press("CMD_CaricaMoneta");
    expectOneRecord("cmd_CaricaMoneta_Click");
    EXPECT_EQ(world.process.coinDialog, nullptr);
    world.onPresent = {};

    world.faults.leaveModal = true;
    press("CMD_CaricaMoneta");
    EXPECT_EQ(world.process.windows.active(), &world.dialog())
        << "the loop ended with the window on the screen";
    EXPECT_EQ(world.process.coinDialog, nullptr);

    world.faults.runModal = true;
    press("CMD_CaricaMoneta");
    expectOneRecord("cmd_CaricaMoneta_Click", "no loop");
    EXPECT_FALSE(coins().window()->visible());
    EXPECT_EQ(world.process.windows.active(), &world.dialog());
}

TEST_F(Failures, OfCountingAreRecordedWhereTheyHappen) {
    world.show();
    failWhenCounting("txtValuta", Property::BackColor, 20);
    world.countCoins([&] {
        expectOneRecord("load form CaricaMonete");
        EXPECT_FALSE(field(20).locked()) << "start-up ended at the failing step";
        EXPECT_EQ(world.coin<PushButton>("CMD_Annulla").icon(), PushButton::Icon::None);
    });
    world.onPresent = {};
    world.countCoins([&] {
        fault = failAt(world.coin<PushButton>("CMD_Carica"), Property::Caption);
        select(field(3));
        expectOneRecord("txtValuta_GotFocus");
        EXPECT_EQ(field(3).backColor(), colors::White);
        fault = failAt(world.coin<TextBox>("txt_valuta"), Property::Text);
        coins().window()->typeCharacter(U'4');
        expectOneRecord("Form_KeyPress");
        pressCoin("CMD_Carica");
        expectOneRecord("CMD_Carica_Click");
        EXPECT_EQ(field(3).text(), "4");
        EXPECT_EQ(coins().getImportoPrimaValuta(), 0) << "not reached";
    });
    for (const char* button : {"CMD_CaricaMoneta", "CMD_Annulla"})
        world.countCoins([&] {
            fault = failAt(*coins().window(), Property::Visible);
            pressCoin(button);
            expectOneRecord(std::string(button) + "_Click");
        });
    CoinCount tooShort(world.process, std::span(CoinCount::Denominations).first(16));
    CoinCount::Counts counts;
    counts[2] = counts[16] = "1";
    tooShort.load(counts);
    expectOneRecord("Coeff", "Subscript out of range");
    EXPECT_EQ(tooShort.getImportoPrimaValuta(), 100) << "the other fields count";
    EXPECT_EQ(tooShort.Coeff(-1) + tooShort.Coeff(CoinCount::FieldCount), 0);
    EXPECT_TRUE(world.takeLog().empty()) << "an index that no field has is no failure";
}

TEST_F(Failures, OfUntrappedProceduresAreTheirCallers) {
    world.show();
    world.component->dialog()->setColorMetroStyle();
    failWhenCounting("FrameMoney", Property::BackColor);
    world.countCoins([&] {
        EXPECT_TRUE(world.coin<PushButton>("CMD_Carica").ownColors()) << "the other colours can be shown";
        load(3, "2");
        fault = failAt(field(4), Property::Text);
        EXPECT_THROW(pressCoin("CMD_cancella"), std::runtime_error);
        EXPECT_EQ(coins().getImportoPrimaValuta(), 100) << "clearing stopped before the totals";
        fault = failAt(world.coin<PushButton>("CMD_Annulla"), Property::Caption);
        EXPECT_THROW(world.runtime.change(1031), std::runtime_error);
        fault = failAt(world.coin<PushButton>("CMD_Carica"), Property::Caption);
        EXPECT_THROW(select(world.coin<TextBox>("FlatEdit", 1)), std::runtime_error);
        fault.disconnect();
    });
    EXPECT_TRUE(world.takeLog().empty());
}

} // namespace
} // namespace kova::test
