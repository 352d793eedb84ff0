#include "player/scenario_player.h"

#include "player/player_commands.h"
#include "player/script_host.h"
#include "player/trace.h"
#include "scenario/scenario_parser.h"

namespace kova {
namespace {

const Command& findCommand(const std::string& name) {
    for (const auto commands : {worldCommands(), hostCommands(), cashierCommands(), lookingCommands()})
        for (const Command& command : commands)
            if (command.name == name)
                return command;
    throw ScenarioError("not a command: " + name);
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

} // namespace kova
