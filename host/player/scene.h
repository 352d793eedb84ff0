#pragma once
#include "services/process_state.h"

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

} // namespace kova
