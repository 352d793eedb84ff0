#include "services/conversions.h"
#include "services/number_format.h"
#include "services/numeric_key_filter.h"
#include "test_world.h"
#include "widgets/utf8.h"

#include <gtest/gtest.h>

namespace kova {
namespace {

const RegionalSettings Italian = *regionalSettings("it-IT");
const RegionalSettings Swiss = *regionalSettings("de-CH");
const RegionalSettings American = *regionalSettings("en_us");

TEST(Numbers, TestAndConversionAgreeOnWhatANumberIs) {
    const std::tuple<const RegionalSettings&, std::string, std::optional<double>> texts[] = {
        {Italian, "1.234,5", 1234.5},
        {Italian, " 7 ", 7},
        {Italian, "€ 5", 5},
        {Italian, "-€5", -5},
        {Italian, "5 €", 5},
        {Italian, "5,", 5},
        {Italian, ",5", 0.5},
        {Italian, "007", 7},
        {Italian, "1e3", 1000},
        {Italian, "1e-400", 0},
        {Italian, "1.234.567", 1234567},
        {Italian, "0," + std::string(400, '0') + "1", 0},
        {Italian, std::string(400, '9'), {}},
        {American, "1,234.5", 1234.5},
        {American, "12,5", {}},
        {American, "$1", 1},
        {Swiss, "1’234.5", 1234.5},
        {Swiss, "1'234.5", 1234.5},
        {Swiss, "1,5", {}}};
    for (const auto& [region, text, number] : texts) {
        EXPECT_EQ(parseNumber(text, region), number) << text;
        EXPECT_EQ(isNumeric(text, region), number.has_value()) << text;
    }
    for (const char* text :
         {"1,2,3", "12.5", "1.23", "1234.567", "1e400", ",", "", " ", "1 2", "--1", "1e", "abc", "€"}) {
        EXPECT_FALSE(isNumeric(text, Italian)) << text;
        EXPECT_THROW((void)toDouble(text, Italian), Error) << text;
    }
}

TEST(Numbers, IntegersRoundHalfToEvenAndStayInRange) {
    EXPECT_EQ(toInt32("2,5", Italian), 2);
    EXPECT_EQ(toInt32("3,5", Italian), 4);
    EXPECT_EQ(toInt16("-32768", Italian), -32768);
    EXPECT_EQ(test::errorNumber([] { (void)toInt16("32768", Italian); }), 6);
    EXPECT_EQ(test::errorNumber([] { (void)toInt32("2147483648", Italian); }), 6);
    EXPECT_EQ(test::errorNumber([] { (void)toInt32("1e400", Italian); }), 6);
    EXPECT_EQ(test::errorNumber([] { (void)toInt32("", Italian); }), 13);
    EXPECT_EQ(keyToId("-1", Italian), -1);
    EXPECT_EQ(test::errorNumber([] { (void)keyToId("2,5", Italian); }), 13)
        << "no id is rounded to another one";
}

TEST(Numbers, TextsShowNoBinaryNoise) {
    EXPECT_EQ(toText(0.1 + 0.2, Italian), "0,3");
    EXPECT_EQ(toText(-0.0, Italian), "0");
    EXPECT_EQ(toText(1234567.25, American), "1234567.25");
    EXPECT_EQ(toText(1e20, Italian), "1E+20");
    EXPECT_EQ(asText(Decimal{-125000, 4}, Italian), "-12,5");
    EXPECT_EQ(asText(Decimal{5, 4}, Swiss), "0.0005");
    EXPECT_EQ(asText(Decimal{10000, 4}, Italian), "1");
}

TEST(Numbers, AmountsAreGroupedAndRoundedHalfAway) {
    NumberFormat italian(Italian);
    EXPECT_EQ(italian.FormatAmount(1234567.891, 2), "1.234.567,89");
    EXPECT_EQ(italian.FormatAmount(1.005, 2), "1,01");
    EXPECT_EQ(italian.FormatAmount(-999.995, 2), "-1.000,00");
    EXPECT_EQ(italian.FormatAmount(-0.004, 2), "0,00");
    EXPECT_EQ(italian.FormatAmount(0.5, 0), "1");
    EXPECT_EQ(italian.FormatAmount(1e-30, 2), "0,00");
    italian.SetAmountDecimals(3);
    EXPECT_EQ(italian.FormatValue(0.1), "0,100");
    italian.SetAmountDecimals(0);
    EXPECT_EQ(italian.FormatValue(5) + ' ' + italian.FormatValue(0.05) + ' ' + italian.FormatValue(0.1 + 0.2),
              "5 0,05 0,3");
    EXPECT_EQ(NumberFormat(Swiss).FormatAmount(12345, 2), "12’345.00");
}

TEST(Numbers, CellsCompareAndConvertByValue) {
    EXPECT_TRUE(equalsNumber(std::int64_t{1}, 1, Italian));
    EXPECT_TRUE(equalsNumber(Decimal{10000, 4}, 1, Italian));
    EXPECT_TRUE(equalsNumber("1,0", 1, Italian));
    EXPECT_FALSE(equalsNumber("", 1, Italian));
    EXPECT_FALSE(equalsNumber(Null{}, 1, Italian));
    EXPECT_TRUE(asBoolean("True", Italian));
    EXPECT_FALSE(asBoolean("False", Italian));
    EXPECT_FALSE(asBoolean(std::int64_t{0}, Italian));
    EXPECT_EQ(asText(true, Italian) + asText(false, Italian), "TrueFalse");
    EXPECT_EQ(asDouble(true, Italian), -1);
    EXPECT_EQ(test::errorNumber([] { (void)asBoolean("yes", Italian); }), 13);
    EXPECT_EQ(test::errorNumber([] { (void)asInt32(Null{}, Italian); }), 13);
    EXPECT_EQ(asText(NullToDefault(Null{}, "x"), Italian), "x");
}

TEST(Dates, AreReadAndWrittenInTheRegionsOrder) {
    using namespace std::chrono;
    const DateTime day = local_days(2026y / November / 6);
    EXPECT_EQ(parseDate("6/11/2026", Italian), day);
    EXPECT_EQ(parseDate("11/6/2026", American), day);
    EXPECT_EQ(parseDate("06.11.26", Swiss), day);
    EXPECT_EQ(parseDate("2026-11-06", American), day);
    EXPECT_EQ(parseDate("06/11/2026 23:59.59", Italian), day + 24h - 1s);
    EXPECT_EQ(parseDate("11/6/2026 2:05:00 PM", American), day + 14h + 5min);
    for (const char* text :
         {"", "oggi", "31/02/2026", "16/13/2026", "6/11", "6/11/2026 25:00", "6/11/2026x", "6-11/2026"})
        EXPECT_FALSE(parseDate(text, Italian)) << text;
    EXPECT_EQ(shortDate(day, Italian), "06/11/2026");
    EXPECT_EQ(shortDate(day, American), "11/6/2026");
    EXPECT_EQ(generalDate(day, Swiss), "06.11.2026");
    EXPECT_EQ(generalDate(day + 14h + 5min, American), "11/6/2026 2:05:00 PM");
    EXPECT_EQ(generalDate(day + 9h + 5s, Italian), "06/11/2026 09:00:05");
}

TEST(Texts, KeysAndLettersKeepTheirMeaning) {
    EXPECT_EQ(NumericKeyFilter(U'.', {.decimals = true}), U',') << "a dropped point would make 12.5 a 125";
    EXPECT_EQ(NumericKeyFilter(U'-', {.decimals = true}), 0U);
    EXPECT_EQ(NumericKeyFilter(8, {}), 8U);
    EXPECT_EQ(NumericKeyFilter(U'a', {.decimals = true}), 0U);
    EXPECT_EQ(toUtf8(fromUtf8("perché €😀")), "perché €😀");
    EXPECT_EQ(fromUtf8("a\xff\xe2\x82").size(), 4U) << "broken bytes become characters, none is lost";
    EXPECT_EQ(upperCase(U'ü'), U'Ü');
    EXPECT_EQ(upperCase(U'ß'), U'ß');
}

} // namespace
} // namespace kova
