#include "call_parameters.h"

#include "wire.h"

namespace kova::test {
namespace {

constexpr unsigned ntext = 0x63, date = 0x28, nullableDateTime = 0x6F;

/// Name and status come before the type.
unsigned readType(WireReader& reader) {
    reader.text(reader.byte());
    reader.byte();
    return reader.byte();
}

std::string readText(WireReader& reader) {
    constexpr std::size_t lengthAndCollation = 4 + 5;
    if (readType(reader) != ntext)
        throw std::runtime_error("a text is expected");
    reader.bytes(lengthAndCollation);
    return reader.text(static_cast<std::size_t>(reader.number<std::int32_t>()) / 2);
}

DateTime readDate(WireReader& reader) {
    using namespace std::chrono;
    const auto type = readType(reader);
    if (type == date && reader.byte() == 3) {
        const auto low = reader.word();
        return local_days(0001y / January / 1) + days(low | static_cast<std::size_t>(reader.byte()) << 16);
    }
    if (type == nullableDateTime && reader.byte() == 8 && reader.byte() == 8) {
        const auto day = local_days(1900y / January / 1) + days(reader.number<std::int32_t>());
        return day + milliseconds(std::int64_t{reader.number<std::uint32_t>()} * 10 / 3);
    }
    throw std::runtime_error("a date is expected");
}

} // namespace

ExecuteCall readExecuteCall(std::string_view body) {
    WireReader reader(body);
    constexpr unsigned byNumber = 0xFFFF, executeSql = 10;
    if (reader.word() != byNumber || reader.word() != executeSql)
        throw std::runtime_error("only sp_executesql can be called");
    reader.word(); // options
    ExecuteCall call;
    call.text = readText(reader);
    if (!reader.atEnd())
        call.declaration = readText(reader);
    while (!reader.atEnd())
        call.dates.push_back(readDate(reader));
    return call;
}

} // namespace kova::test
