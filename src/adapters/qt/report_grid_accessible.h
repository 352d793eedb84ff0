#pragma once

class QAccessibleInterface;

namespace kova {

class ReportGridView;

/// Tells assistive technology that the list is a table: column headers, and below them its rows.
QAccessibleInterface* makeAccessibleReportGrid(ReportGridView& view);

} // namespace kova
