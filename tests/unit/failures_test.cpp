#include "test_world.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

using Log = std::vector<LogRecord>;

class Failures : public testing::Test {
  protected:
    void SetUp() override { world.connect(); }
    void expectOneRecord(const std::string& label, const std::string& message) {
        EXPECT_EQ(world.takeLog(), (Log{{label, message}}));
    }
    template <class Kind>
    Kind& control(const std::string& name, std::optional<int> index = {}) {
        return world.control<Kind>(name, index);
    }
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
}

TEST_F(Failures, OfStartUpEndItAtTheFailingStep) {
    world.database().failures = {{"[dbo].[tabValute]", {}}};
    world.show();
    expectOneRecord("Load_Pagamenti", "injected");
    EXPECT_EQ(selection.Valuta, "€");
    component.DiscardForm();

    world.database().failures.clear();
    world.onPresent = [&](Window& window) {
        fault = failAt(*window.find("grd_mov_giornata"), Property::Text);
    };
    world.show();
    expectOneRecord("setupReportControl", "no drawing");
    EXPECT_EQ(control<ButtonGrid>("Pulsantiera_Attivita").buttons().size(), 3U) << "start-up goes on";
}

TEST_F(Failures, OfActivationAndPresetKeepTheDialogUsable) {
    component.DoppioInserimentoObbligatorio(true);
    world.show();
    world.runtime.change(1031);
    fault = failAt(world.dialog(), Property::Caption);
    world.process.windows.show(world.dialog(), false);
    expectOneRecord("cmdCassetto_Click", "no drawing");
    EXPECT_EQ(control<Label>("Label2").caption(), "Levy");
    EXPECT_EQ(world.dialog().caption(), "Zweit-Schublade Bewegung") << "the model is changed before its view";

    fault = failAt(control<ButtonGrid>("Pulsantiera_Pagamenti"), Property::Enabled);
    component.PredisponiInserimentoFondoCassaIniziale(true);
    world.show();
    expectOneRecord("PredisponiPerInserimentoFondoCassaIniziale", "no drawing");
    EXPECT_TRUE(control<ButtonGrid>("Pulsantiera_Attivita").enabled());
}

TEST_F(Failures, OfSelectingLeaveTheMarkAndTheFormerSelection) {
    world.show();
    for (const char* grid : {"Pulsantiera_Attivita", "Pulsantiera_Pagamenti",
                             "Pulsantiera_Pagamenti_Versamenti", "Pulsantiera_Valuta"}) {
        control<ButtonGrid>(grid).setVisible(true);
        control<ButtonGrid>(grid).addButton("", "no key", {}, {}, "");
    }
    control<GroupFrame>("frame_valuta").setVisible(true);
    control<ButtonGrid>("Pulsantiera_Pagamenti").touch("2");
    control<ButtonGrid>("Pulsantiera_Pagamenti").touch("");
    expectOneRecord("Pulsantiera_Pagamenti_buttonClick", "Type mismatch");
    EXPECT_EQ(selection.idPagamento, 2);
    EXPECT_TRUE(control<ButtonGrid>("Pulsantiera_Pagamenti").find("")->marked);

    control<ButtonGrid>("Pulsantiera_Attivita").touch("");
    world.wait(50);
    expectOneRecord("TimerAttivita_Timer", "Type mismatch");
    control<ButtonGrid>("Pulsantiera_Pagamenti_Versamenti").touch("");
    world.wait(50);
    expectOneRecord("TimerVersamenti_Timer", "Type mismatch");
    EXPECT_EQ(selection.idAttivita, -1);
    EXPECT_EQ(selection.idPagamentoVersamento, -1);

    fault = failAt(control<ButtonGrid>("Pulsantiera_Valuta"), Property::Marks);
    control<ButtonGrid>("Pulsantiera_Valuta").touch("");
    expectOneRecord("Pulsantiera_Valuta_buttonClick", "no drawing");
    EXPECT_EQ(selection.Valuta, "€");

    world.faults.startTimer = true;
    control<ButtonGrid>("Pulsantiera_Attivita").touch("2");
    expectOneRecord("Pulsantiera_Attivita_buttonClick", "no timer");
    control<ButtonGrid>("Pulsantiera_Pagamenti_Versamenti").touch("2");
    expectOneRecord("Pulsantiera_Pagamenti_Versamenti_buttonClick", "no timer");
}

TEST_F(Failures, OfEntryAreRecordedUnderTheirOwnLabels) {
    world.show();
    fault = failAt(control<TextBox>("txtVisore"), Property::Text);
    control<NumericKeypad>("Virtual_KeyPAD").touchKey("5");
    expectOneRecord("Virtual_KeyPAD_Keyboard", "no drawing");

    control<GroupFrame>("frameCassetti").setVisible(true);
    fault = failAt(control<PushButton>("cmdCassetto", 3), Property::Latched);
    control<PushButton>("cmdCassetto", 3).press();
    expectOneRecord("set_button_Drawer", "no drawing");
    EXPECT_EQ(selection.Cassetto, 3);
    world.faults.log = 1;
    control<PushButton>("cmdCassetto", 3).press();
    expectOneRecord("cmdCassetto_Click", "no log");

    fault.disconnect();
    selection.Cassetto = 7;
    world.show();
    EXPECT_EQ(world.takeLog().at(0).label, "set_button_Drawer");
    for (int drawer = 1; drawer <= 4; ++drawer)
        EXPECT_FALSE(control<PushButton>("cmdCassetto", drawer).latched());
}

TEST_F(Failures, OfConfirmingNeverLeaveTheButtonDisabled) {
    world.show();
    world.faults.runModal = true;
    control<PushButton>("cmdConferma").press();
    expectOneRecord("cmdConferma_Click", "no loop");
    EXPECT_TRUE(control<PushButton>("cmdConferma").enabled());
    world.faults.runModal = false;

    component.ChiusuraAutomatica(true);
    world.composeMovement();
    world.faults.startTimer = true;
    control<PushButton>("cmdConferma").press();
    expectOneRecord("cmdConferma_Click", "no timer");
    EXPECT_EQ(world.sink.movements.size(), 1U);
    EXPECT_TRUE(control<PushButton>("cmdConferma").enabled());
    EXPECT_EQ(control<TextBox>("txtVisore").text(), "");
    world.faults.startTimer = false;

    // A failing reload after the host has stored the movement still counts as saved.
    world.composeMovement();
    fault = failAt(control<TextBox>("txtNote"), Property::Text);
    control<PushButton>("cmdConferma").press();
    expectOneRecord("cmdConferma_Click", "no drawing");
    EXPECT_EQ(world.sink.movements.size(), 2U);
    world.wait(10);
    EXPECT_FALSE(component.dialog()->loaded()) << "the automatic close follows";
}

TEST_F(Failures, OfClosingAreRecordedWhereTheyHappen) {
    world.show();
    component.PredisponiInserimentoFondoCassaIniziale(true);
    world.faults.messageBox = true;
    control<PushButton>("cmdAnnulla").press();
    expectOneRecord("cmdAnnulla_Click", "no box");
    EXPECT_TRUE(component.dialog()->loaded());
    component.PredisponiInserimentoFondoCassaIniziale(false);

    // The message window that cannot be closed keeps the dialog open.
    world.insideModal = [&](Window& message) {
        fault = failAt(message, Property::Visible);
        component.DiscardForm();
        expectOneRecord("AnnullaClick", "no drawing");
        EXPECT_TRUE(component.dialog()->loaded());
    };
    control<PushButton>("cmdConferma").press();
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
    auto& hide = control<PushButton>("cmdNascondiTastiera");
    fault = failAt(hide, Property::Visible);
    world.dialog().moveFocus(control<TextBox>("txtNote"));
    EXPECT_TRUE(keyboard.visible());
    hide.press();
    EXPECT_FALSE(keyboard.visible()) << "the next step runs";

    world.insideModal = [&](Window& message) {
        fault = failAt(world.dialog(), Property::Enabled); // of the window below, which is to be unblocked
        as<PushButton>(message.find("cmd1")).press();
        EXPECT_FALSE(message.visible());
    };
    control<PushButton>("cmdConferma").press();
    EXPECT_EQ(world.messages.size(), 1U);
    EXPECT_TRUE(world.takeLog().empty());
}

TEST_F(Failures, OfASettingLeaveARecordWhateverIsThrown) {
    struct Odd final : DatabaseConnection {
        Recordset query(const Query&) override { throw 1; } // NOLINT: no exception of anybody's
    };
    component.Inizializza(std::make_shared<Odd>());
    EXPECT_EQ(world.takeLog().at(0).label, "getDbValue");
}

} // namespace
} // namespace kova::test
