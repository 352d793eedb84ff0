#pragma once
#include "ports/platform.h"

#include <memory>
#include <string>

namespace kova {

/// Opens what a connection string names: with `Provider=…` what ADO opens, where Windows has it; a server
/// through ODBC, where the build has it, with `Driver=…`, `DSN=…`, `FILEDSN=…` or in ADO's form; everything
/// else the embedded database, which reads `Data Source=FILE`.
class Databases final : public DatabaseProvider {
  public:
    explicit Databases(const ServerTimeouts& timeouts = {}) : timeouts_(timeouts) {}
    std::shared_ptr<DatabaseConnection> open(const std::string& connectionString) override;
    [[nodiscard]] bool opensOnAnyThread(const std::string& connectionString) const override;
    [[nodiscard]] std::chrono::seconds logInTimeout(const std::string& connectionString) const override;

  private:
    ServerTimeouts timeouts_;
};

/// `LogInTimeout`, `QueryTimeout` and `RetryPause` of section `Database`, in seconds. What is no such number
/// counts as not set.
ServerTimeouts machineTimeouts(const SettingsStore& settings);

/// A connection that the host opened, an SQLHDBC, which stays the host's. Throws DatabaseError in builds
/// without ODBC.
std::shared_ptr<DatabaseConnection> shareOdbcConnection(void* connectionHandle);

} // namespace kova
