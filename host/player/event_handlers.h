#pragma once
#include "component/cls_Kova_Drawer_Man.h"
#include "component/type_description.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace kova {

/// A by-reference argument of an event.
using EventArgument = std::variant<std::int16_t*, std::int32_t*, double*, bool*, std::string*>;

/// What the host's event handlers do besides recording, as a script defines it. The same for all components
/// of the script. Throws ScenarioError for an event or a parameter that does not exist.
class EventHandlers {
  public:
    /// Each is added to what the handler of the event does already, in this order. A second value for a
    /// parameter, or a second failure at each event, replaces the first.
    void write(const std::string& event, const std::string& parameter, const std::string& value);
    /// `at` counts the events from now on; without it each one fails.
    void fail(const std::string& event, const std::string& text, std::optional<int> at);
    void discard(const std::string& event) { replace(event, {Kind::Discard, 0, {}, {}, {}}); }
    void show(const std::string& event) { replace(event, {Kind::Show, 0, {}, {}, {}}); }
    void clear(const std::string& event);

    /// Does what was defined for an event of `component`; `arguments` as in the type description. A failure
    /// told by the script is thrown as std::runtime_error.
    void run(std::string_view event, cls_Kova_Drawer_Man& component,
             std::span<const EventArgument> arguments);

  private:
    enum class Kind { Write, Fail, Discard, Show };
    struct Action {
        Kind kind;
        std::size_t parameter; ///< position of the one to write
        Variant value;
        std::string text;      ///< of the failure
        std::optional<int> at; ///< events left until the failure, this one included
    };
    using Actions = std::vector<Action>;

    [[nodiscard]] static std::size_t position(std::string_view event);
    void replace(const std::string& event, Action action);
    std::array<Actions, 4> actions_; ///< by position of the event in the type description
};

} // namespace kova
