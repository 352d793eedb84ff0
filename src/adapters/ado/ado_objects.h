#pragma once
#include "com/late_bound.h"
#include "ports/database.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace kova {

/// The ids of members, for each of ADO's classes that are called.
struct AdoIds {
    com::MemberIds connection = com::noMemberIds(), records = com::noMemberIds(), fields = com::noMemberIds(),
                   field = com::noMemberIds(), command = com::noMemberIds(), parameters = com::noMemberIds(),
                   parameter = com::noMemberIds(), errors = com::noMemberIds(), error = com::noMemberIds();
};

/// The property `State` of a connection or record set.
bool isOpen(const com::LateBound& object);

/// The query as a record set of its own, which is closed in the end. Operations throw com::CallFailure, and
/// DatabaseError for what is no failed call.
class AdoRecords {
  public:
    /// `timeout`, in seconds, is the connection's; nothing where it has none.
    AdoRecords(const com::LateBound& connection, const Query& query, AdoIds& ids,
               std::optional<std::int32_t> timeout);
    AdoRecords(const AdoRecords&) = delete;
    AdoRecords& operator=(const AdoRecords&) = delete;
    ~AdoRecords();
    /// Reads forward to the end, and tells `rowsRead` how far it is; null for nobody.
    std::shared_ptr<const Snapshot> readAll(std::atomic<std::size_t>* rowsRead);

  private:
    void open(const com::LateBound& connection, const Query& query, std::optional<std::int32_t> timeout);
    void close() noexcept;
    void skipToRows();
    AdoIds& ids_;
    com::LateBound records_;
};

/// Adds a cell as ADO gives it. Throws DatabaseError for what no cell holds.
void addCell(Snapshot& snapshot, VARIANT& cell);

/// The error for a call that failed while the connection was in use: with the number, state and text of the
/// provider's, where it reported one.
DatabaseError adoError(const com::CallFailure& failure, const com::LateBound& connection, AdoIds& ids);

} // namespace kova
