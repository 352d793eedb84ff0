#include "player/script_database.h"

namespace kova {
namespace {

constexpr std::string_view ScriptsOwnDatabase = "Data Source=:host:";

DatabaseError failure(const QueryWatch::FailRule& rule) {
    return {DatabaseError::CommandFailed, rule.message, "42000"};
}

} // namespace

Recordset QueryWatch::run(DatabaseConnection& connection, const Query& query) {
    queries_.push_back(query);
    const FailRule* breaking = nullptr; // the one that breaks off first
    for (const auto& rule : rules_) {
        if (query.text.find(rule.piece) == std::string::npos)
            continue;
        if (!rule.afterRows)
            throw failure(rule);
        if (breaking == nullptr || *rule.afterRows < *breaking->afterRows)
            breaking = &rule;
    }
    auto records = connection.query(query);
    if (breaking == nullptr)
        return records;
    auto broken = std::make_shared<BreakingSnapshot>(*breaking->afterRows, failure(*breaking));
    broken->copy(std::move(records));
    return Recordset(std::move(broken));
}

std::shared_ptr<DatabaseConnection> ScriptDatabases::open(const std::string& connectionString) {
    if (connectionString == ScriptsOwnDatabase)
        return hostConnection();
    return std::make_shared<WatchedConnection>(others_.open(connectionString), watch_);
}

std::shared_ptr<DatabaseConnection> ScriptDatabases::hostConnection() const {
    return std::make_shared<WatchedConnection>(hostConnection_, watch_);
}

} // namespace kova
