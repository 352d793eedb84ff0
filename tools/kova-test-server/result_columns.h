#pragma once
#include "ports/database.h"
#include "wire.h"

#include <vector>

namespace kova::tds {

/// Versions of the protocol, as clients and server exchange them in the highest byte.
inline constexpr unsigned Tds72 = 0x72;
inline constexpr unsigned Tds73 = 0x73;

/// One column on the wire. Its type is the one that all its cells have; different ones make it a text.
class ResultColumn {
  public:
    /// Looks at all cells of the column; the records' own position stays.
    ResultColumn(Recordset records, std::size_t column, unsigned version);
    void describe(WireWriter& writer) const;
    void writeCell(WireWriter& writer, const Value& value) const;

  private:
    enum class Type { Bit, Int, Float, Money, DateTime, Text, LongText };
    static Type typeOf(const Value& value);
    static Type common(Type a, Type b);
    void writeText(WireWriter& writer, std::string_view text) const;
    std::string name_;
    unsigned version_;
    Type type_ = Type::Text;
    std::size_t characters_ = 1; ///< of the longest text
};

} // namespace kova::tds
