#include "widgets/report_grid.h"

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

constexpr double MoneyUnits = 10'000; // money has four decimals; whole units add up without loss

} // namespace

void ReportGrid::setSummedColumns(std::string amount, std::string currency) {
    amountCaption_ = std::move(amount);
    currencyCaption_ = std::move(currency);
}

std::optional<std::size_t> ReportGrid::amountColumn() const {
    return amountCaption_.empty() ? std::nullopt : findColumn(amountCaption_);
}

std::optional<std::size_t> ReportGrid::currencyColumn() const {
    return currencyCaption_.empty() ? std::nullopt : findColumn(currencyCaption_);
}

/// Leaves no amounts when there is nothing to add up, or a cell with which a sum would be wrong.
void ReportGrid::readAmounts() {
    amounts_.clear();
    const auto column = amountColumn();
    const auto currency = currencyColumn();
    if (brokenOff_ || !column || !currency || !conventions_.number)
        return;
    DistinctTexts currencies(table_, *currency);
    amounts_.reserve(recordCount());
    for (std::size_t record = 0; record < recordCount(); ++record) {
        const std::string_view text = item(record, *column);
        const auto amount = text.empty() ? std::optional(0.0) : conventions_.number(text);
        if (!amount) {
            amounts_.clear();
            return;
        }
        if (text.empty())
            currencies.ofRecord[record] = NoAmount;
        amounts_.push_back(std::round(*amount * MoneyUnits));
    }
    currencies_ = std::move(currencies.ofRecord);
    currencyTexts_ = std::move(currencies.texts);
}

void ReportGrid::countDecimals() {
    const auto decimalsOf = [&](std::string_view currency) -> std::size_t {
        const std::string text = conventions_.amount ? conventions_.amount(0, currency) : std::string();
        const auto mark = text.rfind(conventions_.decimalMark);
        return mark == std::string::npos ? 0 : text.size() - mark - conventions_.decimalMark.size();
    };
    decimals_ = totals_.empty() ? decimalsOf({}) : 0;
    for (const Sum& sum : totals_)
        decimals_ = std::max(decimals_, decimalsOf(sum.currency));
    for (const double amount : amounts_) {
        const auto units = static_cast<std::int64_t>(amount);
        if (units % 100 != 0)
            decimals_ = std::max(decimals_, std::size_t(units % 10 != 0 ? 4 : 3));
    }
}

std::optional<double> ReportGrid::amountOf(std::size_t record) const {
    const auto column = amountColumn();
    if (!column || !conventions_.number || item(record, *column).empty())
        return std::nullopt;
    return conventions_.number(item(record, *column));
}

std::string ReportGrid::shown(std::size_t record, std::size_t column) const {
    if (column != amountColumn())
        return std::string(item(record, column));
    const auto currency = currencyColumn();
    return shownAmount(item(record, column), currency ? item(record, *currency) : std::string_view());
}

std::string ReportGrid::shownAmount(std::string_view cell, std::string_view currency) const {
    const auto amount = cell.empty() || !conventions_.number ? std::nullopt : conventions_.number(cell);
    return amount && conventions_.amount ? conventions_.amount(*amount, currency) : std::string(cell);
}

std::vector<ReportGrid::Sum> ReportGrid::sumsOf(std::size_t first, std::size_t end) const {
    std::vector<Sum> sums;
    if (amounts_.empty())
        return sums;
    std::uint32_t last = NoAmount; // currency, and which sum is its
    std::size_t ofLast = 0;
    for (std::size_t at = first; at < end; ++at) {
        const auto record = static_cast<std::size_t>(order_[at]);
        const std::uint32_t currency = currencies_[record];
        if (currency == NoAmount)
            continue;
        if (std::exchange(last, currency) != currency) {
            sums.reserve(std::min(currencyTexts_.size(), end - first)); // at once: there may be many groups
            const auto sum = std::ranges::find(sums, currencyTexts_[currency], &Sum::currency);
            ofLast = static_cast<std::size_t>(sum - sums.begin());
            if (sum == sums.end())
                sums.push_back({std::string(currencyTexts_[currency]), 0});
        }
        sums[ofLast].amount += amounts_[record];
    }
    for (Sum& sum : sums)
        sum.amount /= MoneyUnits;
    return sums;
}

std::string ReportGrid::written(const std::vector<Sum>& sums) const {
    std::string text;
    for (const Sum& sum : sums) {
        text += text.empty() ? "" : "   ";
        text += sum.currency;
        text += sum.currency.empty() ? "" : " ";
        text +=
            conventions_.amount ? conventions_.amount(sum.amount, sum.currency) : std::to_string(sum.amount);
    }
    return text;
}

} // namespace kova
