#pragma once
#include "tds_session.h"

#include <atomic>
#include <condition_variable>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kova::tds {

/// How a client comes in.
struct Access {
    std::string user = "till", password = "se;cret";
    std::string version = "7.4"; ///< of TDS, which the connection string asks for
    std::uint16_t port = 0;      ///< 0 for a free one
};

/// A SQL Server to try things out: speaks as much TDS (7.1 to 7.4) as FreeTDS asks for, on a free port of the
/// loopback interface, answers from an embedded database, and fails on demand. It knows no SQL of its own,
/// but for `SEND TYPE CELL …`: one row of columns, of which TYPE and CELL are the bytes in hexadecimal
/// digits.
class TdsServer {
  public:
    /// Listens from now on. The database is used from other threads, while a client waits for its answer.
    /// Throws std::runtime_error when the port is taken.
    explicit TdsServer(std::shared_ptr<DatabaseConnection> database, Access access = {});
    ~TdsServer() { stop(); }

    /// Ends all connections and takes no more.
    void stop();
    /// Listens again, on the same port.
    void start();
    /// Forgets all faults and takes connections and log-ins again.
    void recover();
    /// For FreeTDS; `more` is appended.
    [[nodiscard]] std::string connectionString(const std::string& more = "") const;

    void setLogIns(LogIns logIns) { logIns_ = logIns; }
    void add(Fault fault);
    /// Waits until a query waits for recovery, but no longer than ten seconds. Whether one does.
    bool awaitHeld();
    /// What arrived since the last call, in order.
    std::vector<ExecuteCall> takeReceived();
    /// Highest byte of each protocol version that a client came in with.
    std::vector<unsigned> takeVersions();

  private:
    struct Client {
        std::unique_ptr<TdsSession> session;
        std::thread thread;
    };
    // For the sessions, on their own threads.
    friend class TdsSession;
    LogIns logIn(const std::string& user, const std::string& password, unsigned version);
    std::optional<Fault> received(const ExecuteCall& call);
    Recordset answer(const Query& query);
    void holdUntilRecovery();
    void letGo();

    void accept();

    std::shared_ptr<DatabaseConnection> database_;
    Access access_; ///< with the port that it listens on, after the first start
    int listener_ = -1;
    std::atomic<LogIns> logIns_ = LogIns::Accept;
    std::thread acceptor_;
    std::list<Client> clients_; ///< of the acceptor, and of `stop` when that has ended

    std::mutex mutex_; ///< guards what follows
    std::condition_variable changed_;
    int held_ = 0;       ///< queries that wait
    int recoveries_ = 0; ///< each lets them go
    std::vector<Fault> faults_;
    std::vector<ExecuteCall> received_;
    std::vector<unsigned> versions_;
};

} // namespace kova::tds
