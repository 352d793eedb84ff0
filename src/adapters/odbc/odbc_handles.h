#pragma once
#include "adapters/odbc/odbc_connection_text.h"

#include <sql.h>
#include <utility>

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
