#include "widgets/report_text.h"

#include "widgets/report_grid.h"

#include <algorithm>

namespace kova {
namespace {

constexpr std::string_view LineEnd = "\r\n";

void appendQuoted(std::string& text, std::string_view item, std::string_view separator) {
    const bool quoted = item.find_first_of("\"\r\n") != std::string_view::npos ||
                        item.find(separator) != std::string_view::npos;
    if (!quoted) {
        text += item;
        return;
    }
    text += '"';
    for (const char c : item) {
        text += c;
        if (c == '"')
            text += c;
    }
    text += '"';
}

} // namespace

std::string tabSeparated(const ReportGrid& grid, const std::vector<std::size_t>& records) {
    std::string text;
    for (const std::size_t record : records) {
        for (std::size_t column = 0; column < grid.columns().size(); ++column) {
            text += column == 0 ? "" : "\t";
            const std::size_t begin = text.size();
            text += grid.item(record, column);
            std::replace_if(
                text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(),
                [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
        }
        text += LineEnd;
    }
    return text;
}

std::string commaSeparated(const ReportGrid& grid, std::string_view listSeparator) {
    std::string text = "\xEF\xBB\xBF";
    const auto addLine = [&](auto itemOf) {
        for (std::size_t column = 0; column < grid.columns().size(); ++column) {
            text += column == 0 ? "" : listSeparator;
            appendQuoted(text, itemOf(column), listSeparator);
        }
        text += LineEnd;
    };
    addLine([&](std::size_t column) { return std::string_view(grid.columns()[column].caption); });
    for (const std::int32_t record : grid.order())
        addLine([&](std::size_t column) { return grid.item(static_cast<std::size_t>(record), column); });
    return text;
}

} // namespace kova
