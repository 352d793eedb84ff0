#include "platform/database.h"

#include "platform/letter_case.h"
#include "platform/overloaded.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

namespace kova {

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
    const Cell& cell = cells_[row * columnNames_.size() + column];
    switch (cell.kind) {
    case Kind::Boolean:
        return cell.bits != 0;
    case Kind::Integer:
        return cell.bits;
    case Kind::Real:
        return std::bit_cast<double>(cell.bits);
    case Kind::Exact:
        return Decimal{cell.bits, cell.scale};
    case Kind::Text:
        return texts_.at({static_cast<std::uint32_t>(cell.bits), cell.length});
    case Kind::Time:
        return DateTime(std::chrono::milliseconds(cell.bits));
    case Kind::Nothing:
        break;
    }
    return Null{};
}

void Snapshot::add(const Value& value) {
    cells_.push_back(std::visit(Overloaded{
                                    [](Null) { return Cell{}; },
                                    [](bool v) {
                                        return Cell{v ? 1 : 0, 0, Kind::Boolean, 0};
                                    },
                                    [](std::int64_t v) {
                                        return Cell{v, 0, Kind::Integer, 0};
                                    },
                                    [](double v) {
                                        return Cell{std::bit_cast<std::int64_t>(v), 0, Kind::Real, 0};
                                    },
                                    [](Decimal v) {
                                        return Cell{v.unscaled, 0, Kind::Exact, v.scale};
                                    },
                                    [this](std::string_view v) {
                                        const TextArena::Place place = texts_.keep(v);
                                        return Cell{place.offset, place.length, Kind::Text, 0};
                                    },
                                    [](DateTime v) {
                                        return Cell{v.time_since_epoch().count(), 0, Kind::Time, 0};
                                    },
                                },
                                value));
}

void Recordset::requireRow() const {
    if (endOfFile())
        throw DatabaseError(3021, "Either BOF or EOF is True, or the current record has been deleted.",
                            "HY109");
    if (interruption_ && row_ >= interruption_->afterRows)
        throw interruption_->error;
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

Recordset ClosedConnection::query(const Query&) {
    throw DatabaseError(
        DatabaseError::NotConnected,
        "The connection cannot be used to perform this operation. It is either closed or invalid "
        "in this context.",
        "08003");
}

} // namespace kova
