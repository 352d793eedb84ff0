#pragma once
#include "shop.h"

#include <string>

namespace kova::bench {

inline constexpr const char* MovementsDay = "02/11/2026"; ///< of all rows

/// Fills the view that the list reads on other days than today with rows of one day: seven columns of which
/// one is a date-time, one money, and the rest texts. A plain table takes the view's place, so that reading
/// it costs as little as it can.
inline void createMovements(SqliteHostDatabase& database, std::int64_t rows) {
    database.execute(
        "DROP VIEW Report_Drawer_Operation; "
        "CREATE TABLE Report_Drawer_Operation([Data Operazione] datetime, [Tipo Operazione] text, "
        "[Tipo Pagamento] text, importo money, Valuta text, [Note Movimento] text, Ordinamento int, "
        "[Operatore] text, idCassa int, idUtente int)");
    database.execute(
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i + 1 < " +
        std::to_string(rows) +
        ") INSERT INTO Report_Drawer_Operation SELECT datetime('2026-11-02', (i * 86399 / " +
        std::to_string(rows) +
        ") || ' seconds'), substr('Prelievo   Versamento EccedenzaCa', 1 + 11 * (i % 3), 11), "
        "substr('Contanti    Carta credito', 1 + 12 * (i % 2), 12), (i * 7919 % 200000 - 100000) / 100.0, "
        "iif(i % 5, '€', 'CHF'), 'Nota del movimento ' || (i % 1000), 10, 'Operatore ' || (i % 7), 1, 1 FROM "
        "n");
}

} // namespace kova::bench
