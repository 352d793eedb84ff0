#include "adapters/ado/ado_objects.h"

#include <optional>

namespace kova {
namespace {

constexpr std::size_t StateLength = 5;

/// Objects of another process that has gone.
bool isGone(HRESULT code) {
    return code == RPC_E_DISCONNECTED || code == RPC_E_SERVER_DIED || code == RPC_E_SERVER_DIED_DNE ||
           code == CO_E_OBJNOTCONNECTED || code == HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE);
}

std::int32_t numberOf(HRESULT code) {
    constexpr std::int32_t ObjectIsClosed = 3704;
    const std::int32_t number = com::errorNumber(code);
    return number == ObjectIsClosed ? DatabaseError::NotConnected : number;
}

/// What the provider reported of this failure; the collection also keeps what it reported of earlier ones.
std::optional<DatabaseError> reported(const com::CallFailure& failure, const com::LateBound& connection,
                                      AdoIds& ids) {
    const auto errors = connection.object(L"Errors", ids.errors);
    const std::int32_t count = errors.number(L"Count");
    for (std::int32_t i = 0; i < count; ++i) {
        const auto error = errors.object(L"Item", ids.error, i);
        if (error.number(L"Number") != failure.code() || error.text(L"Description") != failure.what())
            continue;
        if (const std::string state = error.text(L"SQLState"); state.size() == StateLength)
            return asDatabaseError(state, error.number(L"NativeError"), failure.what());
    }
    return std::nullopt;
}

} // namespace

DatabaseError adoError(const com::CallFailure& failure, const com::LateBound& connection, AdoIds& ids) {
    if (isGone(failure.code()))
        return {DatabaseError::NotConnected, failure.what(), "08S01"};
    try {
        if (auto error = reported(failure, connection, ids))
            return *error;
    } catch (const com::CallFailure&) { // the failure alone says enough
    }
    const std::int32_t number = numberOf(failure.code());
    return {number, failure.what(), number == DatabaseError::NotConnected ? "08003" : "HY000"};
}

} // namespace kova
