#include "arguments.h"
#include "scenario_parser.h"

#include <gtest/gtest.h>

namespace kova {
namespace {

using Words = std::vector<std::string>;
using type_description::Type;

TEST(ScenarioParser, LinesKeepNeitherEndsNorByteOrderMark) {
    EXPECT_EQ(scenarioLines("\xEF\xBB\xBF"
                            "create\r\n\nshow\n"),
              (Words{"create", "", "show"}));
    EXPECT_EQ(scenarioLines("create\nshow"), (Words{"create", "show"}));
    EXPECT_TRUE(scenarioLines("").empty());
}

TEST(ScenarioParser, BlanksSeparateWordsAndTextsMayHoldThem) {
    EXPECT_EQ(scenarioWords(" touch\tPulsantiera_Valuta  \"CHF neu\" "),
              (Words{"touch", "Pulsantiera_Valuta", "CHF neu"}));
    EXPECT_EQ(scenarioWords("text txtNote \"\""), (Words{"text", "txtNote", ""}));
    EXPECT_EQ(scenarioWords("set ValutaAziendale €"), (Words{"set", "ValutaAziendale", "€"}));
}

TEST(ScenarioParser, EscapesHoldInsideQuotes) {
    EXPECT_EQ(scenarioWords(R"(text txtNote "a\"b\\c\nd\re\tf")"),
              (Words{"text", "txtNote", "a\"b\\c\nd\re\tf"}));
    EXPECT_EQ(scenarioWords(R"(registry Path C:\new)"), (Words{"registry", "Path", R"(C:\new)"}));
}

TEST(ScenarioParser, CommentsStartOutsideQuotes) {
    EXPECT_TRUE(scenarioWords("").empty());
    EXPECT_TRUE(scenarioWords("  # nothing but this").empty());
    EXPECT_EQ(scenarioWords("wait 50# ms"), (Words{"wait", "50"}));
    EXPECT_EQ(scenarioWords("keyboard \"#\"# and this"), (Words{"keyboard", "#"}));
}

TEST(ScenarioParser, MalformedLinesAreRefused) {
    for (const char* line : {"sql \"open", "sql \"open\\", "sql \"open\\\"", "sql \"a\\x\"", "sql \"a\"b",
                             "sql a\"b\"", "sql \"a\"\"b\"", "sql \xFF", "sql \"\xC3\""})
        EXPECT_THROW(scenarioWords(line), ScenarioError) << line;
}

TEST(ScenarioParser, FailuresNameFileAndLine) {
    EXPECT_EQ(located("a.scenario", 7, "not a command: creat"), "a.scenario:7: not a command: creat");
}

TEST(ScenarioArguments, ValuesAreWhollyOfTheirType) {
    EXPECT_EQ(valueFromWord("-2147483648", Type::Int32), Variant(std::int32_t{-2147483647 - 1}));
    EXPECT_EQ(valueFromWord("32767", Type::Int16), Variant(std::int16_t{32767}));
    EXPECT_EQ(valueFromWord("-12.5", Type::Double), Variant(-12.5));
    EXPECT_EQ(valueFromWord("True", Type::Boolean), Variant(true));
    EXPECT_EQ(valueFromWord("12", Type::String), Variant(std::string("12")));
}

TEST(ScenarioArguments, OtherWordsAreRefused) {
    for (const char* word : {"", "1x", " 1", "1.5", "2147483648"})
        EXPECT_THROW(valueFromWord(word, Type::Int32), ScenarioError) << word;
    for (const char* word : {"", "12,5", "nan", "inf", "1e999"})
        EXPECT_THROW(valueFromWord(word, Type::Double), ScenarioError) << word;
    EXPECT_THROW(valueFromWord("32768", Type::Int16), ScenarioError);
    for (const char* word : {"true", "1", ""})
        EXPECT_THROW(valueFromWord(word, Type::Boolean), ScenarioError) << word;
    EXPECT_THROW(static_cast<void>(Arguments({"-1"}).natural(0)), ScenarioError);
    EXPECT_THROW(static_cast<void>(Arguments({"maybe"}).choice(0, "on", "off")), ScenarioError);
}

TEST(ScenarioArguments, TimesAreOnesOfTheCalendar) {
    using namespace std::chrono;
    EXPECT_EQ(Arguments({"2028-02-29T23:59:58"}).dateTime(0),
              DateTime(local_days(2028y / February / 29) + 23h + 59min + 58s));
    for (const char* word : {"2026-02-29T10:00:00", "2026-13-01T10:00:00", "2026-11-16T24:00:00",
                             "2026-11-16 10:00:00", "2026-11-16T10:00", "2026-11-16T10:00:0x"})
        EXPECT_THROW(static_cast<void>(Arguments({word}).dateTime(0)), ScenarioError) << word;
}

TEST(ScenarioArguments, TheNumberOfWordsIsLimited) {
    const Arguments two({"a", "b"});
    EXPECT_NO_THROW(two.requireCount(2));
    EXPECT_THROW(two.requireCount(3, 4), ScenarioError);
    EXPECT_THROW(two.requireCount(0, 1), ScenarioError);
}

} // namespace
} // namespace kova
