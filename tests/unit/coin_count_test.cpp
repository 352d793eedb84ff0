// A coin count of which something fails: the counted money must not be lost, and nothing may block the
// dialog.
#include "services/conversions.h"
#include "test_world.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

using Log = std::vector<LogRecord>;

class CoinCounting : public testing::Test {
  protected:
    void SetUp() override {
        world.connect();
        world.show();
    }
    /// Makes every window of the coin count fail so from its loading on.
    void failWhenLoaded(const std::string& name, Property property, std::optional<int> index = {}) {
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
        press("CMD_Carica");
    }
    void press(const char* button) { world.coin<PushButton>(button).press(); }
    void open() { world.control<PushButton>("CMD_CaricaMoneta").press(); }
    void expectOneRecord(const std::string& label, const std::string& message = "no drawing") {
        EXPECT_EQ(world.takeLog(), (Log{{label, message}}));
    }
    std::string display() { return world.control<TextBox>("txtVisore").text(); }
    frm_CaricaMoneta& coins() { return *world.process.coinDialog; }

    World world;
    Connection fault;
};

TEST_F(CoinCounting, ShowsACountAgainThatCouldNotBeTaken) {
    fault = failAt(world.control<TextBox>("txtVisore"), Property::Text);
    world.countCoins([&] {
        load(8, "5");
        field(28).setText("7"); // a new start-up would make it 0
        press("CMD_CaricaMoneta");
    });
    expectOneRecord("cmd_CaricaMoneta_Click");
    fault.disconnect();
    EXPECT_EQ(display(), "5") << "the amount is there";
    EXPECT_EQ(world.process.selection.idPagamento, -1) << "the payment was not reached";
    ASSERT_NE(world.process.coinDialog, nullptr);
    EXPECT_FALSE(coins().window()->visible());
    EXPECT_EQ(world.control<PushButton>("cmdConferma").reach(), Gesture::Done) << "nothing blocks the dialog";

    world.control<TextBox>("txtVisore").setText("");
    world.countCoins([&] {
        EXPECT_EQ(field(8).text() + field(28).text(), "57");
        EXPECT_EQ(coins().IndiceMoneta(), 8);
        EXPECT_EQ(coins().getImportoPrimaValuta(), 5);
        press("CMD_Annulla");
    });
    EXPECT_EQ(display(), "") << "cancelling takes nothing, though the count was confirmed before";
    EXPECT_EQ(world.process.coinDialog, nullptr);
}

TEST_F(CoinCounting, LeavesNothingBehindWhenItCannotOpenOrItsLoopBreaks) {
    world.faults.present = true;
    open();
    expectOneRecord("cmd_CaricaMoneta_Click", "no window");
    EXPECT_EQ(world.process.coinDialog, nullptr);
    world.faults.present = false;

    // The captions come before the start-up's own trap.
    world.runtime.change(1031);
    failWhenLoaded("CMD_Annulla", Property::Caption);
    open();
    expectOneRecord("cmd_CaricaMoneta_Click");
    EXPECT_EQ(world.process.coinDialog, nullptr);
    world.onPresent = {};

    world.faults.leaveModal = true;
    open();
    EXPECT_EQ(world.process.windows.active(), &world.dialog())
        << "the loop ended with the window on the screen";
    EXPECT_EQ(world.process.coinDialog, nullptr);

    world.faults.runModal = true;
    open();
    expectOneRecord("cmd_CaricaMoneta_Click", "no loop");
    EXPECT_FALSE(coins().window()->visible());
    EXPECT_EQ(world.process.windows.active(), &world.dialog());
}

TEST_F(CoinCounting, RecordsEachFailureUnderTheLabelOfItsProcedure) {
    failWhenLoaded("txtValuta", Property::BackColor, 20);
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
        press("CMD_Carica");
        expectOneRecord("CMD_Carica_Click");
        EXPECT_EQ(field(3).text(), "4");
        EXPECT_EQ(coins().getImportoPrimaValuta(), 0) << "not reached";
    });
    for (const char* button : {"CMD_CaricaMoneta", "CMD_Annulla"})
        world.countCoins([&] {
            fault = failAt(*coins().window(), Property::Visible);
            press(button);
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

TEST_F(CoinCounting, LeavesTheUntrappedProceduresToTheirCaller) {
    world.component->dialog()->setColorMetroStyle();
    failWhenLoaded("FrameMoney", Property::BackColor);
    world.countCoins([&] {
        EXPECT_TRUE(world.coin<PushButton>("CMD_Carica").ownColors()) << "the other colours can be shown";
        load(3, "2");
        fault = failAt(field(4), Property::Text);
        EXPECT_THROW(press("CMD_cancella"), std::runtime_error);
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
