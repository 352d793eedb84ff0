// The texts of conversions.txt, numbers and dates in each region, against conversions.trace.
#include "base/utf8.h"
#include "player/trace.h"
#include "services/conversions.h"
#include "services/number_format.h"
#include "test_world.h"
#include "trace_file.h"
#include "widgets/captioned_controls.h"
#include "widgets/tab_control.h"
#include "widgets/text_box.h"

#include <iomanip>

namespace kova::test {
namespace {

using namespace std::string_literals;

/// The number of the error that it throws, or what it gives.
template <class Convert>
std::string result(const Convert& convert) {
    try {
        return traced(convert());
    } catch (const Error& error) {
        return "error " + std::to_string(error.number());
    }
}

/// The texts of a kind in conversions.txt.
std::vector<std::string> texts(const std::string& wanted) {
    std::ifstream table(KOVA_TRACES + "conversions.txt");
    std::vector<std::string> all;
    for (std::string kind, text; table >> kind >> std::quoted(text);)
        if (kind == wanted)
            all.push_back(text);
    return all;
}

const std::vector<double> Numbers{
    0.1 + 0.2, -0.0,  1234567.25, 1234567.891,     1e20,  1.005, -999.995, -0.004,          0.5, 1e-30, 5,
    0.05,      12345, 1e16,       123456789012345, 1e-20, 1e-21, 9.5,      1234567890123456};

/// A row with each kind of value; returns how many.
std::size_t addCells(Snapshot& row) {
    const auto add = [&](const auto&... cells) {
        ((row.addColumn("cell"), row.add(Value(cells))), ...);
        row.endRow();
        return sizeof...(cells);
    };
    return add(Null{}, true, false, std::int64_t{1}, std::int64_t{0}, std::int64_t{-7}, 2.5,
               Decimal{-125000, 4}, Decimal{5, 4}, Decimal{10000, 4}, Decimal{-12345, 18},
               LongDecimal{"-12345678901234567890.5"}, LongDecimal{"-.5"},
               LongDecimal{"12345678901234567890.00"}, "True", "False", "yes", "1,0", "",
               DateTime(std::chrono::milliseconds(-1)), TimeOfDayDate + std::chrono::hours(9));
}

TEST(Conversions, GiveTheSameAsEver) {
    std::ostringstream seen;
    for (const char* name : {"it-IT", "de-CH", "en_us", "de-DE", "en-GB"}) {
        const RegionalSettings region = *regionalSettings(name);
        seen << "== " << name << '\n';
        for (const std::string& text : texts("number")) {
            const std::string number = result([&] { return toDouble(text, region); });
            EXPECT_EQ(isNumeric(text, region), !number.starts_with("error")) << text;
            seen << traced(text.substr(0, 30)) << " is " << number << ", whole "
                 << result([&] { return toInt32(text, region); }) << ", short "
                 << result([&] { return toInt16(text, region); }) << ", key "
                 << result([&] { return keyToId(text, region); }) << '\n';
        }
        NumberFormat format(region);
        for (const double number : Numbers) {
            seen << toText(number, region);
            for (const std::int16_t decimals : std::initializer_list<std::int16_t>{-1, 0, 1, 2, 3, 15, 16}) {
                format.SetAmountDecimals(decimals);
                seen << " | " << format.FormatAmount(number, decimals) << ' ' << format.FormatValue(number)
                     << ' ' << format.FormatExactly(number) << ' ' << format.FormatSum(number);
            }
            seen << '\n';
        }
        for (const std::string& text : texts("date")) {
            const auto date = parseDate(text, region);
            seen << traced(text) << " is "
                 << (date ? generalDate(*date, region) + ", day " + shortDate(*date, region) : "none")
                 << '\n';
        }
        Snapshot row;
        for (std::size_t i = 0, count = addCells(row); i < count; ++i) {
            const Value cell = row.at(0, i);
            seen << "cell " << asText(cell, region) << " is "
                 << result([&] { return asDouble(cell, region); }) << ' '
                 << result([&] { return asBoolean(cell, region); }) << ", one "
                 << equalsNumber(cell, 1, region) << ", or " << asText(NullToDefault(cell, "x"), region)
                 << '\n';
        }
    }
    expectTrace("conversions", seen.str());
}

TEST(Conversions, FollowWhatAUserHasSet) {
    RegionalSettings region = *regionalSettings("en-US");
    region.beforeNoon = "πμ";
    region.afterNoon = "μμ";
    for (const char* const time : {"11/6/2026 12:05:00 πμ", "11/6/2026 2:05:00 μμ"})
        EXPECT_EQ(generalDate(parseDate(time, region).value(), region), time);
    const std::tuple<std::size_t, std::size_t, const char*> groups[] = {
        {3, 2, "12,34,567.5"}, {3, 0, "1234,567.5"}, {4, 4, "123,4567.5"}, {0, 0, "1234567.5"}};
    for (const auto& [first, further, expected] : groups) {
        region.groupSize = first;
        region.furtherGroupSize = further;
        EXPECT_EQ(NumberFormat(region).FormatAmount(1234567.5, 1), expected);
        EXPECT_EQ(parseNumber(expected, region), 1234567.5);
        EXPECT_EQ(parseNumber("1,234,567.5", region), std::nullopt) << expected;
    }
}

/// What each key makes of "a€b", with the caret behind the € or the € selected.
TEST(Texts, KeysEditAsEver) {
    const auto bar = [](std::string text, std::size_t at) { return traced(text.insert(at, "|")); };
    std::ostringstream seen;
    for (const char32_t key : U"\1\a\b\t\n\v\r\x0e\x1f !,09aé\x7e\x7f\x80"s) {
        seen << "key " << static_cast<unsigned>(key) << " stays";
        for (const NumericKeys& allowed : {NumericKeys{},
                                           {.decimals = true},
                                           {.sign = true},
                                           {.grouping = true},
                                           {.exponent = true},
                                           {.percent = true},
                                           {.blanks = true}})
            seen << ' ' << static_cast<unsigned>(NumericKeyFilter(key, allowed));
        World world;
        world.show();
        for (auto* const box : {&world.control<TextBox>("txtNote"), &world.control<TextBox>("txtVisore")})
            for (const std::size_t end : {1U, 4U}) {
                box->adoptEdit("a€b", 1, 4);
                box->select(end, 4);
                const Gesture reached = box->typeCharacter(key);
                seen << ' ' << (reached == Gesture::Done) << bar(box->text(), box->selectionEnd());
            }
        world.control<TabControl>("TabControl").select(1);
        auto& day = world.control<DateField>("comboData");
        day.setText("1€");
        day.typeCharacter(key);
        seen << ' ' << traced(day.text());
        auto& button = world.control<PushButton>("PushButton1");
        button.typeCharacter(key);
        seen << (dialogOf(*world.component)->loaded() ? " goes on\n" : " presses\n");
    }
    expectTrace("keys", seen.str());
}

TEST(Texts, LettersKeepTheirMeaning) {
    EXPECT_EQ(toUtf8(fromUtf8("perché €😀")), "perché €😀");
    EXPECT_EQ(fromUtf8("a\xff\xe2\x82").size(), 4U) << "broken bytes become characters, none is lost";
    EXPECT_EQ(upperCase(U'ü'), U'Ü');
    EXPECT_EQ(upperCase(U'ß'), U'ß');
}

} // namespace
} // namespace kova::test
