#pragma once
#include <chrono>
#include <string>
#include <variant>
#include <vector>

namespace kova {

class ButtonGrid;
class Control;
class PushButton;
class TextBox;
class Window;
class Wording;

/// A key of the physical keyboard going down.
struct KeyStroke {
    enum class Key { Other, Escape, Enter, Function };
    Key key = Key::Other;
    int number = 0;         ///< of a function key: F1 has 1
    char32_t character = 0; ///< that it types; 0 for none
    bool shift = false;
    bool command = false;              ///< with Control, Alt or the like
    bool repeated = false;             ///< held down
    std::chrono::milliseconds time{0}; ///< on any clock; 0 when not known
};

/// Characters of keys that print none.
namespace key_character {
constexpr char32_t Backspace = 8;
constexpr char32_t LineBreak = 10;
constexpr char32_t Space = 32;
} // namespace key_character

/// What a key means.
namespace key_meaning {
struct Ordinary {}; ///< it goes to what has the focus
struct Dropped {};
struct ShowHelp {};
struct Press {
    PushButton& button;
};
struct Touch {
    ButtonGrid& grid;
    std::string key;
};
struct Enter { ///< its character there
    TextBox& entry;
};
} // namespace key_meaning
using KeyMeaning = std::variant<key_meaning::Ordinary, key_meaning::Dropped, key_meaning::ShowHelp,
                                key_meaning::Press, key_meaning::Touch, key_meaning::Enter>;

/// Keys of the physical keyboard, and of a scanner that types like one, that mean something wherever the
/// focus is: see KeyTargets.
class PhysicalKeys {
  public:
    /// To be asked for every key, since how fast they come tells a scanner.
    KeyMeaning meaning(const Window& window, const KeyStroke& stroke);

  private:
    void watchSpeed(std::chrono::milliseconds time);
    KeyMeaning meaningOfEnter(const Window& window, bool repeated);
    std::chrono::milliseconds last_{0}; ///< when the last character was typed
    int quickKeys_ = 0;
};

/// The tabulator key: the control after, or before, the one with the focus, in order of creation, that can be
/// reached. Null when there is none.
Control* nextTabStop(const Window& window, bool forward);
/// The first control within `part` that the tabulator key would reach. Null when there is none.
Control* firstTabStop(const Window& window, const Control& part);

/// A line of the help that F1 shows; the last two are empty but for function keys that mean more with Shift.
struct KeyHelpLine {
    std::string key, meaning, shiftedKey, shiftedMeaning;
};
/// What the keys do there and then.
std::vector<KeyHelpLine> keyHelp(const Window& window, const Wording& words);

} // namespace kova
