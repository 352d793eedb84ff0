#include "documents/day_report.h"

#include "base/ascii_text.h"
#include "base/numbered_errors.h"
#include "services/conversions.h"
#include "services/number_format.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kova {
namespace {

constexpr std::uint8_t MoneyScale = 4;
constexpr std::int64_t MoneyUnits = 10000; ///< in one
constexpr std::int64_t Largest = std::numeric_limits<std::int64_t>::max();

// The fields of the query, in its order.
enum Field : std::size_t {
    Moment,
    Activity,
    Payment,
    PaymentOrder,
    Coefficient,
    Amount,
    Currency,
    Note,
    Drawer,
    Operator
};

std::int64_t product(std::int64_t a, std::int64_t b) {
    if (a != 0 && (a == std::numeric_limits<std::int64_t>::min() || std::abs(b) > Largest / std::abs(a)))
        throw overflow();
    return a * b;
}

Decimal plus(Decimal a, Decimal b) {
    if (b.unscaled > 0 ? a.unscaled > Largest - b.unscaled : a.unscaled < -Largest - b.unscaled)
        throw overflow();
    return {a.unscaled + b.unscaled, MoneyScale};
}

/// Half a unit is rounded away from zero.
Decimal rescaled(Decimal value) {
    for (; value.scale < MoneyScale; ++value.scale)
        value.unscaled = product(value.unscaled, 10);
    std::int64_t divisor = 1;
    for (; value.scale > MoneyScale; --value.scale)
        divisor *= 10;
    const std::int64_t rest = value.unscaled % divisor;
    const bool up = std::abs(rest) >= divisor - std::abs(rest) && rest != 0;
    return {value.unscaled / divisor + (up ? (rest < 0 ? -1 : 1) : 0), MoneyScale};
}

Decimal asMoney(const Value& value, const RegionalSettings& regional) {
    if (const auto* exact = std::get_if<Decimal>(&value))
        return rescaled(*exact);
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        return rescaled({*whole, 0});
    const double units = asDouble(value, regional) * static_cast<double>(MoneyUnits);
    if (!(std::fabs(units) < static_cast<double>(Largest)))
        throw overflow();
    return {std::llround(units), MoneyScale};
}

/// What the views of the shops count with: a movement without a coefficient is one into the drawer.
std::optional<Decimal> signedAmount(const Recordset& rows, const RegionalSettings& regional) {
    const Value amount = rows.field(Amount);
    if (std::holds_alternative<Null>(amount))
        return std::nullopt;
    const std::int32_t coefficient =
        asInt32(NullToDefault(rows.field(Coefficient), std::int64_t{1}), regional);
    return Decimal{product(asMoney(amount, regional).unscaled, coefficient), MoneyScale};
}

DayMovement readMovement(const Recordset& rows, const RegionalSettings& regional) {
    const auto text = [&](Field field) { return asText(rows.field(field), regional); };
    DayMovement movement;
    if (const Value moment = rows.field(Moment); std::holds_alternative<DateTime>(moment))
        movement.time = std::get<DateTime>(moment);
    movement.activity = text(Activity);
    movement.payment = text(Payment);
    movement.currency = text(Currency);
    movement.note = text(Note);
    movement.operatorName = text(Operator);
    movement.amount = signedAmount(rows, regional);
    movement.drawer = asInt32(NullToDefault(rows.field(Drawer), std::int64_t{0}), regional);
    return movement;
}

void count(MoneySum& sum, Decimal amount) {
    ++sum.movements;
    Decimal& side = amount.unscaled < 0 ? sum.outgoing : sum.incoming;
    side = plus(side, amount);
}

/// Collects the sums; a payment type whose place in the shop's order is unknown comes last.
class Summing {
  public:
    void add(const DayMovement& movement, double order) {
        if (!movement.amount)
            return;
        auto found = std::ranges::find_if(lines_, [&](const Line& line) {
            return equalIgnoringCase(line.currency, movement.currency) &&
                   equalIgnoringCase(line.sum.payment, movement.payment);
        });
        if (found == lines_.end())
            found = lines_.insert(found, {order, movement.currency, {movement.payment, {}}});
        count(found->sum.sum, *movement.amount);
    }

    std::vector<CurrencySum> byCurrency() {
        std::ranges::stable_sort(lines_, {}, &Line::order);
        std::vector<CurrencySum> sums;
        for (const Line& line : lines_) {
            auto found = std::ranges::find_if(
                sums, [&](const CurrencySum& one) { return equalIgnoringCase(one.currency, line.currency); });
            if (found == sums.end())
                found = sums.insert(found, {line.currency, {}, {}});
            found->payments.push_back(line.sum);
            found->total.movements += line.sum.sum.movements;
            found->total.incoming = plus(found->total.incoming, line.sum.sum.incoming);
            found->total.outgoing = plus(found->total.outgoing, line.sum.sum.outgoing);
        }
        return sums;
    }

  private:
    struct Line {
        double order;
        std::string currency;
        PaymentSum sum;
    };
    std::vector<Line> lines_;
};

/// `day` at midnight, whatever the region.
std::string literal(std::chrono::local_days day) {
    const RegionalSettings regional;
    return SqlDateFormatter(regional).FormatSqlDate(shortDate(day, regional));
}

} // namespace

Decimal MoneySum::balance() const {
    return plus(incoming, outgoing);
}

Query dayReportQuery(const DayScope& scope) {
    const auto day = std::chrono::floor<std::chrono::days>(scope.day);
    std::string text = "SELECT m.DataOperazione, a.Description, p.TipoPagamento, p.idOrdinamento, "
                       "m.Coefficiente, m.ImportoIncassato, m.Valuta, m.Note, m.Cassetto, u.Nome "
                       "FROM tabPagamentiScontriniBackoffice AS m "
                       "LEFT JOIN tabActivityDrawer AS a ON a.id = m.TipoOperazione "
                       "LEFT JOIN tabPagamenti AS p ON p.idpagamento = m.idpagamento "
                       "LEFT JOIN tabUtenti AS u ON u.idutente = m.idutente "
                       "WHERE m.DataOperazione >= ";
    text += literal(day) + " AND m.DataOperazione < " + literal(day + std::chrono::days(1));
    if (scope.till)
        text += " AND m.idCassa = " + std::to_string(*scope.till);
    if (scope.user)
        text += " AND m.idutente = " + std::to_string(*scope.user);
    return {text + " ORDER BY m.DataOperazione, m.id"};
}

DayReport makeDayReport(const DayScope& scope, Recordset rows, const RegionalSettings& regional) {
    constexpr double Last = std::numeric_limits<double>::max();
    DayReport report{scope, {}, {}};
    Summing summing;
    for (; !rows.endOfFile(); rows.moveNext()) {
        report.movements.push_back(readMovement(rows, regional));
        const double order = asDouble(NullToDefault(rows.field(PaymentOrder), Last), regional);
        summing.add(report.movements.back(), order);
    }
    report.sums = summing.byCurrency();
    return report;
}

std::string moneyText(Decimal amount, const RegionalSettings& regional, Sign sign) {
    constexpr std::size_t LeastDecimals = 2;
    std::string digits = std::to_string(amount.unscaled);
    const bool negative = digits.front() == '-';
    digits.erase(0, negative ? 1 : 0);
    if (digits.size() <= amount.scale)
        digits.insert(0, amount.scale + 1 - digits.size(), '0');
    std::string decimals = digits.substr(digits.size() - amount.scale);
    digits.resize(digits.size() - amount.scale);
    while (decimals.size() > LeastDecimals && decimals.back() == '0')
        decimals.pop_back();
    decimals.resize(std::max(decimals.size(), LeastDecimals), '0');

    std::string text;
    if (amount.unscaled != 0 && (negative || sign == Sign::Always))
        text = negative ? "\u2212" : "+";
    return text + groupedDigits(digits, regional) + regional.decimalSeparator + decimals;
}

std::string timeOfDayText(DateTime time, const RegionalSettings& regional) {
    using namespace std::chrono;
    const hh_mm_ss clock(floor<minutes>(time - floor<days>(time)));
    const auto hour = clock.hours().count();
    const std::string rest = regional.timeSeparator + twoDigits(clock.minutes().count());
    if (!regional.twelveHours)
        return twoDigits(hour) + rest;
    return std::to_string(hour % 12 == 0 ? 12 : hour % 12) + rest + ' ' +
           (hour < 12 ? regional.beforeNoon : regional.afterNoon);
}

} // namespace kova
