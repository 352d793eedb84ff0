#include "adapters/odbc/odbc_database.h"
#include "adapters/sqlite/sqlite_database.h"
#include "kova-test-server/tds_server.h"
#include "shop/shop_database.h"

#include <benchmark/benchmark.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>

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

/// Reads all movements with seven columns of every kind; returns the seconds of one read.
double readAll(benchmark::State& state, DatabaseConnection& connection) {
    const Query query{"SELECT DataOperazione, TipoOperazione, idpagamento, ImportoIncassato, Valuta, Note,"
                      " idutente FROM [dbo].[tabPagamentiScontriniBackoffice]"};
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

} // namespace
} // namespace kova::bench

int main(int count, char** arguments) {
    kova::bench::Sources sources;
    kova::bench::sources = &sources;
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
}
