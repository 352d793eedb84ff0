#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kova {

class ReportGrid;

// A list as text, UTF-8, lines ended by CR LF.

/// The records, in the order given, with a tab between their items, as spreadsheets paste them. Tabs and line
/// breaks inside an item become blanks.
std::string tabSeparated(const ReportGrid& grid, const std::vector<std::size_t>& records);

/// The captions and all records in the order shown, those of collapsed groups among them, in the form of RFC
/// 4180 but for the separator, which is the region's. Begins with the byte order mark, without which
/// spreadsheets take a file for one in the system's 8-bit page.
std::string commaSeparated(const ReportGrid& grid, std::string_view listSeparator);

} // namespace kova
