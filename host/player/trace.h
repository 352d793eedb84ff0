#pragma once
#include "component/variant.h"
#include "widgets/units.h"

#include <concepts>
#include <ostream>
#include <string>
#include <string_view>

namespace kova {

class ButtonGrid;
class Control;

/// A text in double quotes with the escapes of scenarios.
std::string traced(std::string_view text);
/// The shortest form that reads back as the same number, with a point.
std::string traced(double number);
/// Left, top, width, height.
std::string traced(const Rect& rect);
std::string traced(Color color);
template <std::integral Integer>
std::string traced(Integer number) {
    if constexpr (std::same_as<Integer, bool>)
        return number ? "True" : "False";
    else
        return std::to_string(number);
}

/// Empty for an empty value or a connection.
std::string tracedVariant(const Variant& value);

/// A line of the trace, built up from its beginning and ` name=value` pairs.
class TraceLine {
  public:
    explicit TraceLine(std::string beginning) : text_(std::move(beginning)) {}
    template <class Value>
    TraceLine& with(std::string_view name, const Value& value) {
        text_.append(" ").append(name).append("=").append(traced(value));
        return *this;
    }
    /// A bare value.
    template <class Value>
    TraceLine& then(const Value& value) {
        text_.append(" ").append(traced(value));
        return *this;
    }
    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    std::string text_;
};

/// What an observer outside the component sees, line by line.
class Trace {
  public:
    explicit Trace(std::ostream& out) : out_(out) {}
    void add(const std::string& line) {
        if (!muted_)
            out_ << line << '\n';
    }
    void add(const TraceLine& line) { add(line.text()); }
    /// Drops all further lines.
    void mute() { muted_ = true; }

  private:
    std::ostream& out_;
    bool muted_ = false;
};

/// `control NAME …` with the attributes of the control's kind.
std::string describedControl(Control& control);
/// `grid NAME …` and a line for each button.
void traceGrid(Trace& trace, const ButtonGrid& grid);

} // namespace kova
