#pragma once
#include "player/scene.h"
#include "scenario/arguments.h"

#include <span>
#include <string_view>

namespace kova {

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
