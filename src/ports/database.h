#pragma once
#include "base/date_time.h"
#include "base/error.h"
#include "base/paged_vector.h"
#include "base/text_arena.h"

#include <atomic>
#include <bit>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kova {

/// An exact decimal number: unscaled / 10^scale. Money has scale 4.
struct Decimal {
    std::int64_t unscaled = 0;
    std::uint8_t scale = 0; ///< digits after the point [0-18]
    friend bool operator==(const Decimal&, const Decimal&) = default;
};

/// An exact number of more digits than a Decimal has room for, as servers have them of up to 38.
struct LongDecimal {
    std::string_view digits; ///< as "-12.5" or ".5"
    friend bool operator==(const LongDecimal&, const LongDecimal&) = default;
};

using Null = std::monostate;

/// One cell. A text, or a long number's digits, is a view into the recordset that it came from and is valid
/// as long as that lives. A time of day without a day is a time of `TimeOfDayDate`.
using Value =
    std::variant<Null, bool, std::int64_t, double, Decimal, std::string_view, DateTime, LongDecimal>;

/// Day zero of the shops' data access: a moment of it stands for its time alone.
inline constexpr DateTime TimeOfDayDate{std::chrono::local_days{std::chrono::year(1899) / 12 / 30}};

/// A whole result, read once and immutable from then on. Cells and texts lie in blocks that never move: a
/// long result is neither copied while it grows, nor does it need one large piece of memory.
class Snapshot {
  public:
    Snapshot() = default;
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;
    virtual ~Snapshot() = default;

    [[nodiscard]] std::size_t rowCount() const { return rowCount_; }
    [[nodiscard]] std::size_t columnCount() const { return columnNames_.size(); }
    [[nodiscard]] const std::string& columnName(std::size_t column) const { return columnNames_.at(column); }
    /// First column of that name, letter case aside; nothing when there is none.
    [[nodiscard]] std::optional<std::size_t> findColumn(std::string_view name) const;
    /// Row and column must exist. A provider that fetches cells when they are asked for may throw
    /// DatabaseError.
    [[nodiscard]] virtual Value at(std::size_t row, std::size_t column) const;
    /// Bytes held by cells and texts.
    [[nodiscard]] std::size_t memoryUse() const {
        return bits_.memoryUse() + meanings_.memoryUse() + texts_.memoryUse();
    }

    // The filling side, for adapters: all columns first, then cell by cell, row by row. Fastest by the kind
    // of the cell, where that is known.
    void addColumn(std::string name) { columnNames_.push_back(std::move(name)); }
    void add(const Value& value);
    void addNull() { add(0, Kind::Nothing); }
    void addBoolean(bool value) { add(value ? 1 : 0, Kind::Boolean); }
    void addInteger(std::int64_t value) { add(value, Kind::Integer); }
    void addReal(double value) { add(std::bit_cast<std::int64_t>(value), Kind::Real); }
    void addExact(Decimal value) { add(value.unscaled, Kind::Exact, value.scale); }
    void addText(std::string_view value) { add(value, Kind::Text); }
    void addTime(DateTime value) { add(value.time_since_epoch().count(), Kind::Time); }
    /// Throws DatabaseError beyond the most rows.
    void endRow();
    static constexpr std::size_t MostRows = 100'000'000; ///< whatever counts rows or cells does so in 32 bits

  private:
    enum class Kind : std::uint8_t { Nothing, Boolean, Integer, Real, Exact, Text, Time, LongExact };
    /// What a cell's bits mean: the kind, and above it the scale of an exact number.
    using Meaning = std::uint8_t;
    static constexpr unsigned ScaleShift = 3;
    void add(std::int64_t bits, Kind kind, std::uint8_t scale = 0) {
        bits_.push_back(bits);
        meanings_.push_back(
            static_cast<Meaning>(static_cast<unsigned>(kind) | unsigned{scale} << ScaleShift));
    }
    void add(std::string_view text, Kind kind) {
        add(std::int64_t{static_cast<std::uint32_t>(texts_.keep(text))}, kind);
    }
    std::vector<std::string> columnNames_;
    PagedVector<std::int64_t> bits_; ///< of a text, its place
    PagedVector<Meaning> meanings_;
    TextArena texts_;
    std::size_t rowCount_ = 0;
};

/// A forward cursor over a snapshot. Copies share the snapshot and move on their own.
class Recordset {
  public:
    explicit Recordset(std::shared_ptr<const Snapshot> snapshot) : snapshot_(std::move(snapshot)) {}

    [[nodiscard]] bool endOfFile() const { return row_ >= snapshot_->rowCount(); }
    [[nodiscard]] std::int32_t recordCount() const {
        return static_cast<std::int32_t>(snapshot_->rowCount());
    }
    [[nodiscard]] std::size_t fieldCount() const { return snapshot_->columnCount(); }
    [[nodiscard]] const std::string& fieldName(std::size_t index) const {
        return snapshot_->columnName(index);
    }
    /// Does nothing at the end.
    void moveNext() { row_ += endOfFile() ? 0 : 1; }
    /// Throws DatabaseError at the end, for a name or index that is no field, or where reading breaks off.
    [[nodiscard]] Value field(std::string_view name) const;
    [[nodiscard]] Value field(std::size_t index) const;

  private:
    void requireRow() const;
    std::shared_ptr<const Snapshot> snapshot_;
    std::size_t row_ = 0;
};

enum class CursorType { Static = 3 };                 ///< values as on the wire of the shops' data access
enum class LockType { ReadOnly = 1, Optimistic = 3 }; ///< optimistic locks are never used to write

/// The one kind of parameter in use: a date, given as the user's text and as what it means.
struct DateParameter {
    std::string name;
    std::string text;
    DateTime value;
};

struct Query {
    std::string text; ///< SQL Server text, sent exactly as written
    CursorType cursor = CursorType::Static;
    LockType lock = LockType::ReadOnly;
    std::vector<DateParameter> parameters = {};
    std::atomic<std::size_t>* rowsRead = nullptr; ///< told now and then while rows are read; may be null
};

/// An open connection to the host's database. Never used from two threads at once; never writes.
class DatabaseConnection {
  public:
    virtual ~DatabaseConnection() = default;
    /// Whether `query` may be called on another thread than the user interface's.
    [[nodiscard]] virtual bool onAnyThread() const { return false; }
    /// After how long the server is given up that does not answer what it is asked now; 0 where nobody knows.
    /// Any thread may ask.
    [[nodiscard]] virtual std::chrono::seconds timeout() const { return {}; }
    /// Reads the whole result. Throws DatabaseError. An empty result is not an error.
    virtual Recordset query(const Query& query) = 0;
};

/// How long a server may take to answer, where the machine's settings say so; 0: as long as it likes. They
/// overrule what a connection string says.
struct ServerTimeouts {
    std::optional<std::chrono::seconds> logIn = std::nullopt, query = std::nullopt;
    /// For how long a server that did not answer is left alone at first, see ServerPause.
    std::chrono::seconds pause{5};
};

/// Opens connections from connection strings.
class DatabaseProvider {
  public:
    virtual ~DatabaseProvider() = default;
    /// Never null. Throws DatabaseError when no driver knows the text or the database cannot be opened.
    virtual std::shared_ptr<DatabaseConnection> open(const std::string& connectionString) = 0;
    /// Whether `open` may be called on another thread than the user interface's.
    [[nodiscard]] virtual bool opensOnAnyThread(const std::string& connectionString) const {
        (void)connectionString;
        return false;
    }
    /// After how long `open` gives a server up that does not answer; 0 where nobody knows.
    [[nodiscard]] virtual std::chrono::seconds logInTimeout(const std::string& connectionString) const {
        (void)connectionString;
        return {};
    }
};

// Error numbers beside those of DatabaseError, as the shops' data access reports them.
inline constexpr std::int32_t LogInRefused = -2147217843;
inline constexpr std::int32_t QueryTimedOut = -2147217871;

/// The server did not answer in time, or the link to it is gone or was never there.
[[nodiscard]] bool meansNoAnswer(const DatabaseError& error);

/// The error for a driver's SQLSTATE, of ODBC 3 or of ODBC 2, the server's own error number and the text. Its
/// number tells the kind of failure, the description ends with SQLSTATE and the server's number.
DatabaseError asDatabaseError(std::string state, std::int32_t native, std::string text);

/// What stands in the connection slot after opening failed: every query fails with NotConnected.
class ClosedConnection final : public DatabaseConnection {
  public:
    Recordset query(const Query& query) override;
};

} // namespace kova
