#pragma once
#include "shop/shop_database.h"

#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace kova {

/// A way to a shop's database, which the host writes to and the component reads.
struct DatabaseAdapter {
    std::string name;
    std::shared_ptr<DatabaseConnection> (*open)(const ShopDatabase& host);
    ShopDatabase (*begin)() = ShopDatabase::inMemory;
};
inline void PrintTo(const DatabaseAdapter& adapter, std::ostream* out) {
    *out << adapter.name;
}

/// What every adapter promises of a shop without rows. An adapter takes part by instantiating this suite.
class DatabaseContract : public testing::TestWithParam<DatabaseAdapter> {
  protected:
    DatabaseContract() { host.createSchema(); }
    Recordset query(const std::string& text) { return connection->query(Query{text}); }

    ShopDatabase host = GetParam().begin();
    std::shared_ptr<DatabaseConnection> connection = GetParam().open(host);
};

/// Compares every cell with its value, the type included.
void expectCells(Recordset records, const std::vector<std::vector<Value>>& expected);

/// All rows, cells joined by "|": Null as "-", the others as in Switzerland.
std::vector<std::string> rowsOf(Recordset records);

inline DateTime dateTime(int year, int month, int day, std::chrono::milliseconds time = {}) {
    return std::chrono::local_days(std::chrono::year(year) / month / day) + time;
}

/// The parameter as the movements list gives it.
inline DateParameter dayParameter(DateTime day) {
    return {"Data", "as typed", day};
}

/// Runs the action, which must fail with a DatabaseError, and returns that.
template <class Action>
DatabaseError databaseErrorOf(Action action) {
    try {
        action();
    } catch (const DatabaseError& error) {
        return error;
    }
    ADD_FAILURE() << "no DatabaseError was thrown";
    return {0, "", ""};
}

} // namespace kova
