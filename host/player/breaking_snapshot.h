#pragma once
#include "ports/database.h"

#include <cstddef>
#include <utility>

namespace kova {

/// A result whose connection dies under the cursor: the record count is known, but no cell can be read from
/// some row on.
class BreakingSnapshot final : public Snapshot {
  public:
    BreakingSnapshot(std::size_t readableRows, DatabaseError error)
        : readableRows_(readableRows), error_(std::move(error)) {}
    [[nodiscard]] Value at(std::size_t row, std::size_t column) const override {
        if (row >= readableRows_)
            throw error_;
        return Snapshot::at(row, column);
    }
    /// Takes over the rest of what another result has.
    void copy(Recordset records) {
        for (std::size_t column = 0; column < records.fieldCount(); ++column)
            addColumn(records.fieldName(column));
        for (; !records.endOfFile(); records.moveNext()) {
            for (std::size_t column = 0; column < records.fieldCount(); ++column)
                add(records.field(column));
            endRow();
        }
    }

  private:
    std::size_t readableRows_;
    DatabaseError error_;
};

} // namespace kova
