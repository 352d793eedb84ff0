#include "adapters/odbc/column_buffer.h"
#include "adapters/odbc/odbc_connection_text.h"
#include "adapters/odbc/odbc_error.h"
#include "base/utf16.h"
#include "services/conversions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iomanip>

namespace kova {
namespace {

TEST(Utf16, HoldsEveryCharacterInOneOrTwoUnits) {
    const std::u16string wide{u'\u20AC',        char16_t(0xFFFF), char16_t(0xD800),
                              char16_t(0xDC00), char16_t(0xDBFF), char16_t(0xDFFF)};
    const std::string utf8 = "\u20AC\uFFFF\U00010000\U0010FFFF";
    EXPECT_EQ(toUtf16(utf8), wide);
    EXPECT_EQ(toUtf16("a\xE8z"), u"a\uFFFDz");
    std::string back = "before ";
    appendUtf16(back, wide);
    EXPECT_EQ(back, "before " + utf8);
    std::string halves;
    appendUtf16(halves, std::u16string{u'a', char16_t(0xDC00), char16_t(0xD800), u'b', char16_t(0xDBFF)});
    EXPECT_EQ(halves, "a\uFFFD\uFFFDb\uFFFD");
}

/// What is read of a text, by the kind of its line in the table.
std::string readAs(const std::string& kind, const std::string& text) {
    if (kind == "decimal") {
        const Value value = decimalFromText(text);
        if (const auto* exact = std::get_if<Decimal>(&value))
            return std::to_string(exact->unscaled) + " / 10^" + std::to_string(exact->scale);
        const bool number = std::holds_alternative<LongDecimal>(value);
        return (number ? "long " : "text ") + asText(value, RegionalSettings());
    }
    if (kind == "state") {
        const auto error = asDatabaseError(text, 0, "");
        return std::to_string(error.number()) + " " + error.sqlState();
    }
    if (kind == "server")
        return namesOdbc(text) ? "yes" : "no";
    try {
        const std::string driver = kind == "microsoft" ? "ODBC Driver 18 for SQL Server" : "FreeTDS";
        const auto read = parseOdbcConnectionText(text, driver);
        return read.driver + ", " + std::to_string(read.logInTimeout.count()) + " s, " +
               std::to_string(read.queryTimeout.count()) + " s, " + read.driverText;
    } catch (const DatabaseError& error) {
        return error.what();
    }
}

// A line of the table holds what kind of text follows, the text, and what is read of it.
TEST(OdbcTexts, AreReadAsTheTableSays) {
    std::ifstream table(std::filesystem::path(KOVA_SERVER_TYPES).replace_filename("texts.txt"));
    int lines = 0;
    for (std::string kind, text, read; table >> kind >> std::quoted(text) >> std::quoted(read); ++lines)
        EXPECT_EQ(readAs(kind, text), read) << kind << ' ' << text;
    EXPECT_EQ(lines, 47);
}

} // namespace
} // namespace kova
