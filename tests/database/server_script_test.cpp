// The script that makes the demonstration shop on a SQL Server, as far as the embedded database can run it.

#include "database_contract.h"

#include "shop/shop_database.h"

#include <fstream>

namespace kova {
namespace {

TEST(ServerScript, MakesTheSameShopAsTheEmbeddedSample) {
    auto server = ShopDatabase::inMemory();
    std::ifstream script(KOVA_SERVER_SCRIPT);
    std::string function, batch;
    for (std::string line; std::getline(script, line);) {
        if (line == "GO") {
            if (batch.find("CREATE FUNCTION") != std::string::npos)
                function = batch; // of a kind that SQLite does not have
            else
                server.execute(batch);
            batch.clear();
        } else if (!line.starts_with("SET ") && !line.starts_with("--")) {
            batch += line + "\n";
        }
    }
    server.execute(batch);
    auto embedded = ShopDatabase::inMemory();
    embedded.createSchema();
    embedded.loadSample();
    EXPECT_NE(databaseErrorOf([&] { embedded.loadSample(); }).number(), 0) << "a second load leaves nothing";
    const auto rows = [](const ShopDatabase& host, const std::string& text) {
        const Recordset records = host.connection()->query({text});
        auto result = rowsOf(records);
        for (std::size_t i = 0; i < records.fieldCount(); ++i)
            result.push_back(records.fieldName(i));
        return result;
    };
    const std::string everything = "SELECT * FROM dbo.";
    for (const std::string& text :
         {everything + "tabImpostazioni", everything + "tabActivityDrawer", everything + "tabPagamenti",
          everything + "tabValute", everything + "tabUtenti", everything + "Report_Drawer_Operation",
          everything + "Report_Drawer_Daily_Operation", everything + "Report_NonFiscale_Operation",
          std::string(
              "SELECT id, DataOperazione, TipoOperazione, idpagamento, Coefficiente, ImportoIncassato,"
              " Valuta, Note, Cassetto, idCassa, idutente, idTestata"
              " FROM tabPagamentiScontriniBackoffice")}) {
        EXPECT_EQ(rows(server, text), rows(embedded, text)) << text;
        EXPECT_GT(rowsOf(server.connection()->query({text})).size(), 2u) << text;
    }
    for (const char* const column :
         {"CREATE FUNCTION dbo.GetDailyOperation(@", "[Data-Ora Aggiornamento]", "[Cassetto]",
          "[Tipo Operazione]", "[Tipo Pagamento]", "importo", "valuta", "[Note Movimento]", "[Operatore]"})
        EXPECT_NE(function.find(column), std::string::npos) << column;
}

} // namespace
} // namespace kova
