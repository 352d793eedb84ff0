// Scenes that are played as they stand, each file against its trace.
#include "scene.h"
#include "services/conversions.h"
#include "trace_file.h"
#include "widgets/notices.h"
#include "widgets/report_grid.h"

#include <gtest/gtest.h>

namespace kova::test {
namespace {

/// Also looks at what the entry screen says beside its controls.
class AidsPlayer : public ScenePlayer {
  public:
    AidsPlayer() {
        verbs["aids"] = [this](auto&) { addAids(); };
        verbs["sends"] = [this](auto&) { addWhatIsSent(); };
        verbs["entry"] = [this](auto& words) {
            world.control<TextBox>("txtVisore").setText(words[1]);
            addAids();
        };
        verbs["select-to"] = [this](auto& words) {
            world.control<TextBox>("txtVisore").select(0, std::stoul(words[1]));
        };
        verbs["regional"] = [this](auto& words) { world.regional = *regionalSettings(words[1]); };
        verbs["registry"] = [this](auto& words) { world.store.values[words[1]] = words[2]; };
        verbs["choose"] = [this](auto& words) {
            world.process.selection.idPagamento = std::stoi(words[1]);
            world.process.selection.Valuta = words[2];
        };
        verbs["full-after"] = [this](auto& words) {
            world.sink.movements.clear();
            world.sink.then = [this, most = std::stoul(words[1])](const std::string&) {
                if (world.sink.movements.size() > most)
                    throw Error(5, "disk full");
            };
        };
        verbs["decimal-key"] = [this](auto&) {
            world.process.decimalKey = DecimalKey::Region;
            world.process.entryChanged();
        };
        verbs["host-aids"] = [this](auto& words) {
            const auto named = [&](const char* aid) { return std::ranges::find(words, aid) != words.end(); };
            world.process.screenAids = {named("amount"), named("direction"), named("confirmation")};
            world.process.entryChanged();
        };
    }

  private:
    /// And the fields that something is missing in; "!" where it was refused.
    void addWhatIsSent() {
        const auto& said = world.control<NumericKeypad>("Virtual_KeyPAD").readBack()->content();
        TraceLine line("sends");
        line.then(said.currency.text);
        for (const auto& parts : said.lines)
            for (const auto& part : parts)
                line.then(part.text.empty() ? "(" + part.missing + ")" : part.text);
        line.with("hint", said.hint);
        for (const Control* control : world.dialog().controls())
            if (control->need() != Need::None)
                line.with(control->need() == Need::Refused ? "!" : "missing", control->name());
        seen << line.text() << '\n';
    }
    void addAids() {
        const std::string& typed = world.control<TextBox>("txtVisore").text();
        auto& pad = world.control<NumericKeypad>("Virtual_KeyPAD");
        const ReadBack::Content& said = pad.readBack()->content();
        const PageNotice& notice = *world.dialog().notice();
        TraceLine line("aids");
        line.then(typed).then(said.amount).with("isNumber", said.isNumber).with("wanted", said.wanted);
        for (const auto& way : said.ways)
            line.then(way.text);
        line.with("key", pad.decimalMark()).with("notice", notice.text());
        seen << line.with("pending", notice.pending()).text() << '\n';
        if (said.amount.empty())
            return;
        const std::string number = said.amount.substr(0, said.amount.find(' ')); // before the currency
        EXPECT_EQ(parseNumber(number, world.regional), parseNumber(typed, world.regional));
    }
};

/// The dialog's own list, with its reading of numbers, dates and money, filled by hand. After each line: the
/// records' numbers in the order shown, a group's header as its value, number of records and sums in
/// brackets; the records selected, the totals, the columns' widths.
class ReportPlayer : public ScenePlayer {
  public:
    ReportPlayer() {
        world.show();
        world.control<TabControl>("TabControl").select(1);
        for (const char* caption : {"day", "valuta", "importo"})
            grid().addColumn(static_cast<int>(grid().columns().size()), caption, 20, true);
        verbs["delete"] = [this](auto&) { grid().deleteRecords(); };
        verbs["record"] = [this](auto& words) {
            grid().addRecord();
            for (std::size_t i = 1; i < words.size(); ++i)
                grid().addItem(grid().recordCount() - 1, words[i]);
        };
        gesture("populate", [this](auto&) { grid().populate(); });
        gesture("sort", [this](auto& words) { grid().touchHeader(number(words, 1)); });
        gesture("group", [this](auto& words) { grid().groupBy(number(words, 1)); });
        gesture("ungroup", [this](auto&) { grid().ungroup(); });
        gesture("row", [this](auto& words) { grid().touchRow(number(words, 1), extent(words)); });
        gesture("all", [this](auto&) { grid().selectAll(); });
        gesture("search", [this](auto& words) { grid().search(words.size() > 1 ? words[1] : ""); });
        verbs["shown"] = [this](auto&) {
            for (const auto record : grid().order())
                seen << grid().shown(static_cast<std::size_t>(record), 2) << ' ';
            seen << "| " << grid().decimals() << " decimals\n";
        };
        gesture("widths", [this](auto& words) {
            std::vector<int> widths;
            for (std::size_t i = 1; i < words.size(); ++i)
                widths.push_back(std::stoi(words[i]));
            grid().adoptWidths(widths);
        });
        gesture("resize", [this](auto& words) {
            grid().resizeColumn(number(words, 1), static_cast<int>(number(words, 2)));
        });
        verbs["texts"] = [this](auto&) {
            seen << traced(tabSeparated(grid(), {4, 0})) << '\n'
                 << traced(commaSeparated(grid(), ";")) << '\n';
        };
    }

  private:
    ReportGrid& grid() { return world.control<ReportGrid>("grd_mov_giornata"); }
    static std::size_t number(const Words& words, std::size_t at) { return std::stoul(words.at(at)); }
    static ReportGrid::Extent extent(const Words& words) {
        return words.size() == 2        ? ReportGrid::Extent::Single
               : words[2] == "toggling" ? ReportGrid::Extent::Toggle
                                        : ReportGrid::Extent::UpTo;
    }
    void gesture(const std::string& name, const std::function<void(const Words&)>& verb) {
        verbs[name] = [this, verb](const Words& words) {
            verb(words);
            for (const std::string& word : words)
                seen << word << ' ';
            seen << '|';
            for (const auto& row : grid().rows())
                if (row.group == ReportGrid::Row::None)
                    seen << ' ' << row.record;
                else
                    seen << " [" << grid().group(row).value << " x" << grid().group(row).count << " "
                         << grid().written(grid().group(row).sums) << "]";
            seen << " | selected";
            for (const std::size_t record : grid().selectedRecords())
                seen << ' ' << record;
            seen << " | " << grid().written(grid().totals()) << " |";
            for (const auto& column : grid().columns())
                seen << ' ' << column.width;
            seen << " | of " << grid().order().size() << '\n';
        };
    }
};

TEST(ScreenAids, SayWhatIsSent) {
    expectTrace("screen_aids", played<AidsPlayer>("screen_aids"));
}

TEST(ReportGrid, GoesAsEver) {
    expectTrace("report_grid", played<ReportPlayer>("report_grid"));
}

TEST(MovementsPage, SaysWhenItsListIsOfAnotherDayOrFilter) {
    World world;
    world.connect();
    world.component->SetSoftwareName("FALCA");
    world.show();
    auto& list = world.control<ReportGrid>("grd_mov_giornata");
    auto& day = world.control<DateField>("comboData");
    auto& button = world.control<PushButton>("cmdCaricaMovimenti");
    const std::string today = day.text();
    const auto queries = [&] { return world.database().texts.size(); };
    const auto stale = [&] {
        EXPECT_EQ(button.suggested(), list.stale());
        return list.stale();
    };
    day.setText("14/11/2026");
    EXPECT_FALSE(stale()) << "nothing is listed yet";
    world.control<TabControl>("TabControl").touchTab(1);
    const auto before = queries();
    day.setText("domani");
    EXPECT_TRUE(stale());
    button.press(); // refused
    EXPECT_TRUE(stale());
    day.setText("14/11/26");
    EXPECT_FALSE(stale()) << "the same day in other words";
    world.component->idCassa(3);
    EXPECT_TRUE(stale());
    world.component->idCassa(-1);
    EXPECT_FALSE(stale());
    world.component->VisualizzaMovimentiUtenteLoggato(true);
    EXPECT_TRUE(stale());
    EXPECT_EQ(queries(), before);
    button.press();
    EXPECT_FALSE(stale());
    EXPECT_EQ(list.fileName(), "movimenti-2026-11-14.csv");
}

TEST(Reentrancy, GoesAsEver) {
    expectTrace("reentrancy", played<ScenePlayer>("reentrancy"));
}

TEST(Reentrancy, AWindowThatWasClosedSaysNothingToTheNextOne) {
    World world;
    world.connect();
    world.show();
    world.composeMovement();
    Window& closed = world.dialog();
    world.sink.then = [&](const std::string&) {
        world.component->DiscardForm();
        world.show();
        closed.requestClose();
    };
    world.control<PushButton>("cmdConferma").press();
    EXPECT_TRUE(dialogOf(*world.component)->loaded());
}

TEST(Reentrancy, AChoiceInAnotherDialogWhileAGridFillsIsMarked) {
    World world;
    world.connect();
    world.show();
    const auto second = ComponentState::createComponent(world.process);
    second->Show(0);
    world.composeMovement();
    world.loop.post(
        [&] { as<ButtonGrid>(dialogOf(*second)->window()->find("Pulsantiera_Pagamenti")).touch("2"); });
    world.control<PushButton>("cmdConferma").press();
    EXPECT_EQ(world.process.selection.idPagamento, 2);
    EXPECT_TRUE(world.control<ButtonGrid>("Pulsantiera_Pagamenti").find("2")->marked);
}

} // namespace
} // namespace kova::test
