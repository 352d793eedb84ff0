#include "scene.h"

#include "player/trace.h"
#include "scenario/scenario_language.h"

#include <gtest/gtest.h>

#include <fstream>

namespace kova::test {

std::vector<Scene> scenes(const std::string& name) {
    std::ostringstream text;
    text << std::ifstream(KOVA_TRACES + name + ".txt").rdbuf();
    std::vector<Scene> all;
    for (const std::string& line : scenarioLines(text.str()))
        if (line.starts_with("== "))
            all.push_back({line.substr(3)});
        else if (line == "--")
            all.back().begin = all.back().lines.size();
        else if (!scenarioWords(line).empty())
            all.back().lines.push_back(line);
    return all;
}

ScenePlayer::ScenePlayer() {
    world.database().table("tabValute", {"Valuta"}, {{"€"}, {"CHF"}});
    world.database().table("TOP 1", {"Totale", "Nome", "DataOperazione"}, {{12.5, "Anna", Null{}}});
    world.database().setting("Attiva_Gestione_MultiCassetto", "1");
    world.component->SetSoftwareName("Cassa");
    world.insideModal = [this](Window& window) {
        while (window.name() == "frm_CaricaMoneta" && window.visible() && next_ < scene_->lines.size())
            play(scene_->lines[next_++]);
    };
    world.insideBox = [this] { play(std::exchange(inside_["box"], {}), 0); };
    world.sink.then = [this](const std::string& event) { play(std::exchange(inside_[event], {}), 0); };
    addHostVerbs();
    addCashierVerbs();
    world.connect();
}

void ScenePlayer::play(const Scene& scene, std::size_t end) {
    scene_ = &scene;
    while (next_ < end)
        play(scene.lines[next_++]);
}

void ScenePlayer::play(const std::string& line) {
    const Words words = scenarioWords(line);
    const auto& verb = verbs.at(words[0]);
    try {
        verb(words);
    } catch (const std::logic_error&) { // what it speaks of is not on the screen
    } catch (const std::exception& failure) {
        seen << "thrown " << failure.what() << '\n';
    }
}

void ScenePlayer::play(const Words& lines, std::size_t first) {
    for (std::size_t i = first; i < lines.size(); ++i)
        play(lines[i]);
}

void ScenePlayer::addState() {
    TraceLine line("-");
    for (const LogRecord& record : world.takeLog())
        line.then(record.label).then(record.message);
    for (const std::string& message : std::exchange(world.messages, {}))
        line.with("message", message);
    for (const std::string& event : std::exchange(world.sink.events, {}))
        line.with("event", event);
    for (const auto& movement : std::exchange(world.sink.movements, {}))
        line.with("movement", testing::PrintToString(movement));
    const auto& windows = world.process.windows;
    line.with("active", windows.active() ? windows.active()->name() : "");
    const auto& selection = world.process.selection;
    if (world.component && dialogOf(*world.component) && dialogOf(*world.component)->loaded())
        line.with("confirm", world.control<PushButton>("cmdConferma").reach() == Gesture::Done)
            .with("keyboard", world.control<OnScreenKeyboard>("Virtual_Keyboard").visible())
            .with("amount", world.control<TextBox>("txtVisore").text())
            .with("activity", selection.idAttivita)
            .with("payment", selection.idPagamento)
            .with("deposit", selection.idPagamentoVersamento)
            .with("currency", selection.Valuta)
            .with("drawer", selection.Cassetto)
            .with("payments", world.control<ButtonGrid>("Pulsantiera_Pagamenti").buttons().size())
            .with("activities", world.control<ButtonGrid>("Pulsantiera_Attivita").buttons().size());
    line.with("counting", world.process.coinDialog != nullptr).with("alive", !component_.expired());
    seen << line.with("timers", world.loop.timers().running()).with("views", world.views).text() << '\n';
}

Control* ScenePlayer::find(const Words& words, std::size_t withoutIndex) {
    Window* const active = world.process.windows.active();
    const auto index = words.size() > withoutIndex ? std::optional(std::stoi(words[2])) : std::nullopt;
    return active != nullptr ? active->find(words[1], index) : nullptr;
}

template <class Kind>
Kind& ScenePlayer::the(const Words& words, std::size_t withoutIndex) {
    return as<Kind>(find(words, withoutIndex));
}

void ScenePlayer::addHostVerbs() {
    verbs["show"] = [this](auto&) { world.show(); };
    verbs["discard"] = [this](auto&) { world.component->DiscardForm(); };
    verbs["release"] = [this](auto&) { world.component.reset(); };
    verbs["connect"] = [this](auto&) { world.component->Inizializza(world.process.SharedConnection); };
    verbs["connect-string"] = [this](auto& words) { world.component->InizializzaByConnString(words[1]); };
    verbs["set"] = [this](auto& words) { world.component->set(words[1], Variant(words[2] == "True")); };
    verbs["setting"] = [this](auto& words) {
        world.database().setting(words[1], std::string_view(words[2]));
    };
    verbs["runtime-language"] = [this](auto& words) { world.runtime.change(std::stoi(words[1])); };
    verbs["wait"] = [this](auto& words) { world.wait(std::stoi(words[1])); };
    verbs["inside"] = [this](auto& words) { inside_[words[1]].assign(words.begin() + 2, words.end()); };
    verbs["inside-message"] = [this](auto& words) {
        world.insideModal = [this, words](Window&) { play(words, 1); };
    };
    verbs["post"] = [this](auto& words) { world.loop.post([this, words] { play(words, 1); }); };
    verbs["state"] = [this](auto&) { addState(); };
}

void ScenePlayer::addCashierVerbs() {
    verbs["compose"] = [this](auto&) {
        world.control<ButtonGrid>("Pulsantiera_Valuta").touch("€");
        world.composeMovement();
    };
    verbs["key"] = [this](auto& words) { world.control<NumericKeypad>("Virtual_KeyPAD").touchKey(words[1]); };
    verbs["type"] = [this](auto& words) {
        for (const char character : words[1])
            world.process.windows.active()->typeCharacter(static_cast<char32_t>(character));
    };
    verbs["tab"] = [this](auto&) { world.control<TabControl>("TabControl").touchTab(1); };
    verbs["close"] = [this](auto&) { world.process.windows.active()->requestClose(); };
    verbs["press"] = [this](auto& words) { the<PushButton>(words, 2).press(); };
    verbs["touch"] = [this](auto& words) { the<ButtonGrid>(words, 3).touch(words[2]); };
    verbs["text"] = [this](auto& words) { the<TextBox>(words, 3).paste(words.back()); };
    verbs["focus"] = [this](auto& words) { the<TextBox>(words, 2).window().moveFocus(*find(words, 2)); };
    verbs["count"] = [this](auto&) {
        if (const auto& coins = world.process.coinDialog)
            seen << TraceLine("count")
                        .with("result", coins->result())
                        .with("field", coins->IndiceMoneta())
                        .then(coins->getImportoPrimaValuta())
                        .then(coins->getImportoSecondaValuta())
                        .text()
                 << '\n';
    };
    verbs["dump"] = [this](auto& words) {
        if (Control* const control = find(words, 2))
            seen << describedControl(*control) << '\n';
    };
}

} // namespace kova::test
