#include "player/scenario_player.h"

#include "adapters/databases/databases.h"
#include "adapters/system/machine.h"
#include "host_options.h"
#include "player/cashier.h"
#include "player/player_commands.h"
#include "player/script_database.h"
#include "player/script_host.h"
#include "player/script_user_interface.h"
#include "player/script_world.h"
#include "player/trace.h"
#include "scenario/scenario_language.h"

#include <fstream>
#include <iostream>
#include <iterator>

namespace kova {
namespace {

const Command& findCommand(const std::string& name) {
    for (const auto commands : {worldCommands(), hostCommands(), cashierCommands(), lookingCommands()})
        for (const Command& command : commands)
            if (command.name == name)
                return command;
    throw ScenarioError("not a command: " + name);
}

constexpr int CarriedOut = 0;

std::string readScript(const std::string& file) {
    std::ifstream opened;
    if (file != "-") {
        opened.open(pathOf(file), std::ios::binary);
        if (!opened)
            throw ScenarioError(file + ": cannot be opened");
    }
    std::istream& script = file == "-" ? std::cin : opened;
    std::string text(std::istreambuf_iterator<char>(script), {});
    if (script.bad())
        throw ScenarioError(file + ": cannot be read");
    return text;
}

std::unique_ptr<Stage> makeStage(const HostOptions& options,
                                 [[maybe_unused]] const RegionalSettings& regional) {
    if (options.userInterface == HostInterface::Headless)
        return makeHeadlessStage();
#ifdef KOVA_WITH_QT
    return makeQtStage(regional, options);
#else
    throw ScenarioError("this build has no windows; use --ui headless");
#endif
}

/// Builds everything that a script needs, plays it, and takes it down again.
std::optional<ScenarioPlayer::Failure> play(const HostOptions& options, std::vector<std::string> lines,
                                            RegionalSettings& regional, Stage& stage, std::ostream& out,
                                            const DatabaseOpener& openDatabase) {
    Databases provider;
    HostDatabase database =
        openDatabase(options, [&](const std::string& text) { return provider.open(text); });
    ShopDatabase* const embedded = database.embedded ? &*database.embedded : nullptr;

    Trace trace(out);
    ScenarioPlayer player(std::move(lines));
    ScriptTime time(stage.eventLoop(), stage.cashier());
    ScriptWorld world(time, regional);
    QueryWatch queries;
    ScriptDatabases databases(database.connection, provider, queries);
    ScriptUserInterface userInterface(stage.userInterface(), stage.cashier(), trace,
                                      [&player](const auto& goesOn) { player.playWhile(goesOn); });
    ProcessState process({.userInterface = userInterface,
                          .eventLoop = time,
                          .clock = world.clock,
                          .languageRuntime = world.language,
                          .settingsStore = world.registry,
                          .databases = databases,
                          .regional = world.regional,
                          .makeErrorLogger = world.loggerFactory(options.logFolder.has_value()),
                          .componentFolder = options.logFolder.value_or(".")});
    MovementStore store(embedded, world.clock);
    EventHandlers handlers;
    ScriptHost host(process, options.throughAutomation ? openAutomationDoor : openDoor,
                    {trace, handlers, store});
    Scene scene{trace, world,         queries,         databases, embedded, store, handlers,
                host,  userInterface, stage.cashier(), time,      process,  player};
    return player.play(scene);
}

} // namespace

std::optional<ScenarioPlayer::Failure> ScenarioPlayer::play(Scene& scene) {
    scene_ = &scene;
    playWhile([] { return true; });
    scene_ = nullptr;
    return failure_;
}

void ScenarioPlayer::playWhile(const std::function<bool()>& goesOn) {
    while (!ended_ && goesOn()) {
        if (next_ == lines_.size())
            end();
        else
            playLine();
    }
    if (ended_ && goesOn())
        scene_->host.discardAll(); // what was opened on the way out
}

void ScenarioPlayer::playLine() {
    const std::size_t line = next_++;
    try {
        carryOut(scenarioWords(lines_[line]));
    } catch (const std::exception& error) {
        if (failure_)
            return; // a line inside this one failed before
        failure_ = Failure{line + 1, error.what()};
        scene_->trace.mute();
        end();
    }
}

void ScenarioPlayer::carryOut(std::vector<std::string> words) {
    if (words.empty())
        return;
    const Command& command = findCommand(words.front());
    words.erase(words.begin());
    command.run(*scene_, Arguments(std::move(words)));
}

void ScenarioPlayer::end() {
    ended_ = true;
    scene_->host.discardAll();
}

int runScript(const HostOptions& options, std::ostream& out, std::ostream& errors,
              const DatabaseOpener& openDatabase) {
    try {
        auto lines = scenarioLines(readScript(*options.script));
        RegionalSettings regional;
        const auto stage = makeStage(options, regional);
        const auto failure = play(options, std::move(lines), regional, *stage, out, openDatabase);
        out.flush();
        if (!failure)
            return CarriedOut;
        errors << located(*options.script, failure->line, failure->reason) << '\n';
    } catch (const std::exception& error) {
        out.flush();
        errors << "kova-host: " << error.what() << '\n';
    }
    return NotCarriedOut;
}

} // namespace kova
