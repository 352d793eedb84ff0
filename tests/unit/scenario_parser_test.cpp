#include "scenario/scenario_language.h"

#include <gtest/gtest.h>

namespace kova {
namespace {

using Words = std::vector<std::string>;
using type_description::Type;

TEST(ScenarioParser, LinesBecomeWords) {
    EXPECT_EQ(scenarioLines("\xEF\xBB\xBF"
                            "create\r\n\nshow\n"),
              (Words{"create", "", "show"}));
    EXPECT_TRUE(scenarioLines("").empty());
    const std::pair<const char*, Words> lines[] = {
        {R"(text txtNote "a\"b\\c\nd\re\tf")", {"text", "txtNote", "a\"b\\c\nd\re\tf"}},
        {R"(registry Path C:\new)", {"registry", "Path", R"(C:\new)"}},
        {"", {}},
        {"  # nothing but this", {}},
        {"wait 50# ms", {"wait", "50"}},
        {"keyboard \"#\"# and this", {"keyboard", "#"}}};
    for (const auto& [line, words] : lines)
        EXPECT_EQ(scenarioWords(line), words);
}

TEST(ScenarioParser, MalformedLinesAreRefused) {
    for (const char* line : {"sql \"open", "sql \"open\\", "sql \"open\\\"", "sql \"a\\x\"", "sql \"a\"b",
                             "sql a\"b\"", "sql \"a\"\"b\"", "sql \xFF", "sql \"\xC3\""})
        EXPECT_THROW(scenarioWords(line), ScenarioError) << line;
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
    for (const char* word : {"2026-02-29T10:00:00", "2026-13-01T10:00:00", "2026-11-16T24:00:00",
                             "2026-11-16 10:00:00", "2026-11-16T10:00", "2026-11-16T10:00:0x"})
        EXPECT_THROW(static_cast<void>(Arguments({word}).dateTime(0)), ScenarioError) << word;
}

} // namespace
} // namespace kova
