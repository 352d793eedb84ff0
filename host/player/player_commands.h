#pragma once
#include "scenario/scenario_language.h"
#include "services/process_state.h"

#include <span>
#include <string_view>

namespace kova {

class Cashier;
class EventHandlers;
class MovementStore;
class QueryWatch;
class ScenarioPlayer;
class ScriptDatabases;
class ScriptHost;
class ScriptTime;
class ScriptUserInterface;
class ShopDatabase;
class Trace;
struct ScriptWorld;

/// Everything that the commands of a scenario act on.
struct Scene {
    Trace& trace;
    ScriptWorld& world;
    QueryWatch& queries;
    ScriptDatabases& databases;
    ShopDatabase* embedded; ///< null when the host works on a server
    MovementStore& store;
    EventHandlers& handlers;
    ScriptHost& host;
    ScriptUserInterface& userInterface;
    Cashier& cashier;
    ScriptTime& time;
    ProcessState& process;
    const ScenarioPlayer& player;
};

/// What a command does with the words behind its name. Throws ScenarioError when the line cannot be carried
/// out.
struct Command {
    std::string_view name;
    void (*run)(Scene& scene, const Arguments& arguments);
};

// One table per topic; a new command is a new row.
std::span<const Command> worldCommands();
std::span<const Command> hostCommands();
std::span<const Command> cashierCommands();
std::span<const Command> lookingCommands();

} // namespace kova
