#pragma once
#include "test_world.h"

namespace kova::test {

/// Movements of a day with texts, amounts and Null in two currencies, for both kinds of query.
void addMovements(ScriptedDatabase& database);

/// Expects all rows of the last query, or, which gives false, those before the one that could not be read,
/// and that one without a text.
bool expectLoaded(const ReportGrid& list, const ScriptedDatabase& database);

/// Expects of a list what holds whatever was done to it: each record once, shown or in a collapsed group;
/// groups that hold what their headers say, and add up to the totals; records in their order; widths kept.
void expectConsistent(const ReportGrid& grid, const RegionalSettings& regional);

} // namespace kova::test
