#pragma once
#include <benchmark/benchmark.h>

#include <sqlite3.h>
#include <stdexcept>
#include <string>

namespace kova::bench {

/// What any program must do that reads the rows: step, and look at each cell without keeping it.
class RawReading {
  public:
    RawReading(const std::string& file, const std::string& sql) {
        if (sqlite3_open_v2(file.c_str(), &database_, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK ||
            sqlite3_db_config(database_, SQLITE_DBCONFIG_MAINDBNAME, "dbo") != SQLITE_OK ||
            sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement_, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(database_));
    }
    RawReading(const RawReading&) = delete;
    RawReading& operator=(const RawReading&) = delete;
    ~RawReading() {
        sqlite3_finalize(statement_);
        sqlite3_close(database_);
    }
    std::size_t read() {
        std::size_t rows = 0;
        for (; sqlite3_step(statement_) == SQLITE_ROW; ++rows)
            for (int column = 0; column < sqlite3_column_count(statement_); ++column)
                readCell(column);
        sqlite3_reset(statement_);
        return rows;
    }

  private:
    void readCell(int column) {
        switch (sqlite3_column_type(statement_, column)) {
        case SQLITE_INTEGER:
            benchmark::DoNotOptimize(sqlite3_column_int64(statement_, column));
            break;
        case SQLITE_FLOAT:
            benchmark::DoNotOptimize(sqlite3_column_double(statement_, column));
            break;
        default:
            benchmark::DoNotOptimize(sqlite3_column_text(statement_, column));
            benchmark::DoNotOptimize(sqlite3_column_bytes(statement_, column));
        }
    }
    sqlite3* database_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

} // namespace kova::bench
