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
    void useSecondCurrency() {
        world.database().setting("ValutaAziendale", "CHF");
        world.component->DiscardForm();
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
        world.coin<PushButton>("CMD_Carica").press();
    }
    void confirm() { world.coin<PushButton>("CMD_CaricaMoneta").press(); }
    void expectOneRecord(const std::string& label, const std::string& message) {
        EXPECT_EQ(world.takeLog(), (Log{{label, message}}));
    }
    std::string display() { return world.control<TextBox>("txtVisore").text(); }
    frm_CaricaMoneta& coins() { return *world.process.coinDialog; }

    World world;
    SelectionState& selection = world.process.selection;
    Connection fault;
};

TEST_F(CoinCounting, CountsEachFieldWithTheValueOfItsRow) {
    const RegionalSettings points = *regionalSettings("en-US");
    const CoinCount count(world.process);
    world.countCoins([&] {
        std::map<int, std::vector<std::string>> labels; // by their top
        for (Control* control : coins().window()->controls())
            if (control->name().starts_with("Label"))
                labels[control->bounds().top.count].push_back(as<Label>(control).caption());
        for (std::int16_t i = 0; i < CoinCount::FieldCount; ++i) {
            const auto& named = labels[field(i).bounds().top.count];
            ASSERT_EQ(named.size(), 1U) << i;
            EXPECT_EQ(count.Coeff(i), toDouble(named[0], points)) << i;
        }
    });
    EXPECT_EQ(count.Coeff(-1), 0);
    EXPECT_EQ(count.Coeff(CoinCount::FieldCount), 0);
    EXPECT_TRUE(world.takeLog().empty()) << "an index that no field has is no failure";
}

TEST_F(CoinCounting, HandsBothTotalsOverWithTheEuroLast) {
    useSecondCurrency();
    std::vector<std::string> shown;
    std::vector<std::int32_t> paid;
    const auto watchDisplay =
        world.control<TextBox>("txtVisore").changed.connect([&](Property) { shown.push_back(display()); });
    const auto watchMark = world.control<ButtonGrid>("Pulsantiera_Pagamenti").changed.connect([&](Property) {
        paid.push_back(selection.idPagamento);
    });
    world.countCoins([&] {
        load(24, "3");
        load(24, "4");
        load(10, "6");
        confirm();
    });
    EXPECT_EQ(shown, (std::vector<std::string>{"4", "1,2"}));
    EXPECT_EQ(selection.idPagamento, 1);
    EXPECT_TRUE(std::ranges::find(paid, 3) != paid.end()) << "the franc payment was chosen in between";
    EXPECT_EQ(world.process.coinDialog, nullptr);
}

TEST_F(CoinCounting, LeavesTheGreyColumnToTouchesAlone) {
    world.countCoins([&] {
        for (int i = 0; i < CoinCount::FieldCount; ++i) {
            const bool euro = i < CoinCount::FirstOfSecondCurrency;
            EXPECT_EQ(field(i).tabStop(), euro) << i;
            EXPECT_EQ(field(i).locked(), !euro) << i;
        }
    });
    world.process.settings.ValutaAziendale = "€ "; // only the very text makes the column grey
    world.countCoins([&] { EXPECT_FALSE(field(20).locked()); });
}

TEST_F(CoinCounting, ShowsACountAgainThatCouldNotBeTaken) {
    fault = failAt(world.control<TextBox>("txtVisore"), Property::Text);
    world.countCoins([&] {
        load(8, "5");
        field(28).setText("7"); // a new start-up would make it 0
        confirm();
    });
    expectOneRecord("cmd_CaricaMoneta_Click", "no drawing");
    fault.disconnect();
    EXPECT_EQ(display(), "5") << "the amount is there";
    EXPECT_EQ(selection.idPagamento, -1) << "the payment was not reached";
    ASSERT_NE(world.process.coinDialog, nullptr);
    EXPECT_TRUE(coins().loaded());
    EXPECT_FALSE(coins().window()->visible());
    EXPECT_EQ(world.control<PushButton>("cmdConferma").reach(), Gesture::Done) << "nothing blocks the dialog";

    world.control<TextBox>("txtVisore").setText("");
    const Window* const before = coins().window();
    world.countCoins([&] {
        EXPECT_EQ(coins().window(), before);
        EXPECT_EQ(field(8).text(), "5");
        EXPECT_EQ(field(28).text(), "7");
        EXPECT_EQ(coins().IndiceMoneta(), 8);
        EXPECT_EQ(coins().getImportoPrimaValuta(), 5);
        world.coin<PushButton>("CMD_Annulla").press();
    });
    EXPECT_EQ(display(), "") << "cancelling takes nothing, though the count was confirmed before";
    EXPECT_EQ(world.process.coinDialog, nullptr);
}

TEST_F(CoinCounting, LeavesNothingBehindWhenItCannotOpen) {
    world.faults.present = true;
    world.control<PushButton>("CMD_CaricaMoneta").press();
    expectOneRecord("cmd_CaricaMoneta_Click", "no window");
    EXPECT_EQ(world.process.coinDialog, nullptr);
    world.faults.present = false;

    // The captions come before the start-up's own trap.
    world.runtime.change(1031);
    failWhenLoaded("CMD_Annulla", Property::Caption);
    world.control<PushButton>("CMD_CaricaMoneta").press();
    expectOneRecord("cmd_CaricaMoneta_Click", "no drawing");
    EXPECT_EQ(world.process.coinDialog, nullptr);
    world.onPresent = {};

    world.faults.runModal = true;
    world.control<PushButton>("CMD_CaricaMoneta").press();
    expectOneRecord("cmd_CaricaMoneta_Click", "no loop");
    EXPECT_FALSE(coins().window()->visible());
    EXPECT_EQ(world.process.windows.active(), &world.dialog());
}

TEST_F(CoinCounting, RecordsEachFailureUnderTheLabelOfItsProcedure) {
    failWhenLoaded("txtValuta", Property::BackColor, 20);
    world.countCoins([&] {
        expectOneRecord("load form CaricaMonete", "no drawing");
        EXPECT_TRUE(field(19).locked());
        EXPECT_FALSE(field(20).locked()) << "start-up ended at the failing step";
        EXPECT_EQ(world.coin<PushButton>("CMD_Annulla").icon(), PushButton::Icon::None);
    });
    world.onPresent = {};
    world.countCoins([&] {
        fault = failAt(world.coin<PushButton>("CMD_Carica"), Property::Caption);
        select(field(3));
        expectOneRecord("txtValuta_GotFocus", "no drawing");
        EXPECT_EQ(field(3).backColor(), colors::White);

        auto& entry = world.coin<TextBox>("txt_valuta");
        fault = failAt(entry, Property::Text);
        coins().window()->typeCharacter(U'4');
        expectOneRecord("Form_KeyPress", "no drawing");
        world.coin<PushButton>("CMD_Carica").press();
        expectOneRecord("CMD_Carica_Click", "no drawing");
        EXPECT_EQ(field(3).text(), "4");
        EXPECT_EQ(coins().getImportoPrimaValuta(), 0) << "not reached";
    });
    for (const char* button : {"CMD_CaricaMoneta", "CMD_Annulla"})
        world.countCoins([&] {
            fault = failAt(*coins().window(), Property::Visible);
            world.coin<PushButton>(button).press();
            expectOneRecord(std::string(button) + "_Click", "no drawing");
        });

    CoinCount tooShort(world.process, std::span(CoinCount::Denominations).first(16));
    CoinCount::Counts counts;
    counts[2] = counts[16] = "1";
    tooShort.load(counts);
    expectOneRecord("Coeff", "Subscript out of range");
    EXPECT_EQ(tooShort.getImportoPrimaValuta(), 100) << "the other fields count";
}

TEST_F(CoinCounting, LeavesTheUntrappedProceduresToTheirCaller) {
    world.countCoins([&] {
        load(3, "2");
        fault = failAt(field(4), Property::Text);
        EXPECT_THROW(world.coin<PushButton>("CMD_cancella").press(), std::runtime_error);
        EXPECT_EQ(coins().getImportoPrimaValuta(), 100) << "clearing stopped before the totals";
        fault = failAt(world.coin<PushButton>("CMD_Annulla"), Property::Caption);
        EXPECT_THROW(world.runtime.change(1031), std::runtime_error);
        fault = failAt(world.coin<PushButton>("CMD_Carica"), Property::Caption);
        EXPECT_THROW(select(world.coin<TextBox>("FlatEdit", 1)), std::runtime_error);
        fault.disconnect();
    });
    EXPECT_TRUE(world.takeLog().empty());
}

TEST_F(CoinCounting, PutsOnTheDarkSchemeAsFarAsItCanBeShown) {
    world.component->dialog()->setColorMetroStyle();
    std::vector<Connection> faults;
    world.onPresent = [&](Window& window) {
        faults.push_back(failAt(window, Property::BackColor));
        for (Control* control : window.controls())
            for (const auto property : {Property::BackColor, Property::ForeColor})
                if (control->name() != "txtValuta") // whose start-up is another matter
                    faults.push_back(failAt(*control, property));
    };
    world.countCoins([&] {
        for (const char* name : {"CMD_Annulla", "CMD_cancella", "CMD_CaricaMoneta", "CMD_Carica"}) {
            const auto& button = world.coin<PushButton>(name);
            EXPECT_TRUE(button.ownColors()) << name;
            EXPECT_EQ(button.foreColor(), colors::White) << name;
        }
    });
    EXPECT_TRUE(world.takeLog().empty());
}

TEST_F(CoinCounting, SurvivesBeingClosedInsideItsOwnHandlers) {
    world.insideBox = [&] {
        world.component->DiscardForm();
        EXPECT_EQ(world.process.windows.windows().size(), 0U);
        world.runtime.change(9); // a notifier of a closed dialog is released
    };
    world.countCoins([&] { world.coin<PushButton>("CMD_Carica").press(); });
    EXPECT_EQ(world.messages, (std::vector<std::string>{"!Selezionare il tipo di moneta!"}));
    EXPECT_EQ(world.process.coinDialog, nullptr);
    EXPECT_TRUE(world.takeLog().empty());
}

} // namespace
} // namespace kova::test
