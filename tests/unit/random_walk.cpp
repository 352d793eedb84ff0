#include "random_walk.h"

#include "look.h"
#include "report_checks.h"
#include "services/conversions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>
#include <sstream>

namespace kova::test {
namespace {

const std::u32string characters = U"7,a\b\n.";
const std::array languages{1040, 1031, 9, 1033};
const std::array waits{1, 10, 49, 50, 60}; // ms
const std::vector<std::string> softwareNames{"Kova", "CASSA", "MIRANTE"};

/// Does anything that a cashier, a host or the surroundings may do, in any order, and watches what must
/// always hold: no movement without its validations, no more movements than one confirmation may send, a
/// confirm button that is enabled whenever nothing runs, a list whose groups and sums are those of its
/// records.
class RandomWalk {
  public:
    RandomWalk(const Ground& ground, unsigned seed, Tally& tally)
        : ground_(ground), random_(seed), tally_(tally) {
        world_.database().table("tabValute", {"Valuta"}, {{"€"}, {"CHF"}});
        world_.database().setting("Attiva_Gestione_MultiCassetto", "1");
        addMovements(world_.database());
        world_.connect();
        world_.insideModal = [this](Window& window) { insideModal(window); };
        world_.sink.then = [this](const std::string& event) { receive(event); };
        world_.onPresent = [this](Window& window) {
            drawn_.insert_or_assign(&window, std::make_unique<Drawn>(window));
            if (window.name() == "frm_Drawer_Management")
                watch(as<PushButton>(window.find("cmdConferma")));
        };
    }

    void walk(int steps) {
        stepsLeft_ = steps;
        while (stepsLeft_ > 0)
            step();
        world_.component->DiscardForm();
        wait(1000);
        EXPECT_EQ(world_.loop.timers().running(), 0U);
        EXPECT_TRUE(world_.process.windows.windows().empty());
    }

  private:
    int any(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    bool oneIn(int count) { return any(count) == 0; }
    template <class Range>
    const auto& pick(const Range& range) {
        return *std::next(std::begin(range), any(static_cast<int>(std::size(range))));
    }

    /// One of them, each as often as it says.
    void doOne(const std::vector<std::pair<int, std::function<void()>>>& choices) {
        int number = any(std::accumulate(choices.begin(), choices.end(), 0,
                                         [](int sum, const auto& choice) { return sum + choice.first; }));
        std::ranges::find_if(choices, [&](const auto& choice) {
            return (number -= choice.first) < 0;
        })->second();
    }
    Gesture press(const std::string& name) { return cashier_.press(world_.control<PushButton>(name)); }

    void step() {
        --stepsLeft_;
        if (!dialogOf(*world_.component) || !dialogOf(*world_.component)->loaded())
            world_.component->Show(depth_ > 4 ? 0 : any(3) - 1);
        else if (oneIn(12))
            hostStep();
        else
            cashierStep();
        if (depth_ == 0) {
            EXPECT_TRUE(!dialogOf(*world_.component)->loaded() ||
                        world_.control<PushButton>("cmdConferma").enabled());
            EXPECT_EQ(world_.process.coinDialog, nullptr) << "a count outlived its opening";
        }
        if (stepsLeft_ % 40 == 0)
            for (Window* const window : world_.process.windows.windows())
                if (const auto drawn = drawn_.find(window); drawn != drawn_.end())
                    drawn->second->expectUpToDate();
        if (ground_.transcript != nullptr)
            ground_.transcript->push_back(seen());
        world_.log.clear();
        world_.messages.clear();
        world_.database().texts.clear();
        world_.sink.movements.clear();
        world_.sink.events.clear();
        world_.sink.days.clear();
    }

    void wait(int milliseconds) { cashier_.wait(std::chrono::milliseconds(milliseconds)); }

    /// What has come of a step, as a person outside sees it.
    [[nodiscard]] std::string seen() const {
        std::ostringstream text;
        text << testing::PrintToString(world_.log) << testing::PrintToString(world_.messages)
             << testing::PrintToString(world_.database().texts)
             << testing::PrintToString(world_.sink.movements) << testing::PrintToString(world_.sink.events)
             << testing::PrintToString(world_.sink.days);
        for (Window* const window : world_.process.windows.windows()) {
            text << ' ' << window->name() << (window->focus() != nullptr ? window->focus()->name() : "");
            for (Control* const control : window->controls())
                text << control->visible() << control->enabled();
        }
        if (dialogOf(*world_.component)->loaded())
            text << world_.control<TextBox>("txtVisore").text() << world_.control<TextBox>("txtNote").text()
                 << testing::PrintToString(world_.control<ReportGrid>("grd_mov_giornata").order());
        return text.str();
    }

    void hostStep() {
        auto& component = *world_.component;
        static const std::vector<std::string> switches{"UsaSoloValutaAziendale",
                                                       "ChiusuraAutomatica",
                                                       "InserimentoAutomatico",
                                                       "DoppioInserimentoObbligatorio",
                                                       "ActiveColorMetroStyle",
                                                       "AttivaRecuperaFondoCassaPrecedente",
                                                       "PredisponiInserimentoFondoCassaIniziale"};
        doOne({{2, [&] { component.set(pick(switches), Variant(!oneIn(3))); }},
               {1, [&] { component.idPagamentoPredefinito(any(4) - 1); }},
               {1, [&] { component.SetSoftwareName(pick(softwareNames)); }},
               {1, [&] { world_.runtime.change(pick(languages)); }},
               {1, [&] { failQueries(); }},
               {1, [&] { oneIn(3) ? world_.connect() : static_cast<void>(component.Show(any(3) - 1)); }},
               {1, [&] { discardOrPost(); }}});
    }

    void discardOrPost() {
        if (oneIn(4))
            world_.component->DiscardForm();
        else if (ground_.post)
            ground_.post([this] { cashierStep(); });
    }

    void failQueries() {
        auto& failures = world_.database().failures;
        failures.clear();
        if (oneIn(3))
            failures.push_back(
                {pick(std::array{"tabPagamenti", "tabActivityDrawer", "tabValute", "WHERE id", "Operation"}),
                 oneIn(2) ? std::nullopt : std::optional<std::size_t>(static_cast<std::size_t>(any(3)))});
    }

    /// Anything in the coin count, wherever it stands among the windows.
    void coinStep() {
        Window* const window = world_.process.coinDialog ? world_.process.coinDialog->window() : nullptr;
        if (window == nullptr)
            return;
        static const std::vector<std::string> buttons{"CMD_Carica",   "CMD_Carica",  "CMD_Carica",
                                                      "CMD_cancella", "CMD_Annulla", "CMD_CaricaMoneta"};
        static const std::vector<std::string> keys{"1", "0", "5", ".", "*", "BACKSPACE"};
        static const std::vector<std::string> counts{"3", "2,5", "-1", "abc", "", "1e3", "1e308"};
        const auto field = [this] { return &world_.coin<TextBox>("txtValuta", any(CoinCount::FieldCount)); };
        doOne({{60, [&] { cashier_.touchKey(world_.coin<NumericKeypad>("Virtual_KeyPAD"), pick(keys)); }},
               {30, [&] { cashier_.focus(*field()); }},
               {30, [&] { cashier_.type(*window, pick(characters)); }},
               {10, [&] { field()->paste(pick(counts)); }},
               {5, [&] { cashier_.focus(world_.coin<TextBox>("FlatEdit", any(3))); }},
               {1, [&] { cashier_.requestClose(*window); }},
               {15 + 29, [] {}},
               {30, [&] { pressInCount(pick(buttons)); }}});
    }

    /// What a confirmed count comes to is computed here in another way: in hundredths.
    void pressInCount(const std::string& name) {
        const auto coins = world_.process.coinDialog;
        auto& button = world_.coin<PushButton>(name);
        double hundredths = 0;
        if (name == "CMD_CaricaMoneta" && button.reach() == Gesture::Done)
            for (int i = 0; i < CoinCount::FirstOfSecondCurrency; ++i) {
                const double coin =
                    std::round(CoinCount::Denominations.at(static_cast<std::size_t>(i)) * 100);
                const auto count = parseNumber(world_.coin<TextBox>("txtValuta", i).text(), world_.regional);
                hundredths += count.value_or(0) * coin;
            }
        const bool pressed = cashier_.press(button) == Gesture::Done;
        if (pressed && name == "CMD_CaricaMoneta" && std::fabs(hundredths) < 1e12) {
            ++tally_.counted;
            EXPECT_NEAR(coins->getImportoPrimaValuta(), hundredths / 100, 1e-3);
        }
    }

    void cashierStep() {
        if (world_.process.coinDialog && !oneIn(5))
            return coinStep();
        if (!dialogOf(*world_.component)->loaded())
            return;
        auto& tabs = world_.control<TabControl>("TabControl");
        if (tabs.selected() == 1 && oneIn(3))
            return listStep();
        static const std::vector<std::string> grids{"Pulsantiera_Attivita", "Pulsantiera_Pagamenti",
                                                    "Pulsantiera_Pagamenti_Versamenti", "Pulsantiera_Valuta"};
        static const std::vector<std::string> buttons{"cmdNascondiTastiera", "cmdAnnulla", "cmdAnteprima",
                                                      "cmd_print", "PushButton1"};
        static const std::vector<std::string> keys{"1", "0", "5", ".", "*", "BACKSPACE", ","};
        doOne({{60, [&] { touchAny(world_.control<ButtonGrid>(pick(grids))); }},
               {20, [&] { cashier_.touchKey(world_.control<NumericKeypad>("Virtual_KeyPAD"), pick(keys)); }},
               {20, [&] { cashier_.touchKey(world_.control<OnScreenKeyboard>("Virtual_Keyboard"), U'x'); }},
               {20, [&] { cashier_.focus(world_.control<TextBox>(oneIn(2) ? "txtNote" : "txtVisore")); }},
               {20, [&] { cashier_.type(world_.dialog(), pick(characters)); }},
               {20, [&] { cashier_.press(world_.control<PushButton>("cmdCassetto", 1 + any(4))); }},
               {20, [&] { wait(pick(waits)); }},
               {20, [&] { load([&] { return cashier_.selectTab(tabs, any(2)); }); }},
               {5, [&] { press(pick(buttons)); }},
               {1, [&] { cashier_.requestClose(world_.dialog()); }},
               {5, [&] { press("CMD_CaricaMoneta"); }},
               {15 + 14, [] {}},
               {20, [&] { press("cmdConferma"); }}});
    }

    void touchAny(ButtonGrid& grid) {
        if (!grid.buttons().empty())
            cashier_.touch(grid, std::string(pick(grid.buttons()).key));
    }

    /// Anything on the movements page.
    void listStep() {
        auto& list = world_.control<ReportGrid>("grd_mov_giornata");
        const auto column = static_cast<std::size_t>(any(9)); // one too many, sometimes
        const auto row = static_cast<std::size_t>(any(static_cast<int>(list.rows().size()) + 1));
        const auto extent = pick(
            std::array{ReportGrid::Extent::Single, ReportGrid::Extent::Toggle, ReportGrid::Extent::UpTo});
        static const std::vector<std::string> days{"16/11/2026",       "16/11/2026", "15/11/26",
                                                   "16/11/2026 10:00", "domani",     ""};
        static const std::vector<std::string> searches{"", "", "PRE", "à", "12,50", "zz"};
        bool changes = true; // where a handler may not close the dialog
        doOne({{2, [&] { list.touchHeader(column); }},
               {1, [&] { list.groupBy(column); }},
               {1, [&] { list.search(pick(searches)); }},
               {1, [&] { oneIn(3) ? list.ungroup() : list.selectAll(); }},
               {1, [&] { list.resizeColumn(column, any(60) - 10); }},
               {3, [&] { touchRow(list, row, extent); }},
               {1, [&] { world_.control<DateField>("comboData").paste(pick(days)); }},
               {1, [&] { requestDocument(oneIn(2) ? "cmd_print" : "cmdAnteprima"), changes = false; }},
               {2, [&] { load([&] { return press("cmdCaricaMovimenti"); }), changes = false; }}});
        if (changes)
            expectConsistent(list, world_.regional);
    }

    static void touchRow(ReportGrid& list, std::size_t row, ReportGrid::Extent extent) {
        const auto before = list.rows();
        const auto selected = list.selectedRecords();
        list.touchRow(row, extent);
        if (row >= before.size() || before[row].group == ReportGrid::Row::None)
            EXPECT_EQ(list.rows(), before) << "only headers change what is shown";
        else
            EXPECT_EQ(list.selectedRecords(), selected) << "only records are selected";
    }

    /// The host gets the text of the field, whatever it is.
    void requestDocument(const std::string& button) {
        const std::string day = world_.control<DateField>("comboData").text();
        const std::size_t before = world_.sink.days.size();
        if (press(button) != Gesture::Done)
            return;
        ASSERT_GT(world_.sink.days.size(), before);
        EXPECT_EQ(world_.sink.days[before], day);
    }

    /// What a gesture that may load the list leaves of it.
    void load(const std::function<Gesture()>& gesture) {
        const std::string day = world_.control<DateField>("comboData").text();
        auto& list = world_.control<ReportGrid>("grd_mov_giornata");
        const auto order = list.order();
        const auto columns = list.columns().size();
        const auto queries = world_.database().texts.size();
        const auto logged = world_.log.size();
        const int steps = stepsLeft_;
        gesture();
        if (steps != stepsLeft_)
            return; // a message was answered late
        if (world_.database().texts.size() == queries) {
            EXPECT_EQ(list.order(), order) << "nothing was loaded";
            EXPECT_EQ(list.columns().size(), columns);
            return;
        }
        EXPECT_TRUE(parseDate(day, world_.regional)) << day;
        EXPECT_EQ(world_.database().texts.size(), queries + 1);
        EXPECT_FALSE(list.sortColumn());
        EXPECT_TRUE(list.groupColumns().empty());
        EXPECT_TRUE(list.selectedRecords().empty());
        const bool whole = expectLoaded(list, world_.database());
        EXPECT_EQ(world_.log.size(), logged + (whole ? 0 : 1));
        expectConsistent(list, world_.regional);
        ++tally_.listed;
    }

    void insideModal(Window& window) {
        const bool message = window.name() == "frmMsgBox";
        messagesOpen_ += message ? 1 : 0;
        ++depth_;
        const int steps = depth_ > 5 ? 0 : any(30);
        for (int i = 0; i < steps && window.visible() && stepsLeft_ > 0; ++i)
            step();
        --depth_;
        messagesOpen_ -= message ? 1 : 0;
    }

    void watch(PushButton& confirm) {
        watches_.push_back(confirm.changed.connect([this, &confirm](Property property) {
            if (property != Property::Enabled || confirm.enabled())
                return;
            ++tally_.confirmations;
            // Judged at the start: a handler's Show may rename the host between the two halves.
            const auto& software = world_.process.SoftwareName;
            const bool pairs =
                world_.component->DoppioInserimentoObbligatorio() && software != "Kova" && software != "KOVA";
            leftToSend_ = pairs ? 2 : 1;
        }));
    }

    void receive(const std::string& event) {
        if (event == "SalvaPagamento")
            checkMovement(world_.sink.movements.back());
        if (oneIn(15))
            throw std::runtime_error("host failure");
        if (oneIn(25))
            world_.component->DiscardForm();
        else if (oneIn(25))
            world_.component->Show(0);
    }

    void checkMovement(const Movement& movement) {
        ++tally_.movements;
        // Under an open message the refused confirmation holds the button, and automatic ones may follow.
        if (messagesOpen_ == 0 && !watches_.empty()) {
            EXPECT_GE(--leftToSend_, 0) << "more movements than one confirmation sends";
        }
        EXPECT_NE(movement.idpagamento, -1);
        EXPECT_NE(movement.tipoIncasso, -1);
        EXPECT_FALSE(movement.Valuta.empty());
        EXPECT_FALSE(movement.note.empty());
        EXPECT_GE(movement.cassetto, 0);
        EXPECT_LE(movement.cassetto, 4);
    }

    const Ground& ground_;
    World& world_ = ground_.world;
    Cashier& cashier_ = ground_.cashier;
    std::mt19937 random_;
    Tally& tally_;
    int stepsLeft_ = 0;
    int depth_ = 0; ///< nested modal loops
    int messagesOpen_ = 0;
    int leftToSend_ = 0;
    std::vector<Connection> watches_;
    std::map<Window*, std::unique_ptr<Drawn>> drawn_; ///< also of windows that are gone
};

} // namespace

void walkAtRandom(const Ground& ground, unsigned seed, int steps, Tally& tally) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomWalk(ground, seed, tally).walk(steps);
}

} // namespace kova::test
