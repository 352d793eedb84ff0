#pragma once
#include "platform/database.h"

#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace kova {

/// A shop's database for one test: the schema without rows, written by the host and read through the port.
class ShopDatabase {
  public:
    virtual ~ShopDatabase() = default;
    /// Runs statements that every dialect understands.
    virtual void execute(const std::string& sql) = 0;
    virtual std::shared_ptr<DatabaseConnection> connection() = 0;
};

struct DatabaseAdapter {
    std::string name;
    std::unique_ptr<ShopDatabase> (*makeShop)();
};
inline void PrintTo(const DatabaseAdapter& adapter, std::ostream* out) {
    *out << adapter.name;
}

/// What every adapter promises. An adapter takes part by instantiating this suite.
class DatabaseContract : public testing::TestWithParam<DatabaseAdapter> {
  protected:
    Recordset query(const std::string& text) { return connection->query(Query{text}); }

    std::unique_ptr<ShopDatabase> shop = GetParam().makeShop();
    std::shared_ptr<DatabaseConnection> connection = shop->connection();
};

/// All rows, cells joined by "|": Null as "-", the others as in Switzerland.
std::vector<std::string> rowsOf(Recordset records);

DateTime dateTime(int year, unsigned month, unsigned day, int hours = 0, int minutes = 0, int seconds = 0,
                  int milliseconds = 0);

/// The parameter as the movements list gives it.
DateParameter dayParameter(DateTime day);

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
