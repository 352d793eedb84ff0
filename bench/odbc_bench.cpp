#include "adapters/odbc/odbc_database.h"
#include "adapters/sqlite/sqlite_database.h"
#include "kova-test-server/tds_server.h"
#include "shop/shop_database.h"

#include <benchmark/benchmark.h>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <vector>

namespace kova::bench {
namespace {

constexpr std::int32_t movements = 100'000;

/// The movements of years, in a file that the embedded adapter and the server both read.
class MovementFile {
  public:
    MovementFile() {
        std::filesystem::remove(path_);
        auto database = ShopDatabase::openFile(path_);
        database.createSchema();
        database.execute(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
            std::to_string(movements) +
            ") INSERT INTO tabPagamentiScontriniBackoffice SELECT i, datetime('2020-01-01', (i * 31) || "
            "' minutes'), 1 + i % 9, 1 + i % 5, 1, (i * 37 % 100000) / 100.0, '€', CASE WHEN i % 3 THEN NULL "
            "ELSE 'nota di movimento numero ' || i END, i % 5, 1 + i % 3, 1 + i % 4, NULL FROM n");
    }
    MovementFile(const MovementFile&) = delete;
    MovementFile& operator=(const MovementFile&) = delete;
    ~MovementFile() { std::filesystem::remove(path_); }
    [[nodiscard]] const std::string& path() const { return path_; }

  private:
    std::string path_ =
        (std::filesystem::temp_directory_path() / ("kova-bench-" + std::to_string(getpid()) + ".sqlite"))
            .string();
};

/// A server in a process of its own, so that its memory is not counted.
class ServerProcess {
  public:
    explicit ServerProcess(const std::string& file) {
        int said[2], over[2];
        if (pipe(said) != 0 || pipe(over) != 0)
            throw std::runtime_error("no pipes");
        child_ = fork();
        if (child_ == 0) {
            close(over[1]);
            serve(file, said[1], over[0]);
        }
        close(said[1]);
        close(over[0]);
        over_ = over[1];
        for (char c = 0; read(said[0], &c, 1) == 1;)
            connectionString_ += c;
        close(said[0]);
    }
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;
    ~ServerProcess() {
        close(over_);
        waitpid(child_, nullptr, 0);
    }
    [[nodiscard]] const std::string& connectionString() const { return connectionString_; }

  private:
    /// Until the other end of `over` closes, by whatever death.
    [[noreturn]] static void serve(const std::string& file, int said, int over) {
        {
            const tds::TdsServer server(openSqlite(file));
            const std::string text = server.connectionString();
            (void)!write(said, text.data(), text.size());
            close(said);
            char nothing = 0;
            (void)!read(over, &nothing, 1);
        }
        _exit(0);
    }
    pid_t child_ = 0;
    int over_ = -1;
    std::string connectionString_;
};

/// Megabytes that this process has had at most since the last reset.
double peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes)
            return kilobytes / 1024;
    }
    return 0;
}

void resetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

struct Sources {
    MovementFile file;
    ServerProcess server{file.path()}; ///< forks before this process has threads
};

Sources* sources = nullptr;
double embeddedSeconds = 0; ///< of one read

/// All movements with seven columns of every kind.
const Query query{"SELECT DataOperazione, TipoOperazione, idpagamento, ImportoIncassato, Valuta, Note,"
                  " idutente FROM [dbo].[tabPagamentiScontriniBackoffice]"};

/// Returns the seconds of one read.
double readAll(benchmark::State& state, DatabaseConnection& connection) {
    resetPeakMemory();
    const double before = peakMemory();
    double seconds = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        if (connection.query(query).recordCount() != movements)
            state.SkipWithError("not all movements were read");
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    state.counters["peak_MB"] = peakMemory();
    state.counters["grown_MB"] = peakMemory() - before;
    return seconds / static_cast<double>(state.iterations());
}

// 100,000 movements into a snapshot, from a file.
void embeddedMovements(benchmark::State& state) {
    embeddedSeconds = readAll(state, *openSqlite(sources->file.path()));
}
BENCHMARK(embeddedMovements)->Unit(benchmark::kMillisecond)->UseRealTime();

// The same through FreeTDS from the test server, which reads the same file and encodes each row: its time is
// part of it.
void odbcMovements(benchmark::State& state) {
    const double seconds = readAll(state, *openOdbc(sources->server.connectionString()));
    state.counters["times_embedded"] = seconds / embeddedSeconds;
}
BENCHMARK(odbcMovements)->Unit(benchmark::kMillisecond)->UseRealTime();

/// What any program does that fetches the movements: ODBC's own calls, with every column bound to a variable
/// of the kind that the adapter reads it as, and none of it kept.
class BareReading {
  public:
    BareReading(const std::string& connectionString, std::size_t rowsAtATime) : rows_(rowsAtATime) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment_);
        SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
        std::string text = connectionString;
        require(SQLDriverConnect(connection_, nullptr, characters(text), SQL_NTS, nullptr, 0, nullptr,
                                 SQL_DRIVER_NOPROMPT));
    }
    BareReading(const BareReading&) = delete;
    BareReading& operator=(const BareReading&) = delete;
    ~BareReading() {
        SQLDisconnect(connection_);
        SQLFreeHandle(SQL_HANDLE_DBC, connection_);
        SQLFreeHandle(SQL_HANDLE_ENV, environment_);
    }
    /// Returns how many rows there were.
    std::size_t read() {
        SQLHSTMT statement = nullptr;
        require(SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement));
        std::string text = query.text;
        require(SQLExecDirect(statement, characters(text), SQL_NTS));
        SQLULEN fetched = 1;
        if (rows_.size() > 1) {
            SQLSetStmtAttr(statement, SQL_ATTR_ROW_BIND_TYPE, reinterpret_cast<SQLPOINTER>(sizeof(Row)), 0);
            SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(rows_.size()), 0);
            SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
        }
        bind(statement);
        std::size_t count = 0;
        for (; SQL_SUCCEEDED(SQLFetch(statement)); count += fetched)
            benchmark::ClobberMemory();
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        return count;
    }

  private:
    struct Row {
        SQL_TIMESTAMP_STRUCT time;
        SQLBIGINT activity, payment, user;
        char amount[64];
        SQLWCHAR currency[64], note[256];
        SQLLEN sizes[7]; ///< or SQL_NULL_DATA
    };
    void bind(SQLHSTMT statement) {
        Row& row = rows_.front();
        const auto column = [&](SQLUSMALLINT number, SQLSMALLINT kind, auto& cell) {
            require(SQLBindCol(statement, number, kind, &cell, sizeof cell, &row.sizes[number - 1]));
        };
        column(1, SQL_C_TYPE_TIMESTAMP, row.time);
        column(2, SQL_C_SBIGINT, row.activity);
        column(3, SQL_C_SBIGINT, row.payment);
        column(4, SQL_C_CHAR, row.amount);
        column(5, SQL_C_WCHAR, row.currency);
        column(6, SQL_C_WCHAR, row.note);
        column(7, SQL_C_SBIGINT, row.user);
    }
    static SQLCHAR* characters(std::string& text) { return reinterpret_cast<SQLCHAR*>(text.data()); }
    static void require(SQLRETURN result) {
        if (!SQL_SUCCEEDED(result))
            throw std::runtime_error("the bare calls failed");
    }
    SQLHENV environment_ = nullptr;
    SQLHDBC connection_ = nullptr;
    std::vector<Row> rows_;
};

/// What reads took, each; the processor's time is this process's alone.
struct Times {
    void take(const auto& read) {
        const auto start = std::chrono::steady_clock::now();
        const double processorStart = processorSeconds();
        read();
        processor.push_back(processorSeconds() - processorStart);
        wall.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    static double processorSeconds() {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
    }
    static double median(std::vector<double>& values) {
        std::ranges::nth_element(values, values.begin() + std::ssize(values) / 2);
        return values[values.size() / 2];
    }
    std::vector<double> processor, wall;
};

// The adapter in turns with the bare calls, which fetch so many rows at a time. A result that is kept until
// the next one is there, as catalogues are, leaves its memory to the one after that; else the memory is new.
void odbcAndBareCalls(benchmark::State& state) {
    const std::string text = sources->server.connectionString();
    const auto adapter = openOdbc(text);
    BareReading bare(text, static_cast<std::size_t>(state.range(0)));
    Times ours, bares;
    std::optional<Recordset> kept;
    for (auto _ : state) {
        bares.take([&] {
            if (bare.read() != movements)
                state.SkipWithError("the bare calls did not fetch all movements");
        });
        ours.take([&] {
            const Recordset rows = adapter->query(query);
            if (rows.recordCount() != movements)
                state.SkipWithError("not all movements were read");
            if (state.range(1) != 0)
                kept = rows;
        });
    }
    state.counters["bare_cpu_ms"] = Times::median(bares.processor) * 1e3;
    state.counters["cpu_ms"] = Times::median(ours.processor) * 1e3;
    state.counters["times_bare_cpu"] = Times::median(ours.processor) / Times::median(bares.processor);
    state.counters["bare_ms"] = Times::median(bares.wall) * 1e3;
    state.counters["ms"] = Times::median(ours.wall) * 1e3;
    state.counters["times_bare"] = Times::median(ours.wall) / Times::median(bares.wall);
}
BENCHMARK(odbcAndBareCalls)
    ->ArgNames({"rows", "kept"})
    ->Args({1, 0})
    ->Args({1, 1})
    ->Args({64, 1})
    ->Iterations(15)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace
} // namespace kova::bench

int main(int count, char** arguments) {
    kova::bench::Sources sources;
    kova::bench::sources = &sources;
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
