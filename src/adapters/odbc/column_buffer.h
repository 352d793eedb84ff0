#pragma once
#include "adapters/odbc/odbc_handles.h"
#include "ports/database.h"

#include <string>
#include <string_view>
#include <vector>

namespace kova {

/// One column of a result: what it is called, what type its cells have, and, when it is bound, where the
/// driver puts the current row's cell.
class ColumnBuffer {
  public:
    /// Asks the driver about the column; positions count from 1. Throws DatabaseError.
    ColumnBuffer(const OdbcStatementHandle& statement, SQLUSMALLINT position);

    [[nodiscard]] const std::string& name() const { return name_; }
    /// Its cells may be of any length, so that no buffer can be bound.
    [[nodiscard]] bool unlimited() const { return capacity_ == 0; }
    /// The driver fills the buffer at each fetch from now on; the object must not move any more.
    void bind(const OdbcStatementHandle& statement);
    /// Appends the current row's cell. Throws DatabaseError.
    void readInto(Snapshot& snapshot, const OdbcStatementHandle& statement);

  private:
    enum class Kind { Boolean, Integer, Single, Real, Exact, Text, Time, TimeOfDay, OffsetTime };
    union Fixed {
        unsigned char boolean;
        SQLBIGINT integer;
        float single;
        double real;
        SQL_TIMESTAMP_STRUCT time;
        SQL_TIME_STRUCT timeOfDay;
    };
    static Kind kindOf(SQLSMALLINT sqlType);
    [[nodiscard]] SQLSMALLINT targetType() const;
    [[nodiscard]] SQLPOINTER target();
    void fetchCell(const OdbcStatementHandle& statement);
    void fetchText(const OdbcStatementHandle& statement);
    [[nodiscard]] Value cell();

    SQLUSMALLINT position_;
    std::string name_;
    Kind kind_ = Kind::Text;
    SQLLEN capacity_ = 0; ///< bytes of the buffer; 0 for a text of any length
    bool bound_ = false;
    SQLLEN indicator_ = 0; ///< bytes of the cell, or SQL_NULL_DATA
    Fixed fixed_{};
    char characters_[64] = {}; ///< exact numbers and times with an offset arrive as text, and lose nothing
    std::u16string wide_;      ///< texts as they arrive
    std::string text_;         ///< the current text in UTF-8
};

/// Reads a driver's text of an exact number: an optional sign, digits, a point and digits; the digits before
/// the point may be missing (".5"). A number that a Decimal cannot hold arrives as a LongDecimal, and a text
/// that is no number as the text itself; both are views into `text`.
Value decimalFromText(std::string_view text);

} // namespace kova
