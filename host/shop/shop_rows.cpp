#include "shop/shop_rows.h"

#include "services/conversions.h"

namespace kova {
namespace {

std::vector<NamedId> readNames(DatabaseConnection& connection, const std::string& query,
                               const RegionalSettings& regional) {
    std::vector<NamedId> names;
    for (Recordset rows = connection.query({query}); !rows.endOfFile(); rows.moveNext())
        if (!std::holds_alternative<Null>(rows.field(0)))
            names.push_back({asInt32(rows.field(0), regional), asText(rows.field(1), regional)});
    return names;
}

// The newest is the one stored last: a sample's dates may lie after today's.
constexpr const char* LatestMovements =
    "SELECT TOP 200 m.DataOperazione, a.Description, p.TipoPagamento, m.Coefficiente, m.ImportoIncassato,"
    " m.Valuta, m.Note, m.Cassetto, m.idCassa, u.Nome "
    "FROM tabPagamentiScontriniBackoffice AS m "
    "LEFT JOIN tabActivityDrawer AS a ON a.id = m.TipoOperazione "
    "LEFT JOIN tabPagamenti AS p ON p.idpagamento = m.idpagamento "
    "LEFT JOIN tabUtenti AS u ON u.idutente = m.idutente "
    "ORDER BY m.id DESC";

} // namespace

ShopCatalogues readCatalogues(DatabaseConnection& connection, const RegionalSettings& regional) {
    ShopCatalogues found;
    found.users = readNames(connection, "SELECT idutente, Nome FROM tabUtenti ORDER BY Nome", regional);
    found.payments = readNames(
        connection, "SELECT idpagamento, TipoPagamento FROM tabPagamenti ORDER BY idOrdinamento", regional);
    found.activities = readNames(connection, "SELECT id, Description FROM tabActivityDrawer", regional);
    for (Recordset rows = connection.query({"SELECT Valuta FROM tabValute"}); !rows.endOfFile();
         rows.moveNext())
        found.currencies.push_back(asText(rows.field(0), regional));
    return found;
}

std::vector<ListedMovement> latestMovements(DatabaseConnection& connection,
                                            const RegionalSettings& regional) {
    std::vector<ListedMovement> movements;
    for (Recordset rows = connection.query({LatestMovements}); !rows.endOfFile(); rows.moveNext()) {
        const auto text = [&](std::size_t field) { return asText(rows.field(field), regional); };
        const auto number = [&](std::size_t field) {
            const Value value = rows.field(field);
            return std::holds_alternative<Null>(value) ? std::nullopt
                                                       : std::optional(asDouble(value, regional));
        };
        ListedMovement one{text(0), text(1), text(2), text(5), text(6),
                           text(7), text(8), text(9), {},      number(4)};
        if (const auto coefficient = number(3))
            one.incoming = *coefficient >= 0;
        movements.push_back(std::move(one));
    }
    return movements;
}

} // namespace kova
