#include "player/script_database.h"

namespace kova {
namespace {

constexpr std::string_view ScriptsOwnDatabase = "Data Source=:host:";

DatabaseError failure(const QueryWatch::FailRule& rule) {
    return {DatabaseError::CommandFailed, rule.message, "42000"};
}

std::shared_ptr<const Snapshot> copied(Recordset records) {
    auto copy = std::make_shared<Snapshot>();
    for (std::size_t column = 0; column < records.fieldCount(); ++column)
        copy->addColumn(records.fieldName(column));
    for (; !records.endOfFile(); records.moveNext()) {
        for (std::size_t column = 0; column < records.fieldCount(); ++column)
            copy->add(records.field(column));
        copy->endRow();
    }
    return copy;
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
    return Recordset(copied(std::move(records)),
                     Recordset::Interruption{*breaking->afterRows, failure(*breaking)});
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
