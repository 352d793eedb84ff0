#include "adapters/databases/databases.h"

#include "adapters/sqlite/sqlite_database.h"
#ifdef KOVA_WITH_ODBC
#include "adapters/odbc/odbc_connection_text.h"
#include "adapters/odbc/odbc_database.h"
#endif
#ifdef KOVA_WITH_ADO
#include "adapters/ado/ado_database.h"
#endif

#include <charconv>

namespace kova {

std::shared_ptr<DatabaseConnection> Databases::open(const std::string& connectionString) {
#ifdef KOVA_WITH_ADO
    if (namesAdoProvider(connectionString))
        if (auto connection = openAdo(connectionString, timeouts_))
            return connection;
#endif
#ifdef KOVA_WITH_ODBC
    if (namesOdbc(connectionString))
        return openOdbc(connectionString, timeouts_);
#endif
    return SqliteProvider().open(connectionString);
}

bool Databases::opensOnAnyThread([[maybe_unused]] const std::string& connectionString) const {
#ifdef KOVA_WITH_ADO
    return !namesAdoProvider(connectionString); // its objects stay on the thread that made them
#else
    return true;
#endif
}

std::chrono::seconds Databases::logInTimeout([[maybe_unused]] const std::string& connectionString) const {
#ifdef KOVA_WITH_ODBC
    if (opensOnAnyThread(connectionString) && namesOdbc(connectionString))
        return odbcLogInTimeout(connectionString, timeouts_);
#endif
    return timeouts_.logIn.value_or(std::chrono::seconds(0));
}

ServerTimeouts machineTimeouts(const SettingsStore& settings) {
    const auto seconds = [&](const char* name) -> std::optional<std::chrono::seconds> {
        const std::string text =
            settings.read(std::string(SettingsStore::BaseKey), "Database", name).value_or("");
        std::int32_t number = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
        if (text.empty() || read.ec != std::errc() || read.ptr != text.data() + text.size() || number < 0)
            return std::nullopt;
        return std::chrono::seconds(number);
    };
    const ServerTimeouts usual;
    return {seconds("LogInTimeout"), seconds("QueryTimeout"), seconds("RetryPause").value_or(usual.pause)};
}

std::shared_ptr<DatabaseConnection> shareOdbcConnection([[maybe_unused]] void* connectionHandle) {
#ifdef KOVA_WITH_ODBC
    return shareOdbc(connectionHandle);
#else
    throw DatabaseError(DatabaseError::Unspecified, "this build has no ODBC", "HYC00");
#endif
}

} // namespace kova
