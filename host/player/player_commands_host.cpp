#include "player/player_commands.h"
#include "player/script_database.h"
#include "player/script_host.h"
#include "player/script_user_interface.h"
#include "player/script_world.h"
#include "scenario/scenario_language.h"
#include "shop/shop_database.h"

namespace kova {
namespace {

void regional(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    const auto settings = regionalSettings(arguments.text(0));
    if (!settings)
        throw ScenarioError("unknown region: " + arguments.text(0));
    scene.world.regional = *settings;
}

void now(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    scene.world.clock.set(arguments.dateTime(0));
}

void runtimeLanguage(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    scene.world.language.select(arguments.int32(0));
}

void registry(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(2);
    const bool absent = arguments.text(1) == "absent";
    scene.world.registry.set(arguments.text(0), absent ? std::nullopt : std::optional(arguments.text(1)));
}

void sql(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    if (scene.embedded == nullptr)
        throw ScenarioError("the host writes to the embedded database alone");
    scene.embedded->execute(arguments.text(0));
}

void failSql(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1, 4);
    if (arguments.count() == 1) {
        if (arguments.text(0) != "clear")
            throw ScenarioError("the message is missing");
        scene.queries.clearRules();
        return;
    }
    QueryWatch::FailRule rule{arguments.text(0), arguments.text(1), {}};
    if (arguments.count() > 2) {
        arguments.requireCount(4);
        if (arguments.text(2) != "rows")
            throw ScenarioError("not rows: " + arguments.text(2));
        rule.afterRows = static_cast<std::size_t>(arguments.natural(3));
    }
    scene.queries.add(std::move(rule));
}

using type_description::MemberKind;
using DoorPointer = std::shared_ptr<ComponentDoor>;

constexpr std::int32_t NotOffered = 438; ///< error number of a member that the interface does not have
constexpr const char* DefaultName = "a";

/// The current component, kept alive for the call.
DoorPointer current(Scene& scene) {
    return scene.host.current().door();
}

Variant invoke(Scene& scene, std::string_view method, Variant argument) {
    return current(scene)->invoke(method, {&argument, 1});
}

void create(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0, 1);
    scene.host.create(arguments.count() == 0 ? DefaultName : arguments.text(0));
}

void use(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    scene.host.use(arguments.text(0));
}

void release(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0, 1);
    scene.host.release(arguments.count() == 0 ? scene.host.current().name() : arguments.text(0));
}

void connect(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    invoke(scene, "Inizializza", scene.databases.hostConnection());
}

void connectString(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    invoke(scene, "InizializzaByConnString", arguments.text(0));
}

/// Runs `access`; prints `refused …` when the interface does not offer the member.
template <class Access>
void orRefused(Scene& scene, const std::string& what, Access access) {
    try {
        access();
    } catch (const Error& error) {
        if (error.number() != NotOffered)
            throw;
        scene.trace.add("refused " + what);
    }
}

void set(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(2);
    const std::string& name = arguments.text(0);
    const auto* member = type_description::find(name, MemberKind::PropertyWrite);
    const auto type = member == nullptr ? type_description::Type::String : member->parameters.front().type;
    const Variant value = valueFromWord(arguments.text(1), type);
    orRefused(scene, "set " + name, [&] { current(scene)->set(name, value); });
}

void get(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    const std::string& name = arguments.text(0);
    orRefused(scene, "get " + name,
              [&] { scene.trace.add(name + " = " + tracedVariant(current(scene)->get(name))); });
}

void software(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    invoke(scene, "SetSoftwareName", arguments.text(0));
}

void show(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0, 1);
    const Variant result =
        arguments.count() == 0 ? current(scene)->invoke("Show") : invoke(scene, "Show", arguments.int32(0));
    scene.trace.add("show returned " + tracedVariant(result));
}

void discard(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(0);
    current(scene)->invoke("DiscardForm");
}

/// Calls an event-raising method with a word for each parameter, and prints the arguments that came back
/// changed.
void raise(Scene& scene, std::string_view method, const Arguments& words) {
    const auto parameters = type_description::find(method, MemberKind::Method)->parameters;
    words.requireCount(parameters.size());
    std::vector<Variant> arguments;
    for (std::size_t i = 0; i < parameters.size(); ++i)
        arguments.push_back(valueFromWord(words.text(i), parameters[i].type));
    const auto given = arguments;
    const auto component = current(scene);
    try {
        component->invoke(method, arguments);
    } catch (const std::exception&) {
        // The host's own handler failed, and the host that called it has nothing to say about that.
    }
    for (std::size_t i = 0; i < parameters.size(); ++i)
        if (arguments[i] != given[i])
            scene.trace.add("returned " + std::string(parameters[i].name) + "=" +
                            tracedVariant(arguments[i]));
}

void sink(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    scene.host.current().connectSink(arguments.choice(0, "on", "off"));
}

void handlerFailure(Scene& scene, const std::string& event, const Arguments& arguments) {
    std::optional<int> at;
    if (arguments.count() != 1) {
        arguments.requireCount(3);
        if (arguments.text(1) != "at")
            throw ScenarioError("not at: " + arguments.text(1));
        at = arguments.natural(2);
        if (at == 0)
            throw ScenarioError("events count from 1");
    }
    scene.handlers.fail(event, arguments.text(0), at);
}

void handler(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(2, 5);
    const std::string& event = arguments.text(0);
    const std::string& action = arguments.text(1);
    const Arguments details = arguments.from(2);
    if (action == "set") {
        details.requireCount(2);
        scene.handlers.write(event, details.text(0), details.text(1));
        return;
    }
    if (action == "throw") {
        details.requireCount(1, 3);
        handlerFailure(scene, event, details);
        return;
    }
    details.requireCount(0);
    if (action == "discard")
        scene.handlers.discard(event);
    else if (action == "show")
        scene.handlers.show(event);
    else if (action == "clear")
        scene.handlers.clear(event);
    else
        throw ScenarioError("not an action of a handler: " + action);
}

void store(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    scene.store.switchOn(arguments.choice(0, "on", "off"));
}

void answer(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    const std::string& word = arguments.text(0);
    if (word == "yes" || word == "no")
        scene.userInterface.queueAnswer(word == "yes" ? MessageAnswer::Yes : MessageAnswer::No);
    else
        scene.userInterface.queueAnswer(arguments.choice(0, "ok", "cancel") ? MessageAnswer::Ok
                                                                            : MessageAnswer::Cancel);
}

void messages(Scene& scene, const Arguments& arguments) {
    arguments.requireCount(1);
    scene.userInterface.keepMessageWindowsOpen(arguments.choice(0, "manual", "auto"));
}

} // namespace

std::span<const Command> worldCommands() {
    static constexpr Command Commands[] = {
        {"regional", regional}, {"now", now}, {"runtime-language", runtimeLanguage},
        {"registry", registry}, {"sql", sql}, {"fail-sql", failSql},
    };
    return Commands;
}

std::span<const Command> hostCommands() {
    static constexpr Command Commands[] = {
        {"create", create},
        {"use", use},
        {"release", release},
        {"connect", connect},
        {"connect-string", connectString},
        {"set", set},
        {"get", get},
        {"software", software},
        {"show", show},
        {"discard", discard},
        {"stampa", [](Scene& scene, const Arguments& words) { raise(scene, "Stampa", words); }},
        {"anteprima", [](Scene& scene, const Arguments& words) { raise(scene, "Anteprima", words); }},
        {"apri-cassetto", [](Scene& scene, const Arguments& words) { raise(scene, "ApriCassetto", words); }},
        {"salva", [](Scene& scene, const Arguments& words) { raise(scene, "SalvaPagamento", words); }},
        {"sink", sink},
        {"handler", handler},
        {"store", store},
        {"answer", answer},
        {"messages", messages},
    };
    return Commands;
}

} // namespace kova
