#include "ports/database.h"

#include "base/ascii_text.h"
#include "base/overloaded.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

namespace kova {
namespace {

constexpr std::string_view NoConnection = "08003"; ///< there never was one

bool isTimeOut(std::string_view state) {
    return state == "HYT00" || state == "HYT01";
}

/// The state as ODBC 3 has it; hosts with connections of ODBC 2 get that one's.
std::string currentState(std::string state) {
    for (const auto& [old, current] : {std::pair("S0", "42S"), std::pair("S1", "HY"), std::pair("37", "42")})
        if (state.starts_with(old))
            return current + state.substr(current[2] == 'S' ? 3 : 2);
    return state;
}

std::int32_t numberFor(std::string_view state, std::int32_t native) {
    constexpr std::int32_t LogInFailed = 18456; // of the server; FreeTDS takes it for a refused command
    const auto kind = state.substr(0, 2);
    if (kind == "08")
        return DatabaseError::NotConnected;
    if (kind == "28" || native == LogInFailed)
        return LogInRefused;
    if (isTimeOut(state))
        return QueryTimedOut;
    // States that are about the command: cardinality, data, integrity, deadlock, syntax, parameters.
    for (const char* const about : {"07", "21", "22", "23", "40", "42", "44"})
        if (kind == about)
            return DatabaseError::CommandFailed;
    return DatabaseError::Unspecified;
}

} // namespace

std::optional<std::size_t> Snapshot::findColumn(std::string_view name) const {
    const auto found = std::find_if(columnNames_.begin(), columnNames_.end(),
                                    [&](const auto& column) { return equalIgnoringCase(column, name); });
    if (found == columnNames_.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - columnNames_.begin());
}

Value Snapshot::at(std::size_t row, std::size_t column) const {
    if (row >= rowCount_ || column >= columnNames_.size())
        throw std::out_of_range("no such cell");
    const std::size_t cell = row * columnNames_.size() + column;
    const std::int64_t bits = bits_[cell];
    const Meaning meaning = meanings_[cell];
    switch (static_cast<Kind>(meaning & ((1U << ScaleShift) - 1))) {
    case Kind::Boolean:
        return bits != 0;
    case Kind::Integer:
        return bits;
    case Kind::Real:
        return std::bit_cast<double>(bits);
    case Kind::Exact:
        return Decimal{bits, static_cast<std::uint8_t>(meaning >> ScaleShift)};
    case Kind::Text:
        return texts_.at(static_cast<TextArena::Place>(bits));
    case Kind::Time:
        return DateTime(std::chrono::milliseconds(bits));
    case Kind::LongExact:
        return LongDecimal{texts_.at(static_cast<TextArena::Place>(bits))};
    case Kind::Nothing:
        break;
    }
    return Null{};
}

void Snapshot::endRow() {
    if (rowCount_ == MostRows)
        throw DatabaseError(DatabaseError::Unspecified,
                            "The result has more than " + std::to_string(MostRows) + " rows", "HY000");
    ++rowCount_;
}

void Snapshot::add(const Value& value) {
    std::visit(Overloaded{
                   [this](Null) { addNull(); },
                   [this](bool v) { addBoolean(v); },
                   [this](std::int64_t v) { addInteger(v); },
                   [this](double v) { addReal(v); },
                   [this](Decimal v) { addExact(v); },
                   [this](std::string_view v) { addText(v); },
                   [this](DateTime v) { addTime(v); },
                   [this](LongDecimal v) { add(v.digits, Kind::LongExact); },
               },
               value);
}

void Recordset::requireRow() const {
    if (endOfFile())
        throw DatabaseError(3021, "Either BOF or EOF is True, or the current record has been deleted.",
                            "HY109");
}

Value Recordset::field(std::string_view name) const {
    requireRow();
    if (const auto column = snapshot_->findColumn(name))
        return snapshot_->at(row_, *column);
    throw DatabaseError(3265, "Item cannot be found in the collection: " + std::string(name), "07009");
}

Value Recordset::field(std::size_t index) const {
    requireRow();
    if (index >= snapshot_->columnCount())
        throw DatabaseError(3265, "Item cannot be found in the collection: " + std::to_string(index),
                            "07009");
    return snapshot_->at(row_, index);
}

bool meansNoAnswer(const DatabaseError& error) {
    const std::string& state = error.sqlState();
    return error.number() == QueryTimedOut || state.starts_with("HYT") ||
           (state.starts_with("08") && state != NoConnection);
}

DatabaseError asDatabaseError(std::string state, std::int32_t native, std::string text) {
    state = currentState(std::move(state));
    text.append(" (SQLSTATE ").append(state).append(", native error ");
    text.append(std::to_string(native)).append(")");
    return {numberFor(state, native), text, state};
}

Recordset ClosedConnection::query(const Query&) {
    throw DatabaseError(
        DatabaseError::NotConnected,
        "The connection cannot be used to perform this operation. It is either closed or invalid "
        "in this context.",
        std::string(NoConnection));
}

} // namespace kova
