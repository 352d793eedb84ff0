// What is injected below the rules: windows, timers, boxes and the log that fail, once at each thing that
// changes in each scene of failures.txt. One record each, and what the cashier can still do, against
// failures.trace.
#include "scenario_parser.h"
#include "test_world.h"
#include "trace.h"
#include "trace_file.h"

#include <gtest/gtest.h>

#include <array>

namespace kova::test {
namespace {

using Log = std::vector<LogRecord>;
using Words = std::vector<std::string>;

/// What is done, line by line, and from which line on it may fail.
struct Scene {
    std::string name;
    std::vector<Words> lines{};
    std::size_t begin = 0;
};

std::vector<Scene> scenes() {
    std::ostringstream text;
    text << std::ifstream(KOVA_TRACES + "failures.txt").rdbuf();
    std::vector<Scene> all;
    for (const std::string& line : scenarioLines(text.str()))
        if (line.starts_with("== "))
            all.push_back({line.substr(3)});
        else if (line == "--")
            all.back().begin = all.back().lines.size();
        else if (auto words = scenarioWords(line); !words.empty())
            all.back().lines.push_back(std::move(words));
    return all;
}

/// One scene with one failure in it.
class Rehearsal {
  public:
    Rehearsal(const Scene& scene, const std::string& failing, int lostRecords)
        : scene_(scene), failing_(failing) {
        world.database().table("tabValute", {"Valuta"}, {{"€"}, {"CHF"}});
        world.database().setting("Attiva_Gestione_MultiCassetto", "1");
        world.component->SetSoftwareName("Cassa");
        world.onPresent = [this](Window& window) { watch(window); };
        world.insideModal = [this](Window& window) {
            if (window.name() == "frm_CaricaMoneta")
                play(scene_.lines.size(), &window);
        };
        world.connect();
        play(scene.begin);
        world.log.clear();
        failingNow_ = true;
        world.faults = {.startTimer = failing == "timer",
                        .present = failing == "window",
                        .runModal = failing == "loop",
                        .messageBox = failing == "box",
                        .leaveModal = failing == "loop that ends",
                        .log = lostRecords};
        play(scene.lines.size());
        failingNow_ = false;
        world.faults = {};
    }

    /// Records, messages, movements, and what is on the screen.
    std::string outcome() {
        for (const LogRecord& record : world.log)
            reached_.then(record.label).then(record.message);
        for (const std::string& message : world.messages)
            reached_.with("message", message);
        for (const auto& movement : world.sink.movements)
            reached_.with("movement", testing::PrintToString(movement));
        const auto& windows = world.process.windows;
        reached_.with("active", windows.active() ? windows.active()->name() : "");
        const auto& selection = world.process.selection;
        if (world.component->dialog() && world.component->dialog()->loaded())
            reached_.with("confirm", world.control<PushButton>("cmdConferma").reach() == Gesture::Done)
                .with("keyboard", world.control<OnScreenKeyboard>("Virtual_Keyboard").visible())
                .with("amount", world.control<TextBox>("txtVisore").text())
                .with("activity", selection.idAttivita)
                .with("payment", selection.idPagamento)
                .with("deposit", selection.idPagamentoVersamento)
                .with("currency", selection.Valuta)
                .with("drawer", selection.Cassetto);
        return reached_.with("counting", world.process.coinDialog != nullptr).text();
    }

    /// Whatever failed, the next dialog saves what is entered in it, once.
    void expectTheNextMovementIsSaved() {
        for (const char* option : {"DoppioInserimentoObbligatorio", "PredisponiInserimentoFondoCassaIniziale",
                                   "ChiusuraAutomatica", "InserimentoAutomatico", "ActiveColorMetroStyle"})
            world.component->set(option, Variant(false));
        world.component->DiscardForm();
        world.sink.movements.clear();
        world.connect();
        world.show();
        world.control<ButtonGrid>("Pulsantiera_Valuta").touch("€");
        world.composeMovement();
        world.control<PushButton>("cmdConferma").press();
        ASSERT_EQ(world.sink.movements.size(), 1U);
        EXPECT_EQ(world.sink.movements[0].importo, 12.5);
    }

    World world;
    std::vector<std::string> places; ///< where something changed, as WINDOW/CONTROL.PROPERTY

  private:
    void watch(Window& window) {
        watch(window, window.name());
        for (Control* const control : window.controls())
            watch(*control, window.name() + "/" + control->name() +
                                (control->index() ? std::to_string(*control->index()) : ""));
    }
    void watch(Control& control, const std::string& name) {
        static const std::array names{"Visible", "Enabled",   "Bounds",      "Caption",  "Text",
                                      "ToolTip", "BackColor", "ForeColor",   "Latched",  "Locked",
                                      "Buttons", "Marks",     "SelectedTab", "CapsLock", "Icon",
                                      "ZOrder",  "Focus",     "Title",       "Records",  "Rows"};
        watches_.push_back(control.changed.connect([this, name](Property property) {
            const std::string place = name + "." + names.at(static_cast<std::size_t>(property));
            if (failingNow_ && std::ranges::find(places, place) == places.end())
                places.push_back(place);
            if (failingNow_ && place == failing_)
                throw std::runtime_error("no drawing");
        }));
    }

    /// Plays lines up to that one, or until the modal window has closed.
    void play(std::size_t end, const Window* modal = nullptr) {
        while (next_ < end && (modal == nullptr || modal->visible())) {
            const Words& words = scene_.lines[next_++];
            try {
                verbs_.at(words[0])(words);
            } catch (const std::logic_error&) { // what it speaks of is not on the screen
            } catch (const std::exception& failure) {
                reached_.with("thrown", failure.what());
            }
        }
    }
    /// On the active window; with more words than that the third one is an index.
    template <class Kind>
    Kind& the(const Words& words, std::size_t withoutIndex) {
        Window* const active = world.process.windows.active();
        const auto index = words.size() > withoutIndex ? std::optional(std::stoi(words[2])) : std::nullopt;
        return as<Kind>(active != nullptr ? active->find(words[1], index) : nullptr);
    }
    cls_Kova_Drawer_Man& component() { return *world.component; }

    const std::map<std::string, std::function<void(const Words&)>> verbs_{
        {"show", [this](auto&) { world.show(); }},
        {"discard", [this](auto&) { component().DiscardForm(); }},
        {"discard-inside",
         [this](auto&) { world.insideModal = [this](Window&) { component().DiscardForm(); }; }},
        {"connect", [this](auto&) { component().Inizializza(world.process.SharedConnection); }},
        {"connect-string", [this](auto& words) { component().InizializzaByConnString(words[1]); }},
        {"option", [this](auto& words) { component().set(words[1], Variant(true)); }},
        {"setting", [this](auto& words) { world.database().setting(words[1], std::string_view(words[2])); }},
        {"language", [this](auto& words) { world.runtime.change(std::stoi(words[1])); }},
        {"wait", [this](auto& words) { world.wait(std::stoi(words[1])); }},
        {"compose", [this](auto&) { world.composeMovement(); }},
        {"key", [this](auto& words) { world.control<NumericKeypad>("Virtual_KeyPAD").touchKey(words[1]); }},
        {"type", [this](auto& words) { the<TextBox>(words, 3).window().typeCharacter(U'7'); }},
        {"tab", [this](auto&) { world.control<TabControl>("TabControl").touchTab(1); }},
        {"press", [this](auto& words) { the<PushButton>(words, 2).press(); }},
        {"touch", [this](auto& words) { the<ButtonGrid>(words, 3).touch(words[2]); }},
        {"text", [this](auto& words) { the<TextBox>(words, 3).paste(words.back()); }},
        {"focus",
         [this](auto& words) {
             auto& box = the<TextBox>(words, 2);
             box.window().moveFocus(box);
         }},
        {"look", [this](auto& words) { reached_.then(the<TextBox>(words, 2).text()); }}};

    const Scene& scene_;
    const std::string failing_;
    bool failingNow_ = false;
    std::size_t next_ = 0;
    std::vector<Connection> watches_;
    TraceLine reached_{"-"};
};

TEST(Failures, AtEachStepOfEachSceneLeaveTheDialogUsable) {
    std::ostringstream seen;
    for (const Scene& scene : scenes()) {
        Rehearsal whole(scene, "", 0);
        std::vector<std::pair<std::string, std::string>> outcomes{{whole.outcome(), ""}};
        for (const char* fault : {"timer", "window", "loop", "loop that ends", "box"})
            whole.places.emplace_back(fault);
        for (const std::string& place : whole.places) {
            bool recorded = true;
            for (int lost = 0; lost < 2 && recorded; ++lost) {
                SCOPED_TRACE(scene.name + ": " + place);
                Rehearsal rehearsal(scene, place, lost);
                recorded = !rehearsal.world.log.empty();
                const std::string outcome = rehearsal.outcome();
                auto known = std::ranges::find(outcomes, outcome, [](auto& one) { return one.first; });
                if (known == outcomes.end())
                    known = outcomes.insert(known, {outcome, ""});
                known->second += "\n    " + place + (lost ? ", and the log" : "");
                rehearsal.expectTheNextMovementIsSaved();
            }
        }
        seen << "== " << scene.name << '\n';
        for (const auto& [outcome, where] : outcomes)
            seen << outcome << where << '\n';
    }
    expectTrace("failures", seen.str());
}

TEST(FailuresOfHosts, AreOfAnyKind) {
    World world;
    world.connect();
    world.show();
    world.composeMovement();
    world.sink.then = [](const std::string&) { throw 1; }; // NOLINT: no exception of anybody's
    world.control<PushButton>("cmdConferma").press();
    EXPECT_EQ(world.takeLog(), (Log{{"cmdConferma_Click", "Unknown error"}}));
    EXPECT_EQ(world.control<TextBox>("txtVisore").text(), "12,5");

    world.process.selection.Cassetto = 7;
    world.show();
    EXPECT_EQ(world.takeLog().at(0).label, "set_button_Drawer");

    struct Odd final : DatabaseConnection {
        Recordset query(const Query&) override { throw 1; } // NOLINT
    };
    world.component->Inizializza(std::make_shared<Odd>());
    EXPECT_EQ(world.takeLog().at(0).label, "getDbValue");
}

TEST(CoinCount, IsThatOfTheOtherFieldsWhereOneHasNoValue) {
    World world;
    CoinCount tooShort(world.process, std::span(CoinCount::Denominations).first(16));
    CoinCount::Counts counts;
    counts[2] = counts[16] = "1";
    tooShort.load(counts);
    EXPECT_EQ(world.takeLog(), (Log{{"Coeff", "Subscript out of range"}}));
    EXPECT_EQ(tooShort.getImportoPrimaValuta(), 100);
    EXPECT_EQ(tooShort.Coeff(-1) + tooShort.Coeff(CoinCount::FieldCount), 0);
    EXPECT_TRUE(world.takeLog().empty()) << "an index that no field has is no failure";
}

} // namespace
} // namespace kova::test
