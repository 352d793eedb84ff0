#pragma once
#include "ports/database.h"

struct sqlite3_stmt;

namespace kova {

/// Turns one column's cells into values of the type that the column was declared with. SQLite stores in any
/// column whatever it is given: a cell that does not fit the declaration arrives as it is stored, and so do
/// the cells of columns without a declaration and of expressions. Money is exact up to 15 digits, as many as
/// SQLite stores.
class ColumnReader {
  public:
    ColumnReader(sqlite3_stmt* statement, int column);
    /// The current row's cell. A text is valid until the next step.
    [[nodiscard]] Value read() const;

  private:
    enum class Declared { Anything, Boolean, Real, Money, Time };
    static Declared declaredType(const char* declaration);
    [[nodiscard]] Value readInteger() const;
    [[nodiscard]] Value readReal() const;
    [[nodiscard]] Value readBytes() const;

    sqlite3_stmt* statement_;
    int column_;
    Declared declared_;
};

} // namespace kova
