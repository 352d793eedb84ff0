// What stands on every screen, in every layout and language, against every_control.trace.
#include "coin_count/coin_controls.h"
#include "drawer_dialog/drawer_controls.h"
#include "look.h"
#include "player/trace.h"
#include "services/texts.h"
#include "test_world.h"
#include "trace_file.h"
#include "widgets/notices.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

class EveryControl : public testing::Test {
  protected:
    void add(const std::string& line) { seen << line << '\n'; }
    void addWindow(Window& window) {
        add(TraceLine(describedControl(window))
                .with("focus", window.focus() ? window.focus()->name() : "")
                .with("severity", static_cast<int>(window.severity()))
                .text());
        for (Control* control : window.controls())
            add(look(*control));
        if (window.notice() != nullptr)
            add("notice " + traced(window.notice()->bounds()));
    }
    /// The dialog, its first message, and the coin count with the caption and value of each field.
    void addScreens(World& world, const std::string& title) {
        add("== " + title);
        world.connect();
        world.show();
        addWindow(world.dialog());
        world.insideModal = [&](Window& message) { addWindow(message); };
        world.control<PushButton>("cmdConferma").press();
        world.countCoins([&] {
            addWindow(*world.process.coinDialog->window());
            const CoinCount count(world.process);
            for (std::int16_t i = 0; i < CoinCount::FieldCount; ++i) {
                auto& field = world.coin<TextBox>("txtValuta", i);
                field.window().moveFocus(field);
                add(TraceLine(field.inert() ? count.caption(i)
                                            : world.coin<PushButton>("CMD_Carica").caption())
                        .then(count.Coeff(i))
                        .text());
            }
            addWindow(*world.process.coinDialog->window());
        });
        EXPECT_EQ(world.takeLog().size(), 0U);
    }
    std::ostringstream seen;
};

TEST_F(EveryControl, LooksAsItDid) {
    World italian;
    DrawerControls dialog(italian.loop);
    CoinControls coins;
    add("== As designed");
    addWindow(dialog.window);
    addWindow(coins.window);

    addScreens(italian, "Italian");
    add(TraceLine("log").then(italian.logApplication).then(italian.logFile).text());
    italian.control<TabControl>("TabControl").touchTab(1);
    italian.process.SoftwareName = "FALCA";
    italian.control<PushButton>("cmdCaricaMovimenti").press();
    addWindow(italian.dialog());
    EXPECT_EQ(italian.process.sqlDateFormatter().mode(), 1);

    World german;
    german.runtime.change(1031);
    german.component->ActiveColorMetroStyle(true);
    german.database().table("tabValute", {"Valuta"}, {{"€"}, {"CHF"}});
    german.database().setting("ValutaAziendale", "CHF");
    german.database().setting("Attiva_Gestione_MultiCassetto", "1");
    addScreens(german, "German, dark, with several currencies and drawers");

    World pairs;
    pairs.component->DoppioInserimentoObbligatorio(true);
    pairs.component->SetSoftwareName("Cassa");
    pairs.database().setting("CifreDecimaliQuantita", "3");
    pairs.runtime.change(9);
    addScreens(pairs, "English, double movement");
    EXPECT_EQ(pairs.process.numberFormat().quantityDecimals(), 3);
    bool front = false;
    const auto watch = pairs.control<OnScreenKeyboard>("Virtual_Keyboard").changed.connect([&](Property p) {
        front = front || p == Property::ZOrder;
    });
    pairs.dialog().moveFocus(pairs.control<TextBox>("txtNote"));
    EXPECT_TRUE(front) << "the keyboard lies over the payments";
    addWindow(pairs.dialog());
    add("== and with the language changed");
    pairs.runtime.change(1031);
    addWindow(pairs.dialog());

    const auto addInEachLanguage = [&](const std::string& what, const auto& inLanguage) {
        TraceLine line(what);
        for (const int languageId : {1040, 1031, 9})
            line.then(inLanguage(languageId));
        add(line.text());
    };
    for (int id = 1; id <= 61; ++id)
        addInEachLanguage("text " + std::to_string(id),
                          [&](int languageId) { return italian.process.strings.GetString(id, languageId); });
    for (int word = 0; word <= static_cast<int>(Word::SaveList); ++word)
        addInEachLanguage("word " + std::to_string(word),
                          [&](int languageId) { return inWords(static_cast<Word>(word), languageId); });

    expectTrace("every_control", seen.str());
}

} // namespace
} // namespace kova::test
