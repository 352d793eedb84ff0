#include "player/player_commands.h"
#include "player/script_database.h"
#include "player/script_world.h"
#include "scenario/scenario_parser.h"
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

} // namespace

std::span<const Command> worldCommands() {
    static constexpr Command commands[] = {
        {"regional", regional}, {"now", now}, {"runtime-language", runtimeLanguage},
        {"registry", registry}, {"sql", sql}, {"fail-sql", failSql},
    };
    return commands;
}

} // namespace kova
