#pragma once
#include "adapters/odbc/odbc_handles.h"
#include "ports/database.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kova {

/// One column of a result: what it is called, what type its cells have, and where the driver puts those of
/// the rows that it fetches at a time.
class ColumnBuffer {
  public:
    /// Asks the driver about the column; positions count from 1. Throws DatabaseError.
    ColumnBuffer(const OdbcStatementHandle& statement, SQLUSMALLINT position);

    [[nodiscard]] const std::string& name() const { return name_; }
    /// Its cells may be of any length, so that no buffer can be bound.
    [[nodiscard]] bool unlimited() const { return target_.capacity == 0; }
    /// What a row needs of a bound buffer.
    [[nodiscard]] std::size_t bytesPerRow() const { return target_.capacity + sizeof(SQLLEN); }
    /// The driver fills the buffer with so many rows at each fetch from now on; it must not move any more.
    void bind(const OdbcStatementHandle& statement, std::size_t rows);
    /// Appends the cell of one of the rows fetched; of the only one when it is not bound. Throws
    /// DatabaseError.
    void readInto(Snapshot& snapshot, const OdbcStatementHandle& statement, std::size_t row);

  private:
    enum class Kind { Boolean, Integer, Single, Real, Exact, Text, Time, TimeOfDay, OffsetTime };
    struct Target {
        SQLSMALLINT type;     ///< of a cell, as the driver gives it
        std::size_t capacity; ///< bytes; 0 for a text of any length
    };
    static Kind kindOf(SQLSMALLINT sqlType);
    static Target targetOf(Kind kind, SQLULEN characters);
    void makeRoom(std::size_t rows);
    void fetchCell(const OdbcStatementHandle& statement);
    void fetchText(const OdbcStatementHandle& statement);
    template <class Cell>
    [[nodiscard]] const Cell* cellAt(std::size_t row) const {
        return reinterpret_cast<const Cell*>(cells_.get() + row * target_.capacity);
    }
    void addCell(Snapshot& snapshot, std::size_t row);
    /// Valid until the next one. Throws DatabaseError.
    [[nodiscard]] std::string_view text(std::size_t row);

    SQLUSMALLINT position_;
    std::string name_;
    Kind kind_ = Kind::Text;
    Target target_{};
    bool bound_ = false;
    std::unique_ptr<std::byte[]> cells_;
    std::vector<SQLLEN> sizes_; ///< bytes of each cell, or SQL_NULL_DATA
    std::string text_;          ///< the current text in UTF-8
};

/// Reads a driver's text of an exact number: an optional sign, digits, a point and digits; the digits before
/// the point may be missing (".5"). A number that a Decimal cannot hold arrives as a LongDecimal, and a text
/// that is no number as the text itself; both are views into `text`.
Value decimalFromText(std::string_view text);

} // namespace kova
