#include "database_contract.h"

#include "services/conversions.h"

namespace kova {

using Rows = std::vector<std::string>;
using namespace std::chrono_literals;

void expectCells(Recordset records, const std::vector<std::vector<Value>>& expected) {
    ASSERT_EQ(records.recordCount(), std::ssize(expected));
    for (const auto& row : expected) {
        for (std::size_t i = 0; i < row.size(); ++i)
            EXPECT_EQ(records.field(i), row[i]) << records.fieldName(i);
        records.moveNext();
    }
}

std::vector<std::string> rowsOf(Recordset records) {
    const RegionalSettings region = *regionalSettings("de-CH");
    Rows rows;
    for (; !records.endOfFile(); records.moveNext()) {
        std::string row;
        for (std::size_t i = 0; i < records.fieldCount(); ++i)
            row.append(i ? "|" : "").append(asText(NullToDefault(records.field(i), "-"), region));
        rows.push_back(row);
    }
    return rows;
}

TEST_P(DatabaseContract, CellsHaveTheTypesOfTheirColumns) {
    host.execute("CREATE TABLE kinds(b bit, i int, m money, d decimal(18,4), f float, t nvarchar(50),"
                 " w datetime, missing money)");
    host.execute("INSERT INTO kinds VALUES(1, -7, 0.1, 1234567.8901, 0.5, N'perché – «€» 雪',"
                 " '2026-11-16T23:59:59.250', NULL)");
    host.execute("INSERT INTO kinds VALUES(0, 2147483647, -99999999999.9999, 2, 2, N'',"
                 " '2026-11-16T00:00:00', 3)");
    expectCells(query("SELECT * FROM kinds ORDER BY b DESC"),
                {{true, std::int64_t{-7}, Decimal{1000, 4}, Decimal{12345678901, 4}, 0.5,
                  std::string_view("perché – «€» 雪"), dateTime(2026, 11, 16, 24h - 750ms), Null{}},
                 {false, std::int64_t{2147483647}, Decimal{-999999999999999, 4}, Decimal{20000, 4}, 2.0,
                  std::string_view(""), dateTime(2026, 11, 16), Decimal{30000, 4}}});
}

TEST_P(DatabaseContract, TextsOfAnyLengthArriveWhole) {
    std::string note = "x";
    for (int i = 0; i < 3000; ++i)
        note += "«€» 😀";
    host.execute("INSERT INTO tabImpostazioni VALUES('lungo', '" + note +
                 "'), ('nulla', NULL), ('vuoto', '')");
    EXPECT_EQ(rowsOf(query("SELECT valore, descrizione FROM tabImpostazioni")),
              (Rows{note + "|lungo", "-|nulla", "|vuoto"}));
}

TEST_P(DatabaseContract, FieldsAreFoundByIndexAndByNameInAnyCase) {
    host.execute("INSERT INTO tabPagamenti VALUES(1, N'Contanti', 1, N'€', 10)");
    const Recordset records =
        query("SELECT T.[Tipo pagamento], IDpagamento, Valuta AS [Cod. Valuta] FROM"
              " (SELECT TipoPagamento AS [Tipo Pagamento], idpagamento, Valuta FROM tabPagamenti) AS T;");
    const std::vector<std::string> names{"Tipo pagamento", "IDpagamento", "Cod. Valuta"};
    EXPECT_EQ(records.fieldCount(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(records.fieldName(i), names[i]) << "as the outermost select writes it";
    EXPECT_EQ(records.field("TIPO pagamento"), Value(std::string_view("Contanti")));
    EXPECT_EQ(records.field("IdPagamento"), records.field(1));
    EXPECT_EQ(databaseErrorOf([&] { (void)records.field("Tipo"); }).number(), 3265);
    EXPECT_EQ(databaseErrorOf([&] { (void)records.field(3); }).number(), 3265);
}

TEST_P(DatabaseContract, TheCountIsExactAndReadingStopsAtTheEnd) {
    host.execute("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 999)"
                 " INSERT INTO tabUtenti SELECT i, 'Cassiere' FROM n");
    Recordset records = query("SELECT idutente FROM tabUtenti ORDER BY idutente");
    for (std::int64_t read = 0; read < 1000; records.moveNext(), ++read)
        ASSERT_EQ(records.field(0), Value(read));
    records.moveNext();
    EXPECT_TRUE(records.endOfFile());
    EXPECT_EQ(records.recordCount(), 1000);
    EXPECT_EQ(databaseErrorOf([&] { (void)records.field(0); }).number(), 3021);
}

TEST_P(DatabaseContract, AFailedQueryTellsWhyAndTheNextOneWorks) {
    const auto missing = databaseErrorOf([&] { (void)query("SELECT * FROM [dbo].[tabAltro]"); });
    EXPECT_EQ(missing.number(), DatabaseError::CommandFailed);
    EXPECT_EQ(missing.sqlState(), "42S02");
    EXPECT_NE(std::string(missing.what()).find("tabAltro"), std::string::npos);
    const auto refused =
        databaseErrorOf([&] { (void)query("SELECT * FROM tabValute WHERE Valuta='l'''a'"); });
    EXPECT_EQ(refused.number(), DatabaseError::CommandFailed);
    EXPECT_EQ(refused.sqlState(), "42000");

    host.execute("INSERT INTO tabValute VALUES(N'CHF')");
    EXPECT_EQ(rowsOf(query("SELECT [Valuta] FROM [dbo].[tabValute]")), Rows{"CHF"});
}

TEST_P(DatabaseContract, AResultStaysAsItWasRead) {
    host.execute("INSERT INTO tabValute VALUES(N'CHF')");
    const Recordset records = query("SELECT valuta FROM tabValute");
    const Value text = records.field(0);
    host.execute("UPDATE tabValute SET Valuta = N'$'");
    EXPECT_EQ(rowsOf(query("SELECT valuta FROM tabValute")), Rows{"$"});
    host.execute("DROP TABLE tabValute");
    connection.reset();
    EXPECT_EQ(text, Value(std::string_view("CHF")));
    EXPECT_EQ(rowsOf(records), Rows{"CHF"});
}

TEST_P(DatabaseContract, LetterCaseMakesNoDifferenceInNamesAndTexts) {
    host.execute("INSERT INTO tabImpostazioni VALUES(N'Città Über', N'1')");
    EXPECT_EQ(rowsOf(query("select VALORE from DBO.TABIMPOSTAZIONI where DESCRIZIONE = N'CITTÀ üBER'")),
              Rows{"1"});
    EXPECT_EQ(rowsOf(query("SELECT valore FROM tabImpostazioni WHERE descrizione = N'Citta Uber'")), Rows{});
}

} // namespace kova
