#include "result_columns.h"

#include "services/conversions.h"

#include <algorithm>
#include <cmath>

namespace kova::tds {
namespace {

constexpr std::string_view Collation("\x09\x04\xD0\x00\x34", 5); // Latin1_General_CI_AS
constexpr std::size_t LongestText = 4000;                        // characters of nvarchar(n)
constexpr unsigned MoneyScale = 4;

double asReal(const Value& value) {
    return asDouble(value, RegionalSettings());
}

std::int64_t atMoneyScale(const Value& value) {
    if (const auto* const exact = std::get_if<Decimal>(&value); exact && exact->scale == MoneyScale)
        return exact->unscaled;
    return std::llround(asReal(value) * 10000);
}

/// Days since 1900 and three-hundredths of a second, as the server stores them.
void writeDateTime(WireWriter& writer, DateTime time) {
    using namespace std::chrono;
    const auto day = floor<days>(time);
    const auto since1900 = day - local_days(1900y / January / 1);
    const auto ticks = ((time - day).count() * 3 + 5) / 10;
    writer.byte(8)
        .number(static_cast<std::int32_t>(since1900.count()))
        .number(static_cast<std::uint32_t>(ticks));
}

} // namespace

ResultColumn::Type ResultColumn::typeOf(const Value& value) {
    if (std::holds_alternative<bool>(value))
        return Type::Bit;
    if (std::holds_alternative<std::int64_t>(value))
        return Type::Int;
    if (std::holds_alternative<double>(value))
        return Type::Float;
    if (std::holds_alternative<Decimal>(value))
        return Type::Money;
    return std::holds_alternative<DateTime>(value) ? Type::DateTime : Type::Text;
}

ResultColumn::Type ResultColumn::common(Type a, Type b) {
    const auto [low, high] = std::minmax(a, b);
    const bool numbers = low >= Type::Int && high <= Type::Money;
    return low == high || numbers ? high : Type::Text;
}

ResultColumn::ResultColumn(Recordset records, std::size_t column, unsigned version)
    : name_(records.fieldName(column)), version_(version) {
    std::optional<Type> type;
    for (; !records.endOfFile(); records.moveNext()) {
        const Value value = records.field(column);
        if (std::holds_alternative<Null>(value))
            continue;
        type = common(type.value_or(typeOf(value)), typeOf(value));
        if (const auto* const text = std::get_if<std::string_view>(&value))
            characters_ =
                std::max(characters_, text->size()); // bytes of UTF-8: never fewer than units of UTF-16
    }
    type_ = type.value_or(Type::Text);
    if (type_ == Type::Text && characters_ > LongestText)
        type_ = Type::LongText;
    characters_ = std::max<std::size_t>(characters_, 40); // of numbers and times among texts
}

void ResultColumn::describe(WireWriter& writer) const {
    constexpr unsigned Nullable = 0x09;
    if (version_ >= Tds72)
        writer.number(std::uint32_t{0});
    else
        writer.word(0);
    writer.word(Nullable);
    // The type and the size of its longest cell, as the enumeration has them.
    constexpr std::pair<unsigned, unsigned> Sized[] = {{0x68, 1}, {0x26, 8}, {0x6D, 8}, {0x6E, 8}, {0x6F, 8}};
    if (type_ == Type::Text)
        writer.byte(0xE7).word(2 * characters_).bytes(Collation);
    else if (type_ == Type::LongText && version_ >= Tds72) // nvarchar(max)
        writer.byte(0xE7).word(0xFFFF).bytes(Collation);
    else if (type_ == Type::LongText) // ntext, of a table without a name
        writer.byte(0x63).number(std::int32_t{0x7FFFFFFE}).bytes(Collation).word(0);
    else
        writer.byte(Sized[static_cast<int>(type_)].first).byte(Sized[static_cast<int>(type_)].second);
    writer.shortText(name_);
}

void ResultColumn::writeCell(WireWriter& writer, const Value& value) const {
    if (std::holds_alternative<Null>(value)) {
        if (type_ == Type::Text)
            writer.word(0xFFFF);
        else if (type_ == Type::LongText && version_ >= Tds72)
            writer.number(~std::uint64_t{0});
        else
            writer.byte(0);
    } else if (type_ == Type::Bit) {
        writer.byte(1).byte(std::get<bool>(value) ? 1 : 0);
    } else if (type_ == Type::Int) {
        writer.byte(8).number(std::get<std::int64_t>(value));
    } else if (type_ == Type::Float) {
        writer.byte(8).number(asReal(value));
    } else if (type_ == Type::Money) { // the higher half comes first
        writer.byte(8).number(std::rotl(static_cast<std::uint64_t>(atMoneyScale(value)), 32));
    } else if (type_ == Type::DateTime) {
        writeDateTime(writer, std::get<DateTime>(value));
    } else {
        writeText(writer, asText(value, regionalSettings("en-US").value()));
    }
}

void ResultColumn::writeText(WireWriter& writer, std::string_view text) const {
    const auto wide = utf16Bytes(text);
    if (type_ == Type::Text) {
        writer.word(wide.size()).bytes(wide);
    } else if (version_ >= Tds72) { // the whole length, then pieces until an empty one
        writer.number(std::uint64_t{wide.size()});
        if (!wide.empty())
            writer.number(static_cast<std::uint32_t>(wide.size())).bytes(wide);
        writer.number(std::uint32_t{0});
    } else { // behind a pointer and a time stamp, which nobody reads
        writer.byte(16)
            .bytes(std::string(24, 'x'))
            .number(static_cast<std::int32_t>(wide.size()))
            .bytes(wide);
    }
}

} // namespace kova::tds
