#pragma once
#include "shop/shop_database.h"

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace kova {

struct Scene;

/// Plays the lines of a scenario in order; a modal loop inside a line plays the lines after it. Play ends
/// with the last line, or at the first that cannot be carried out; whatever is open then is discarded, so
/// that all loops end.
class ScenarioPlayer {
  public:
    explicit ScenarioPlayer(std::vector<std::string> lines) : lines_(std::move(lines)) {}

    struct Failure {
        std::size_t line; ///< from 1
        std::string reason;
    };
    /// Nothing when every line was carried out.
    std::optional<Failure> play(Scene& scene);
    /// Plays lines until the condition fails or play has ended. For modal loops inside `play`.
    void playWhile(const std::function<bool()>& goesOn);
    [[nodiscard]] bool ended() const { return ended_; }

  private:
    void playLine();
    void carryOut(std::vector<std::string> words);
    void end();

    std::vector<std::string> lines_;
    std::size_t next_ = 0;
    Scene* scene_ = nullptr; ///< while playing
    std::optional<Failure> failure_;
    bool ended_ = false;
};

using DatabaseOpener = std::function<HostDatabase(const HostOptions&, const ServerOpener&)>;

/// Plays the script that the options name; the trace goes to `out`, a reason why it could not be played to
/// `errors`. Returns the exit status.
int runScript(const HostOptions& options, std::ostream& out, std::ostream& errors,
              const DatabaseOpener& openDatabase = openHostDatabase);

} // namespace kova
