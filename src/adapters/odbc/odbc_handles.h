#pragma once
#include "adapters/odbc/odbc_connection_text.h"
#include "adapters/odbc/odbc_error.h"

#include <cstdint>
#include <string>

namespace kova {

/// Owns one handle of the driver manager.
class OdbcHandle {
  public:
    /// Throws DatabaseError. `parent` is null for an environment.
    OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent);
    OdbcHandle(const OdbcHandle&) = delete;
    OdbcHandle& operator=(const OdbcHandle&) = delete;
    ~OdbcHandle() { SQLFreeHandle(kind_, handle_); }
    [[nodiscard]] SQLHANDLE get() const { return handle_; }

  private:
    SQLSMALLINT kind_;
    SQLHANDLE handle_ = nullptr;
};

/// Owns a statement on a connection, and knows what its calls' results mean.
class OdbcStatementHandle {
  public:
    /// Throws DatabaseError.
    explicit OdbcStatementHandle(SQLHDBC connection)
        : connection_(connection), handle_(SQL_HANDLE_STMT, connection) {}
    [[nodiscard]] SQLHSTMT get() const { return handle_.get(); }
    /// Throws DatabaseError for a call on the statement that failed; see odbc_error.h for a dead link.
    void require(SQLRETURN result) const;

  private:
    SQLHDBC connection_;
    OdbcHandle handle_;
};

/// Attributes that are numbers travel as pointers.
SQLPOINTER attributeNumber(std::uintptr_t value);

/// The driver knows that the link to the server is gone.
bool isDead(SQLHDBC connection);

/// The installed ODBC driver for SQL Server to use where none is named: Microsoft's newest, otherwise
/// FreeTDS; where that is not installed either, the one that Windows comes with.
std::string serverDriver();

/// A connection to a server for as long as it lives.
class OdbcSession {
  public:
    /// Throws DatabaseError.
    explicit OdbcSession(const OdbcConnectionText& text);
    OdbcSession(const OdbcSession&) = delete;
    OdbcSession& operator=(const OdbcSession&) = delete;
    ~OdbcSession() { SQLDisconnect(connection_.get()); }
    [[nodiscard]] SQLHDBC get() const { return connection_.get(); }

  private:
    OdbcHandle environment_;
    OdbcHandle connection_;
};

} // namespace kova
