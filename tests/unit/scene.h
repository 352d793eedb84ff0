#pragma once
#include "player/trace.h"
#include "test_world.h"

namespace kova::test {

using Words = std::vector<std::string>;

/// What is done, line by line; lines before `begin` make what it begins with.
struct Scene {
    std::string name;
    std::vector<std::string> lines{};
    std::size_t begin = 0;
};

/// Of NAME.txt beside the tests: a scene has its name behind == and lies before and behind a -- there.
std::vector<Scene> scenes(const std::string& name);

/// Plays lines in the words of scenarios, and in some of its own, on a world with two currencies and four
/// drawers. Lines behind the opening of a coin count are played in it; one that speaks of what is not on the
/// screen does nothing.
class ScenePlayer {
  public:
    ScenePlayer();
    void play(const Scene& scene, std::size_t end);
    void play(const std::string& line);
    void play(const Words& lines, std::size_t first);
    /// Log records, messages, movements, and what is on the screen.
    void addState();

    World world;
    std::ostringstream seen;
    std::map<std::string, std::function<void(const Words&)>> verbs;

  private:
    template <class Kind>
    Kind& the(const Words& words, std::size_t withoutIndex);
    Control* find(const Words& words, std::size_t withoutIndex);
    void addHostVerbs();
    void addCashierVerbs();

    std::weak_ptr<cls_Kova_Drawer_Man> component_ = world.component;
    const Scene* scene_ = nullptr;
    std::size_t next_ = 0;
    std::map<std::string, Words> inside_; ///< what the host does inside its next handler of an event
};

/// What is seen of all scenes of NAME.txt.
template <class Player>
std::string played(const std::string& name) {
    std::ostringstream seen;
    for (const Scene& scene : scenes(name)) {
        Player player;
        player.play(scene, scene.lines.size());
        seen << "== " << scene.name << '\n' << player.seen.str();
    }
    return seen.str();
}

} // namespace kova::test
