#pragma once
#include "platform/database.h"
#include "wire.h"

#include <vector>

namespace kova::test {

/// Versions of the protocol, as clients and server exchange them in the highest byte.
inline constexpr unsigned Tds72 = 0x72;
inline constexpr unsigned Tds73 = 0x73;

/// An answer with random access to its cells, which live as long as the recordset.
class AnswerTable {
  public:
    explicit AnswerTable(const Recordset& records);
    [[nodiscard]] std::size_t columnCount() const { return records_.fieldCount(); }
    [[nodiscard]] std::size_t rowCount() const { return static_cast<std::size_t>(records_.recordCount()); }
    [[nodiscard]] const std::string& columnName(std::size_t column) const {
        return records_.fieldName(column);
    }
    [[nodiscard]] const Value& at(std::size_t row, std::size_t column) const {
        return cells_[row * columnCount() + column];
    }

  private:
    Recordset records_;
    std::vector<Value> cells_;
};

/// How exact numbers travel.
enum class ExactType { Money, Numeric };

/// One column on the wire. Its type is the one that all its cells have; different ones make it a text.
class ResultColumn {
  public:
    ResultColumn(const AnswerTable& rows, std::size_t column, unsigned version, ExactType exact);
    void describe(WireWriter& writer) const;
    void writeCell(WireWriter& writer, std::size_t row) const;

  private:
    enum class Type { Bit, Int, BigInt, Float, Money, Numeric, Text, LongText, DateTime };
    static Type typeOf(const Value& value, ExactType exact);
    static Type common(Type a, Type b);
    void writeNull(WireWriter& writer) const;
    void writeText(WireWriter& writer, std::string_view text) const;
    const AnswerTable& rows_;
    std::size_t column_;
    unsigned version_;
    Type type_ = Type::Text;
    std::size_t characters_ = 1; ///< of the longest text
};

} // namespace kova::test
