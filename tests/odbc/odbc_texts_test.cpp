#include "adapters/odbc/column_buffer.h"
#include "adapters/odbc/odbc_connection_text.h"
#include "adapters/odbc/odbc_error.h"
#include "base/utf16.h"
#include "served_shop.h"
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

// A line of the table holds a type's name, the bytes of it and of two cells, as the server sends them, and
// what a cashier in Italy reads of the first; the second is Null.
TEST(OdbcTypes, EachTypeOfTheServerIsShownInTheRegionsForm) {
    const ShopDatabase shop = test::beginServedShop();
    const auto connection = test::openServedShop(shop);
    const std::string anyLength = "e7ffff0904d00034 ffffffffffffffff "; // what follows is read in another way
    std::ifstream table(KOVA_SERVER_TYPES);
    int types = 0;
    for (std::string name, type, cell, null, shown;
         table >> name >> type >> cell >> null >> std::quoted(shown); ++types) {
        const std::string columns = type + " " + cell + " " + type + " " + null;
        for (const std::string& before : {std::string(), anyLength}) {
            const Recordset row = connection->query({"SEND " + before + columns});
            EXPECT_EQ(asText(row.field(row.fieldCount() - 2), RegionalSettings()), shown) << name;
            EXPECT_EQ(row.field(row.fieldCount() - 1), Value(Null{})) << name;
        }
    }
    EXPECT_EQ(types, 31);
    const Recordset exact = connection->query({"SEND 6a11260a 1100ffffffff3f228a097ac4865aa84c3b4b"});
    EXPECT_EQ(asDouble(exact.field(0), RegionalSettings()), -1e28);
}

} // namespace
} // namespace kova
