// What is injected below the rules: windows, timers, boxes and the log that fail, once at each thing that
// changes in each scene of failures.txt. One record each, and what the cashier can still do, against
// failures.trace.
#include "scene.h"
#include "trace_file.h"

#include <gtest/gtest.h>

#include <array>

namespace kova::test {
namespace {

using Log = std::vector<LogRecord>;
/// One scene with one failure in it.
class Rehearsal : public ScenePlayer {
  public:
    Rehearsal(const Scene& scene, const std::string& failing, int lostRecords) : failing_(failing) {
        world.onPresent = [this](Window& window) { watch(window); };
        play(scene, scene.begin);
        world.log.clear();
        failingNow_ = true;
        world.faults = {.startTimer = failing == "timer",
                        .present = failing == "window",
                        .runModal = failing == "loop",
                        .messageBox = failing == "box",
                        .leaveModal = failing == "loop that ends",
                        .log = lostRecords};
        play(scene, scene.lines.size());
        failingNow_ = false;
        world.faults = {};
        recorded = !world.log.empty();
        addState();
    }

    /// Whatever failed, the next dialog saves what is entered in it, once.
    void expectTheNextMovementIsSaved() {
        for (const char* option : {"DoppioInserimentoObbligatorio", "PredisponiInserimentoFondoCassaIniziale",
                                   "ChiusuraAutomatica", "InserimentoAutomatico", "ActiveColorMetroStyle"})
            world.component->set(option, Variant(false));
        world.sink.movements.clear();
        play({"discard", "connect", "show", "compose", "press cmdConferma"}, 0);
        ASSERT_EQ(world.sink.movements.size(), 1U);
        EXPECT_EQ(world.sink.movements[0].importo, 12.5);
    }

    std::vector<std::string> places; ///< where something changed, as WINDOW/CONTROL.PROPERTY
    bool recorded = false;           ///< by the error log

  private:
    void watch(Window& window) {
        watch(window, window.name());
        for (Control* const control : window.controls())
            watch(*control, window.name() + "/" + control->name() +
                                (control->index() ? std::to_string(*control->index()) : ""));
    }
    void watch(Control& control, const std::string& name) {
        static const std::array names{
            "Visible", "Enabled", "Bounds",  "Caption", "Text",        "ToolTip",  "BackColor", "ForeColor",
            "Latched", "Locked",  "Buttons", "Marks",   "SelectedTab", "CapsLock", "Icon",      "ZOrder",
            "Focus",   "Title",   "Rest",    "Records", "Order",       "Rows",     "SpokenName"};
        watches_.push_back(control.changed.connect([this, name](Property property) {
            const std::string place = name + "." + names.at(static_cast<std::size_t>(property));
            if (failingNow_ && std::ranges::find(places, place) == places.end())
                places.push_back(place);
            if (failingNow_ && place == failing_)
                throw std::runtime_error("no drawing");
        }));
    }

    const std::string failing_;
    bool failingNow_ = false;
    std::vector<Connection> watches_;
};

TEST(Failures, AtEachStepOfEachSceneLeaveTheDialogUsable) {
    std::ostringstream seen;
    for (const Scene& scene : scenes("failures")) {
        Rehearsal whole(scene, "", 0);
        std::vector<std::pair<std::string, std::string>> outcomes{{whole.seen.str(), ""}};
        for (const char* fault : {"timer", "window", "loop", "loop that ends", "box"})
            whole.places.emplace_back(fault);
        for (const std::string& place : whole.places) {
            bool recorded = true;
            for (int lost = 0; lost < 2 && recorded; ++lost) {
                SCOPED_TRACE(scene.name + ": " + place);
                Rehearsal rehearsal(scene, place, lost);
                recorded = rehearsal.recorded;
                const std::string outcome = rehearsal.seen.str();
                auto known = std::ranges::find(outcomes, outcome, [](auto& one) { return one.first; });
                if (known == outcomes.end())
                    known = outcomes.insert(known, {outcome, ""});
                known->second += "    " + place + (lost ? ", and the log\n" : "\n");
                rehearsal.expectTheNextMovementIsSaved();
            }
        }
        seen << "== " << scene.name << '\n';
        for (const auto& [outcome, where] : outcomes)
            seen << outcome << where;
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
