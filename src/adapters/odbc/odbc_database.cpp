#include "adapters/odbc/odbc_database.h"

#include "adapters/odbc/odbc_error.h"
#include "adapters/odbc/odbc_handles.h"
#include "adapters/odbc/odbc_statement.h"
#include "ports/server_pause.h"

#include <atomic>
#include <optional>

namespace kova {
namespace {

OdbcConnectionText textOf(const std::string& connectionString, const ServerTimeouts& machine) {
    OdbcConnectionText text = parseOdbcConnectionText(connectionString, serverDriver());
    text.logInTimeout = machine.logIn.value_or(text.logInTimeout);
    text.queryTimeout = machine.query.value_or(text.queryTimeout);
    return text;
}

class SharedConnection final : public DatabaseConnection {
  public:
    explicit SharedConnection(SQLHDBC connection) : connection_(connection) {}
    [[nodiscard]] bool onAnyThread() const override { return true; }
    Recordset query(const Query& query) override {
        OdbcStatement statement(connection_, std::nullopt);
        statement.execute(query);
        return Recordset(statement.readAll());
    }

  private:
    SQLHDBC connection_;
};

class OwnConnection final : public DatabaseConnection {
  public:
    OwnConnection(OdbcConnectionText text, std::chrono::seconds pause)
        : text_(std::move(text)), pause_(pause) {
        connect();
    }
    Recordset query(const Query& query) override;
    [[nodiscard]] bool onAnyThread() const override { return true; }
    [[nodiscard]] std::chrono::seconds timeout() const override {
        return linked_ ? text_.queryTimeout : text_.logInTimeout;
    }

  private:
    void connect();
    Recordset read(const Query& query);
    std::unique_ptr<OdbcStatement> send(const Query& query);
    /// Null when the link turns out to have died since it was used last.
    std::unique_ptr<OdbcStatement> sendOnOldLink(const Query& query);
    void dropIfUnusable(const DatabaseError& error);

    OdbcConnectionText text_;
    std::atomic<bool> linked_ = false;     ///< or the next that the server is asked is to let us in
    std::unique_ptr<OdbcSession> session_; ///< null after the link was lost
    ServerPause pause_;
};

void OwnConnection::connect() {
    linked_ = false;
    session_ = std::make_unique<OdbcSession>(text_);
    linked_ = true;
}

/// After a time-out the server may still be about to answer, so that the connection is as good as lost.
void OwnConnection::dropIfUnusable(const DatabaseError& error) {
    if (isConnectionFailure(error) || error.number() == QueryTimedOut || isDead(session_->get()))
        session_.reset();
}

std::unique_ptr<OdbcStatement> OwnConnection::send(const Query& query) {
    try {
        auto statement = std::make_unique<OdbcStatement>(session_->get(), text_.queryTimeout);
        statement->execute(query);
        return statement;
    } catch (const DatabaseError& error) {
        dropIfUnusable(error);
        throw;
    }
}

std::unique_ptr<OdbcStatement> OwnConnection::sendOnOldLink(const Query& query) {
    try {
        return send(query);
    } catch (const DatabaseError& error) {
        if (session_ || error.number() == QueryTimedOut)
            throw;
        return nullptr;
    }
}

Recordset OwnConnection::read(const Query& query) {
    auto statement = session_ ? sendOnOldLink(query) : nullptr;
    if (!statement) { // a query that only reads may be sent again
        connect();
        statement = send(query);
    }
    try {
        return Recordset(statement->readAll());
    } catch (const DatabaseError& error) {
        statement.reset(); // before its connection
        dropIfUnusable(error);
        throw;
    }
}

Recordset OwnConnection::query(const Query& query) {
    return pause_.asked([&] { return read(query); });
}

} // namespace

std::shared_ptr<DatabaseConnection> openOdbc(const std::string& connectionString,
                                             const ServerTimeouts& machine) {
    return std::make_shared<OwnConnection>(textOf(connectionString, machine), machine.pause);
}

std::chrono::seconds odbcLogInTimeout(const std::string& connectionString, const ServerTimeouts& machine) {
    return textOf(connectionString, machine).logInTimeout;
}

std::shared_ptr<DatabaseConnection> shareOdbc(void* connectionHandle) {
    return std::make_shared<SharedConnection>(connectionHandle);
}

} // namespace kova
