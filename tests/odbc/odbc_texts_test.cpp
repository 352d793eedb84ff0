#include "adapters/odbc/decimal_text.h"
#include "adapters/odbc/odbc_connection_text.h"
#include "adapters/odbc/utf16.h"
#include "services/conversions.h"

#include <gtest/gtest.h>

#include <array>

namespace kova {
namespace {

using namespace std::chrono_literals;

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

TEST(DecimalText, IsReadWithoutBinaryNoise) {
    const std::pair<const char*, Decimal> exact[] = {{".1", {1, 1}},
                                                     {"-.05", {-5, 2}},
                                                     {"+7", {7, 0}},
                                                     {"3.", {3, 0}},
                                                     {"0.0000", {0, 4}},
                                                     {"-922337203685477.5808", {INT64_MIN, 4}},
                                                     {"1.00000000000000000000", {1000000000000000000, 18}}};
    for (const auto& [text, value] : exact)
        EXPECT_EQ(decimalFromText(text), Value(value)) << text;
    EXPECT_EQ(decimalFromText("+99999999999999999999.5"), Value(LongDecimal{"99999999999999999999.5"}));
    EXPECT_EQ(toText(LongDecimal{"-.12345678901234567890"}, RegionalSettings()), "-0,1234567890123456789");
    for (const char* const text : {"", "-", ".", "1,5", "1e3", "--1", "1.2.3"})
        EXPECT_EQ(decimalFromText(text), Value(std::string_view(text)));
}

TEST(OdbcConnectionText, LeavesEverythingButOurTimeOutsToTheDriver) {
    const auto plain =
        parseOdbcConnectionText("driver={SQL}};Query Timeout=9} ;Server=a,1;;PWD={x;y=}}z}; x");
    EXPECT_EQ(plain.driverText, "driver={SQL}};Query Timeout=9} ;Server=a,1;;PWD={x;y=}}z}; x;");
    EXPECT_EQ(plain.logInTimeout, 5s);
    EXPECT_EQ(plain.queryTimeout, 30s);
    const auto ours = parseOdbcConnectionText(
        "CONNECT timeout = 2;Driver={FreeTDS};Command Timeout={60};Server=b;query timeout=0");
    EXPECT_EQ(ours.driverText, "Driver={FreeTDS};Server=b;");
    EXPECT_EQ(ours.driver, "FreeTDS");
    EXPECT_EQ(ours.logInTimeout, 2s);
    EXPECT_EQ(ours.queryTimeout, 0s);
    for (const char* const text : {"Query Timeout=", "Query Timeout=soon", "Connection Timeout=-1",
                                   "Connection Timeout=1.5", "Query Timeout=99999999999"})
        EXPECT_THROW(parseOdbcConnectionText(text), DatabaseError) << text;
}

TEST(OdbcConnectionText, TranslatesWhatAdoTakes) {
    const std::string microsoft = "ODBC Driver 18 for SQL Server";
    const std::array<std::string, 3> texts[] = {
        {"Provider=SQLOLEDB.1; Data Source = till-7 ;Initial Catalog='Shop;1';User "
         "ID=\"a\"\"b\";Password={se;c}}t};"
         "Persist Security Info=False;Connect Timeout=3;Application Name=Till",
         "FreeTDS",
         "Driver={FreeTDS};Server=till-7;Port=1433;Database={Shop;1};UID=a\"b;PWD={se;c}}t};APP=Till;"},
        {"provider=MSOLEDBSQL19;server=tcp:db,1500;Integrated Security=SSPI;Use Encryption for "
         "Data=Mandatory",
         "FreeTDS", "Driver={FreeTDS};Server=db;Port=1500;Trusted_Connection=Yes;Encryption=require;"},
        {"Server=(local)\\SHOP;Database=x;Encrypt=Yes;Trust Server Certificate=no", microsoft,
         "Driver={" + microsoft +
             "};Server=localhost\\SHOP;Database=x;Encrypt=Yes;TrustServerCertificate=no;"},
        {"Address=.,1500;UID=a", microsoft, "Driver={" + microsoft + "};Server={localhost,1500};UID=a;"}};
    for (const auto& [text, driver, expected] : texts) {
        EXPECT_TRUE(namesOdbc(text));
        EXPECT_EQ(parseOdbcConnectionText(text, driver).driverText, expected);
    }
    for (const std::string refused : {"Provider=Microsoft.Jet.OLEDB.4.0", "Failover Partner"})
        try {
            parseOdbcConnectionText("Data Source=x;User ID=y;" + refused + "=z");
            ADD_FAILURE() << refused;
        } catch (const DatabaseError& error) {
            EXPECT_NE(std::string(error.what()).find(refused.substr(0, refused.find('='))),
                      std::string::npos);
        }
}

TEST(OdbcConnectionText, TellsServersFromFiles) {
    for (const char* const text : {"Driver=FreeTDS", " dsn = till;", "Server=x;DRIVER={a}", "FileDSN=/x",
                                   "Provider=x;Data Source={Driver=a;b", "Data Source=x;Initial Catalog=y"})
        EXPECT_TRUE(namesOdbc(text)) << text;
    for (const char* const text :
         {"", "Data Source=Driver.db", "Data Source='a;Server=b';Mode=Read", "Driver", "Mydsn=x"})
        EXPECT_FALSE(namesOdbc(text)) << text;
}

} // namespace
} // namespace kova
