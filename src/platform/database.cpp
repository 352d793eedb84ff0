#include "platform/database.h"

#include "platform/letter_case.h"
#include "platform/overloaded.h"

#include <algorithm>
#include <bit>

namespace kova {

std::optional<std::size_t> Snapshot::findColumn(std::string_view name) const {
    const auto found = std::find_if(columnNames_.begin(), columnNames_.end(),
                                    [&](const auto& column) { return equalIgnoringCase(column, name); });
    if (found == columnNames_.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - columnNames_.begin());
}

Value Snapshot::at(std::size_t row, std::size_t column) const {
    const std::size_t index = row * columnNames_.size() + column;
    const Cell& cell = cells_.at(index / BlockCells).at(index % BlockCells);
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
        return std::string_view(std::bit_cast<const char*>(cell.bits), cell.length);
    case Kind::Time:
        return DateTime(std::chrono::milliseconds(cell.bits));
    case Kind::Nothing:
        break;
    }
    return Null{};
}

void Snapshot::add(const Value& value) {
    if (cells_.empty() || cells_.back().size() == BlockCells) {
        cells_.emplace_back();
        cells_.back().reserve(cells_.size() > 1 ? BlockCells : 0); // most results are short
    }
    cells_.back().push_back(std::visit(Overloaded{
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
                                               return Cell{std::bit_cast<std::int64_t>(keep(v).data()),
                                                           static_cast<std::uint32_t>(v.size()), Kind::Text,
                                                           0};
                                           },
                                           [](DateTime v) {
                                               return Cell{v.time_since_epoch().count(), 0, Kind::Time, 0};
                                           },
                                       },
                                       value));
}

std::string_view Snapshot::keep(std::string_view text) {
    constexpr std::size_t firstBlock = 1024, largestBlock = 65536;
    if (texts_.empty() || texts_.back().capacity() - texts_.back().size() < text.size()) {
        const std::size_t doubled = texts_.empty() ? firstBlock : 2 * texts_.back().capacity();
        texts_.emplace_back();
        texts_.back().reserve(std::max(std::min(doubled, largestBlock), text.size()));
    }
    std::string& block = texts_.back();
    const std::size_t begin = block.size();
    block.append(text);
    return std::string_view(block).substr(begin);
}

std::size_t Snapshot::memoryUse() const {
    std::size_t bytes = 0;
    for (const auto& block : cells_)
        bytes += block.capacity() * sizeof(Cell);
    for (const auto& block : texts_)
        bytes += block.capacity();
    return bytes;
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
