#pragma once
#include "ports/database.h"
#include "ports/regional_settings.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kova {

/// What a report of one day takes in.
struct DayScope {
    DateTime day{};                   ///< a time of day in it counts for nothing
    std::optional<std::int32_t> till; ///< all tills without it
    std::optional<std::int32_t> user; ///< everybody without it
};

/// Amounts below are money: exact, of scale 4.
struct DayMovement {
    std::optional<DateTime> time; ///< nothing where the table holds something else
    std::string activity, payment, currency, note, operatorName; ///< empty where nothing is stored
    std::optional<Decimal> amount; ///< below zero out of the drawer; nothing where none is stored
    std::int32_t drawer = 0;       ///< 0 for none
};

struct MoneySum {
    std::int32_t movements = 0;
    Decimal incoming{0, 4};
    Decimal outgoing{0, 4}; ///< zero or below
    /// Throws Error 6 for one that does not fit.
    [[nodiscard]] Decimal balance() const;
};

struct PaymentSum {
    std::string payment;
    MoneySum sum;
};

struct CurrencySum {
    std::string currency;
    std::vector<PaymentSum> payments; ///< in the order of the shop's payment types
    MoneySum total;
};

/// The movements of one day and what they come to; knows no paper.
struct DayReport {
    DayScope scope;
    std::vector<DayMovement> movements; ///< in the order in which they happened
    std::vector<CurrencySum> sums;      ///< that of the first payment type comes first
};

/// The query for the rows of a report: a text of the shops' servers, which an embedded database knows too.
Query dayReportQuery(const DayScope& scope);

/// Makes the report of the rows that `dayReportQuery` found. Throws DatabaseError where reading breaks off,
/// and Error for an amount that is none (13) and for amounts that come to more than money can hold (6).
DayReport makeDayReport(const DayScope& scope, Recordset rows, const RegionalSettings& regional);

/// Which amounts carry a sign; zero never does.
enum class Sign { OfNegative, Always };

/// Digit by digit, so that no sum is too large to be right: grouped, with two decimals, more only where it
/// has more. The minus is the typographical one, as wide as a plus.
std::string moneyText(Decimal amount, const RegionalSettings& regional, Sign sign);

/// Hours and minutes in the region's form, as in 14:05 or 2:05 PM.
std::string timeOfDayText(DateTime time, const RegionalSettings& regional);

} // namespace kova
