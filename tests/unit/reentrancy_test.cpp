#include "test_world.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

TEST(Reentrancy, ASaveLeavesTheFreshDialogThatItsHostShowedInside) {
    World world;
    world.database().setting("Attiva_Gestione_MultiCassetto", "1");
    world.connect();
    world.component->ChiusuraAutomatica(true);
    world.sink.then = [&](const std::string& raised) {
        if (raised != "SalvaPagamento")
            return;
        for (int i = 0; i < 2; ++i) {
            world.component->DiscardForm();
            world.component->Show(0);
        }
        EXPECT_TRUE(world.control<PushButton>("cmdCassetto", 3).latched()) << "the choice is still there";
        world.control<TextBox>("txtVisore").paste("7");
        world.control<ButtonGrid>("Pulsantiera_Attivita").touch("3");
    };
    world.show();
    world.composeMovement();
    world.control<PushButton>("cmdCassetto", 3).press();
    world.control<PushButton>("cmdConferma").press();
    EXPECT_EQ(world.sink.events, (std::vector<std::string>{"SalvaPagamento", "ApriCassetto"}));
    EXPECT_EQ(world.control<TextBox>("txtVisore").text(), "7");
    EXPECT_FALSE(world.control<PushButton>("cmdCassetto", 3).latched()) << "the save has reset it";
    world.wait(100);
    EXPECT_EQ(world.process.selection.idAttivita, 3) << "the fresh controls are alive";
    EXPECT_TRUE(world.takeLog().empty());
}

TEST(Reentrancy, ACountThatWasUnloadedIsOver) {
    World world;
    world.connect();
    world.show();
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

TEST(Reentrancy, ADialogDiscardedInsideASaveAppliesNothingMore) {
    World world;
    world.connect();
    world.show();
    world.composeMovement();
    world.control<ButtonGrid>("Pulsantiera_Attivita").touch("1"); // takes effect 50 ms later
    const auto applied = world.process.selection.idAttivita;
    world.sink.then = [&](const std::string&) {
        world.sink.then = {};
        world.component->DiscardForm();
        world.wait(100);
        EXPECT_EQ(world.process.selection.idAttivita, applied);
        EXPECT_EQ(world.loop.timers().running(), 0U);
    };
    world.control<PushButton>("cmdConferma").press();
    EXPECT_EQ(world.sink.movements.size(), 1U);
}

TEST(Reentrancy, AReleasedComponentLivesUntilItsShowReturns) {
    World world;
    world.connect();
    std::weak_ptr<cls_Kova_Drawer_Man> alive = world.component;
    auto* component = world.component.get();
    world.insideModal = [&](Window& window) {
        world.composeMovement();
        world.component.reset();
        as<PushButton>(window.find("cmdConferma")).press();
        EXPECT_FALSE(alive.expired());
    };
    component->Show(1);
    EXPECT_TRUE(alive.expired());
    EXPECT_EQ(world.sink.movements.size(), 1U) << "the movement still reached the host";
    EXPECT_TRUE(world.process.windows.windows().empty());
}

TEST(Reentrancy, ReleasingInsideAHandlerOfAModelessDialogIsSafe) {
    World world;
    world.connect();
    world.sink.then = [&](const std::string&) { world.component.reset(); };
    world.show();
    world.composeMovement();
    world.control<PushButton>("cmdConferma").press();
    EXPECT_EQ(world.component, nullptr);
    EXPECT_TRUE(world.process.windows.windows().empty());
    EXPECT_EQ(world.loop.timers().running(), 0U);
}

TEST(Reentrancy, TouchesThatWaitWhileAGridFillsAreHandledBetweenItsRows) {
    World world;
    world.connect();
    world.show();
    world.composeMovement();
    std::size_t buttonsSeen = 0;
    world.sink.then = [&](const std::string& raised) {
        if (raised != "SalvaPagamento")
            return;
        world.loop.post([&] {
            auto& payments = world.control<ButtonGrid>("Pulsantiera_Pagamenti");
            buttonsSeen = payments.buttons().size();
            payments.touch("1");
        });
    };
    world.control<PushButton>("cmdConferma").press();
    EXPECT_EQ(buttonsSeen, 1U) << "the grid was not complete";
    EXPECT_EQ(world.process.selection.idPagamento, 1)
        << "a touch after the reset counts for the next movement";

    world.sink.then = {};
    world.composeMovement();
    world.loop.post([&] { world.component->DiscardForm(); });
    world.control<PushButton>("cmdConferma").press();
    EXPECT_FALSE(world.component->dialog()->loaded());
    EXPECT_TRUE(world.takeLog().empty());
    EXPECT_EQ(world.sink.movements.size(), 2U);
}

TEST(Reentrancy, ASaveWhileAGridFillsLeavesEachButtonOnce) {
    World world;
    world.connect();
    world.component->InserimentoAutomatico(true);
    world.show();
    const auto compose = [&world] {
        world.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
        world.control<TextBox>("txtVisore").paste("12,5");
        world.control<TextBox>("txtNote").paste("RESTO");
        world.control<ButtonGrid>("Pulsantiera_Attivita").touch("3");
        world.wait(50);
    };
    world.sink.then = [&](const std::string& raised) {
        if (raised == "SalvaPagamento" && world.sink.movements.size() == 1)
            world.loop.post(compose);
    };
    compose();
    EXPECT_EQ(world.sink.movements.size(), 2U);
    EXPECT_EQ(world.control<ButtonGrid>("Pulsantiera_Pagamenti").buttons().size(), 3U);
    EXPECT_EQ(world.control<ButtonGrid>("Pulsantiera_Attivita").buttons().size(), 3U);
    EXPECT_TRUE(world.takeLog().empty());
}

} // namespace
} // namespace kova::test
