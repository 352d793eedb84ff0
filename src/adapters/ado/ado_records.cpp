#include "adapters/ado/ado_objects.h"

#include <span>

namespace kova {
namespace {

// ADO's constants.
constexpr std::int32_t StateOpen = 1, CommandIsText = 1, TypeDate = 133, DirectionInput = 1,
                       OptionsUnspecified = -1;

constexpr std::int32_t RowsAtATime = 500;

/// The day as typed, which ADO reads in the user's region; as a date where it would read another.
com::Value dayOf(const DateParameter& parameter) {
    DATE read = 0;
    if (SUCCEEDED(VarDateFromStr(com::wide(parameter.text).data(), LOCALE_USER_DEFAULT, 0, &read)) &&
        com::dateTimeOf(read) == parameter.value)
        return com::Value(parameter.text);
    return com::Value(parameter.value);
}

com::LateBound commandFor(const Query& query, const com::LateBound& connection, AdoIds& ids,
                          std::optional<std::int32_t> timeout) {
    auto command = com::LateBound::create(L"ADODB.Command", ids.command);
    command.set(L"ActiveConnection", connection.get());
    if (timeout) // which it does not take over
        command.set(L"CommandTimeout", *timeout);
    command.set(L"CommandType", CommandIsText);
    command.set(L"CommandText", query.text);
    const auto parameters = command.object(L"Parameters", ids.parameters);
    for (const DateParameter& parameter : query.parameters) {
        const auto made = command.object(L"CreateParameter", ids.parameter, parameter.name, TypeDate,
                                         DirectionInput, 0, dayOf(parameter));
        parameters.call(L"Append", made.get());
    }
    return command;
}

/// The cells of a two-dimensional array, row by row.
class Cells {
  public:
    Cells(VARIANT& array, std::size_t columns) {
        SAFEARRAY* const given = array.vt == (VT_ARRAY | VT_VARIANT) ? array.parray : nullptr;
        if (given == nullptr || SafeArrayGetDim(given) != 2 || given->rgsabound[1].cElements != columns ||
            given->rgsabound[0].cElements == 0 || FAILED(SafeArrayLock(given)))
            throw DatabaseError(DatabaseError::Unspecified, "ADO gave no rows where there are some", "HY000");
        array_ = given;
        cells_ = {static_cast<VARIANT*>(given->pvData), columns * given->rgsabound[0].cElements};
    }
    Cells(const Cells&) = delete;
    Cells& operator=(const Cells&) = delete;
    ~Cells() { SafeArrayUnlock(array_); }
    [[nodiscard]] std::span<VARIANT> all() const { return cells_; }

  private:
    SAFEARRAY* array_ = nullptr;
    std::span<VARIANT> cells_;
};

void addRows(Snapshot& snapshot, com::Value rows) {
    const std::size_t columns = snapshot.columnCount();
    const Cells cells(*rows, columns);
    for (auto left = cells.all(); !left.empty(); left = left.subspan(columns)) {
        for (VARIANT& cell : left.first(columns))
            addCell(snapshot, cell);
        snapshot.endRow();
    }
}

} // namespace

bool isOpen(const com::LateBound& object) {
    return (object.number(L"State") & StateOpen) != 0;
}

AdoRecords::AdoRecords(const com::LateBound& connection, const Query& query, AdoIds& ids,
                       std::optional<std::int32_t> timeout)
    : ids_(ids), records_(com::LateBound::create(L"ADODB.Recordset", ids.records)) {
    try {
        open(connection, query, timeout);
        skipToRows();
    } catch (...) {
        close();
        throw;
    }
}

AdoRecords::~AdoRecords() {
    close();
}

void AdoRecords::open(const com::LateBound& connection, const Query& query,
                      std::optional<std::int32_t> timeout) {
    const auto cursor = static_cast<std::int32_t>(query.cursor), lock = static_cast<std::int32_t>(query.lock);
    if (query.parameters.empty())
        records_.call(L"Open", query.text, connection.get(), cursor, lock, OptionsUnspecified);
    else
        records_.call(L"Open", commandFor(query, connection, ids_, timeout).get(), com::LeftOut(), cursor,
                      lock, OptionsUnspecified);
}

/// A server may count rows before it sends some.
void AdoRecords::skipToRows() {
    while (!isOpen(records_)) {
        auto next = records_.object(L"NextRecordset", ids_.records);
        if (!next)
            throw DatabaseError(DatabaseError::CommandFailed, "the command gives no rows", "24000");
        records_ = std::move(next);
    }
}

void AdoRecords::close() noexcept {
    try {
        if (isOpen(records_))
            records_.call(L"Close");
    } catch (const std::exception&) { // its last reference closes it as well
    }
}

std::shared_ptr<const Snapshot> AdoRecords::readAll(std::atomic<std::size_t>* rowsRead) {
    auto snapshot = std::make_shared<Snapshot>();
    const auto fields = records_.object(L"Fields", ids_.fields);
    const std::int32_t count = fields.number(L"Count");
    for (std::int32_t i = 0; i < count; ++i)
        snapshot->addColumn(fields.object(L"Item", ids_.field, i).text(L"Name"));
    while (records_.number(L"EOF") == VARIANT_FALSE) {
        addRows(*snapshot, records_.call(L"GetRows", RowsAtATime));
        if (rowsRead != nullptr)
            rowsRead->store(snapshot->rowCount(), std::memory_order_relaxed);
    }
    return snapshot;
}

} // namespace kova
