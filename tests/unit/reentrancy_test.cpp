// What a host and waiting events do inside a running handler, where a scenario cannot reach.
#include "test_world.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

class Reentrancy : public testing::Test {
  protected:
    void SetUp() override {
        world.connect();
        world.show();
    }
    void confirm() { world.control<PushButton>("cmdConferma").press(); }
    std::size_t payments() { return world.control<ButtonGrid>("Pulsantiera_Pagamenti").buttons().size(); }
    World world;
};

TEST_F(Reentrancy, ASaveResetsWhatAFreshDialogShowsAndLeavesItTheRest) {
    world.control<GroupFrame>("frameCassetti").setVisible(true);
    world.sink.then = [&](const std::string& raised) {
        if (raised != "SalvaPagamento")
            return;
        world.component->DiscardForm();
        world.show();
        EXPECT_TRUE(world.control<PushButton>("cmdCassetto", 3).latched()) << "the choice is still there";
        world.control<TextBox>("txtVisore").paste("7");
        world.control<ButtonGrid>("Pulsantiera_Attivita").touch("3");
    };
    world.composeMovement();
    world.control<PushButton>("cmdCassetto", 3).press();
    confirm();
    EXPECT_EQ(world.control<TextBox>("txtVisore").text(), "7");
    EXPECT_FALSE(world.control<PushButton>("cmdCassetto", 3).latched()) << "the save has reset it";
    world.wait(100);
    EXPECT_EQ(world.process.selection.idAttivita, 3) << "the fresh controls are alive";
    EXPECT_TRUE(world.takeLog().empty());
}

TEST_F(Reentrancy, AnAnswerLeavesTheDialogAloneThatWasShownMeanwhile) {
    world.database().table("TOP 1", {"Totale", "Nome", "DataOperazione"}, {{12.5, "Anna", Null{}}});
    world.component->AttivaRecuperaFondoCassaPrecedente(true);
    world.show();
    world.insideBox = [&] {
        world.component->DiscardForm();
        world.show();
        world.control<ButtonGrid>("Pulsantiera_Attivita").touch("3");
    };
    world.control<PushButton>("cmdRecuperaFondoCassaPrecedente").press();
    world.wait(50);
    EXPECT_EQ(world.process.selection.idAttivita, 3);
    EXPECT_EQ(world.control<TextBox>("txtVisore").text(), "");
}

TEST_F(Reentrancy, ACountThatWasUnloadedIsOver) {
    auto fault = failAt(world.control<TextBox>("txtVisore"), Property::Text);
    const auto count = [&] {
        world.coin<TextBox>("txtValuta", 24).setText("2");
        world.coin<Window>("frm_CaricaMoneta").moveFocus(world.coin<TextBox>("FlatEdit", 0));
        world.coin<PushButton>("CMD_Carica").press();
    };
    world.countCoins([&] {
        count();
        world.coin<PushButton>("CMD_CaricaMoneta").press();
    });
    ASSERT_NE(world.process.coinDialog, nullptr) << "it could not be taken over";
    world.component->DiscardForm();
    world.show();
    world.countCoins([&] {
        EXPECT_EQ(world.process.coinDialog->result(), frm_CaricaMoneta::NothingLoaded);
        count();
        EXPECT_EQ(world.process.coinDialog->getImportoSecondaValuta(), 2);
    });
}

TEST_F(Reentrancy, ACountMayBeClosedInsideItsOwnMessage) {
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

TEST_F(Reentrancy, AReleasedComponentLivesAsLongAsItsHandlers) {
    const std::weak_ptr<cls_Kova_Drawer_Man> alive = world.component;
    world.sink.then = [&](const std::string&) {
        world.component.reset();
        EXPECT_FALSE(alive.expired());
    };
    world.composeMovement();
    confirm();
    EXPECT_TRUE(alive.expired());
    EXPECT_EQ(world.sink.events.size(), 2U) << "the drawer opens as well";
    EXPECT_TRUE(world.process.windows.windows().empty());
    EXPECT_EQ(world.loop.timers().running(), 0U);
}

TEST_F(Reentrancy, AChoiceInAnotherDialogWhileAGridFillsIsMarked) {
    const auto second = cls_Kova_Drawer_Man::create(world.process);
    second->Show(0);
    world.composeMovement();
    world.loop.post(
        [&] { as<ButtonGrid>(second->dialog()->window()->find("Pulsantiera_Pagamenti")).touch("2"); });
    confirm();
    EXPECT_EQ(world.process.selection.idPagamento, 2);
    EXPECT_TRUE(world.control<ButtonGrid>("Pulsantiera_Pagamenti").find("2")->marked);
}

TEST_F(Reentrancy, EventsThatWaitWhileAGridFillsAreHandledBetweenItsRows) {
    world.composeMovement();
    world.sink.then = [&](const std::string& raised) {
        if (raised != "SalvaPagamento")
            return;
        world.loop.post([&] {
            EXPECT_EQ(payments(), 1U) << "the grid was not complete";
            world.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
        });
    };
    confirm();
    EXPECT_EQ(world.process.selection.idPagamento, 1)
        << "a touch after the reset counts for the next movement";

    // A second save inside leaves each button once.
    world.composeMovement();
    world.sink.then = [&](const std::string&) {
        world.sink.then = {};
        world.loop.post([&] {
            world.composeMovement();
            world.component->InserimentoAutomatico(true);
            world.control<ButtonGrid>("Pulsantiera_Attivita").touch("3");
            world.wait(50);
        });
    };
    confirm();
    world.component->InserimentoAutomatico(false);
    EXPECT_EQ(world.sink.movements.size(), 3U);
    EXPECT_EQ(payments(), 3U);
    EXPECT_EQ(world.control<ButtonGrid>("Pulsantiera_Attivita").buttons().size(), 3U);

    world.composeMovement();
    world.loop.post([&] { world.component->DiscardForm(); });
    confirm();
    EXPECT_FALSE(world.component->dialog()->loaded());
    EXPECT_TRUE(world.takeLog().empty());
    EXPECT_EQ(world.sink.movements.size(), 4U);
}

} // namespace
} // namespace kova::test
