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

DatabaseError asError(const Record& record) {
    return asDatabaseError(record.state, record.native, record.text);
}

} // namespace

DatabaseError asDatabaseError(std::string state, std::int32_t native, std::string text) {
    state = currentState(std::move(state));
    text.append(" (SQLSTATE ").append(state).append(", native error ");
    text.append(std::to_string(native)).append(")");
    return {numberFor(state, native), text, state};
}

DatabaseError odbcError(SQLSMALLINT handleKind, SQLHANDLE handle) {
    return asError(tellingRecord(handleKind, handle));
}

DatabaseError lostConnectionError(SQLSMALLINT handleKind, SQLHANDLE handle) {
    Record record = tellingRecord(handleKind, handle);
    if (!record.state.starts_with("08") && !isTimeOut(currentState(record.state)))
        record.state = "08S01";
    return asError(record);
}

bool isConnectionFailure(const DatabaseError& error) {
    return error.sqlState().starts_with("08");
}

} // namespace kova
