#include "adapters/databases/databases.h"

#include "adapters/sqlite/sqlite_database.h"
#ifdef KOVA_WITH_ODBC
#include "adapters/odbc/odbc_connection_text.h"
#include "adapters/odbc/odbc_database.h"
#endif
#ifdef KOVA_WITH_ADO
#include "adapters/ado/ado_database.h"
#endif

namespace kova {

std::shared_ptr<DatabaseConnection> Databases::open(const std::string& connectionString) {
#ifdef KOVA_WITH_ADO
    if (namesAdoProvider(connectionString))
        if (auto connection = openAdo(connectionString))
            return connection;
#endif
#ifdef KOVA_WITH_ODBC
    if (namesOdbc(connectionString))
        return openOdbc(connectionString);
#endif
    return SqliteProvider().open(connectionString);
}

std::shared_ptr<DatabaseConnection> shareOdbcConnection([[maybe_unused]] void* connectionHandle) {
#ifdef KOVA_WITH_ODBC
    return shareOdbc(connectionHandle);
#else
    throw DatabaseError(DatabaseError::Unspecified, "this build has no ODBC", "HYC00");
#endif
}

} // namespace kova
