#include "adapters/ado/ado_objects.h"
#include "base/single_precision.h"

#include <limits>
#include <span>
#include <string>

namespace kova {
namespace {

constexpr std::uint8_t LargestScale = 18;
constexpr std::uint64_t LargestInteger = std::numeric_limits<std::int64_t>::max();

/// As Windows writes it, whatever the region.
std::string textOf(VARIANT& cell) {
    com::Value text;
    if (FAILED(VariantChangeTypeEx(&text, &cell, LOCALE_INVARIANT, 0, VT_BSTR)))
        throw DatabaseError(DatabaseError::Unspecified,
                            "ADO gave a cell of a type that is not known: " + std::to_string(cell.vt),
                            "HY000");
    return com::narrow(text->bstrVal);
}

void addInteger(Snapshot& snapshot, std::uint64_t number) {
    if (number <= LargestInteger)
        snapshot.add(static_cast<std::int64_t>(number));
    else
        snapshot.add(LongDecimal{std::to_string(number)});
}

void addDecimal(Snapshot& snapshot, VARIANT& cell) {
    std::uint64_t digits = cell.decVal.Lo64;
    std::uint8_t scale = cell.decVal.scale;
    for (; scale > LargestScale && digits % 10 == 0; --scale)
        digits /= 10;
    if (cell.decVal.Hi32 != 0 || digits > LargestInteger || scale > LargestScale) {
        snapshot.add(LongDecimal{textOf(cell)});
        return;
    }
    const auto number = static_cast<std::int64_t>(digits);
    snapshot.add(Decimal{(cell.decVal.sign & DECIMAL_NEG) != 0 ? -number : number, scale});
}

void addTime(Snapshot& snapshot, DATE date) {
    if (const auto time = com::dateTimeOf(date))
        snapshot.add(*time);
    else
        snapshot.add(date);
}

/// Two characters for each byte.
void addBytes(Snapshot& snapshot, SAFEARRAY& bytes) {
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string text;
    const auto* const first = static_cast<const std::uint8_t*>(bytes.pvData);
    for (const std::uint8_t byte : std::span(first, bytes.rgsabound[0].cElements)) {
        text += Digits[byte >> 4];
        text += Digits[byte & 0xF];
    }
    snapshot.add(text);
}

} // namespace

void addCell(Snapshot& snapshot, VARIANT& cell) {
    switch (cell.vt) {
    case VT_EMPTY:
    case VT_NULL:
        return snapshot.add(Null{});
    case VT_BOOL:
        return snapshot.add(cell.boolVal != VARIANT_FALSE);
    case VT_I1:
        return snapshot.add(std::int64_t{static_cast<std::int8_t>(cell.cVal)});
    case VT_UI1:
        return snapshot.add(std::int64_t{cell.bVal});
    case VT_I2:
        return snapshot.add(std::int64_t{cell.iVal});
    case VT_UI2:
        return snapshot.add(std::int64_t{cell.uiVal});
    case VT_I4:
    case VT_INT:
        return snapshot.add(std::int64_t{cell.lVal});
    case VT_UI4:
    case VT_UINT:
        return snapshot.add(std::int64_t{cell.ulVal});
    case VT_I8:
        return snapshot.add(std::int64_t{cell.llVal});
    case VT_UI8:
        return addInteger(snapshot, cell.ullVal);
    case VT_R4:
        return snapshot.add(withoutNoise(cell.fltVal));
    case VT_R8:
        return snapshot.add(cell.dblVal);
    case VT_CY:
        return snapshot.add(Decimal{cell.cyVal.int64, 4});
    case VT_DECIMAL:
        return addDecimal(snapshot, cell);
    case VT_DATE:
        return addTime(snapshot, cell.date);
    case VT_BSTR:
        return snapshot.add(com::narrow(cell.bstrVal));
    case VT_ARRAY | VT_UI1:
        return addBytes(snapshot, *cell.parray);
    default:
        return snapshot.add(textOf(cell));
    }
}

} // namespace kova
