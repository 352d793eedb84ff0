#include "adapters/odbc/odbc_error.h"

#include "base/utf16.h"

#include <optional>
#include <sqlext.h>
#include <sqlucode.h>
#include <vector>

namespace kova {
namespace {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "the driver manager's wide characters are UTF-16");

struct Record {
    std::string state;
    std::int32_t native = 0;
    std::string text;
};

std::optional<Record> readRecord(SQLSMALLINT kind, SQLHANDLE handle, SQLSMALLINT number) {
    SQLWCHAR state[6] = {};
    std::vector<SQLWCHAR> text(512);
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const auto read = [&] {
        return succeeded(SQLGetDiagRecW(kind, handle, number, state, &native, text.data(),
                                        static_cast<SQLSMALLINT>(text.size()), &length));
    };
    if (!read())
        return std::nullopt;
    if (static_cast<std::size_t>(length) >= text.size()) {
        text.resize(static_cast<std::size_t>(length) + 1);
        read();
    }
    Record record;
    record.native = native;
    for (int i = 0; i < 5; ++i)
        record.state += static_cast<char>(state[i]);
    const auto* const characters = reinterpret_cast<const char16_t*>(text.data());
    appendUtf16(record.text, std::u16string_view(characters)); // always ends with a zero
    return record;
}

/// The first record that is no mere warning; the driver puts the cause before what follows from it.
Record tellingRecord(SQLSMALLINT kind, SQLHANDLE handle) {
    std::optional<Record> first;
    for (SQLSMALLINT number = 1; auto record = readRecord(kind, handle, number); ++number) {
        if (!record->state.starts_with("01"))
            return *record;
        if (!first)
            first = record;
    }
    return first.value_or(Record{"HY000", 0, "The driver gives no reason"});
}

DatabaseError asError(const Record& record) {
    return asDatabaseError(record.state, record.native, record.text);
}

} // namespace

DatabaseError odbcError(SQLSMALLINT handleKind, SQLHANDLE handle) {
    return asError(tellingRecord(handleKind, handle));
}

DatabaseError lostConnectionError(SQLSMALLINT handleKind, SQLHANDLE handle) {
    Record record = tellingRecord(handleKind, handle);
    if (!record.state.starts_with("08") && asError(record).number() != QueryTimedOut)
        record.state = "08S01";
    return asError(record);
}

bool isConnectionFailure(const DatabaseError& error) {
    return error.sqlState().starts_with("08");
}

} // namespace kova
