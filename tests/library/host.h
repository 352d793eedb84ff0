#pragma once
// What hosts under test have in common: a sink, a shop, a log of their own, and a count of what does not
// hold.

#include "kova_drawer_man.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>

namespace kova::test {

struct Host final : EventSink {
    void SalvaPagamento(std::int32_t&, double&, std::string&, std::string&, std::int16_t&, std::int32_t&,
                        bool&) override {}
    void Stampa(std::string&) override {}
    void Anteprima(std::string&) override { onEvent(); }
    void ApriCassetto() override { onEvent(); }
    std::function<void()> onEvent = [] {};
};

inline int failures = 0;

inline void expect(bool holds, const std::string& what) {
    if (holds)
        return;
    std::cout << "does not hold: " << what << std::endl;
    ++failures;
}

template <class Failure = Error>
bool throws(const std::function<void()>& call) {
    try {
        call();
    } catch (const Failure&) {
        return true;
    }
    return false;
}

/// A file of this process alone.
inline std::filesystem::path ownFile(const std::string& name) {
    return std::filesystem::temp_directory_path() / ("kova_" + std::to_string(getpid()) + name);
}

/// A shop that has all tables and no rows but these; its file goes with the last connection, where it can.
inline std::shared_ptr<DatabaseConnection> shop(const char* rows = "") {
    const std::filesystem::path file = ownFile(".db");
    std::stringstream schema;
    schema << std::ifstream(KOVA_SCHEMA).rdbuf() << rows;
    sqlite3* made = nullptr;
    sqlite3_open(file.string().c_str(), &made);
    sqlite3_exec(made, schema.str().c_str(), nullptr, nullptr, nullptr);
    sqlite3_close(made);
    auto opened = openDatabase("Data Source=" + file.string());
    std::error_code inUse;
    std::filesystem::remove(file, inUse);
    return opened;
}

inline const std::filesystem::path logFile = ownFile(".log");

/// How many records the log has got since the last time.
inline int newRecords() {
    static int known = 0;
    int count = 0;
    std::ifstream file(logFile);
    for (std::string line; std::getline(file, line);)
        ++count;
    return count - std::exchange(known, count);
}

} // namespace kova::test
