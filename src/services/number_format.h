#pragma once
#include "ports/regional_settings.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kova {

/// The digits of a whole number with the region's group separators.
std::string groupedDigits(std::string_view digits, const RegionalSettings& regional);

/// Formats amounts for people: grouped, with a fixed number of decimals, rounded half away from zero, in the
/// user's regional settings.
class NumberFormat {
  public:
    explicit NumberFormat(const RegionalSettings& regional) : regional_(regional) {}
    void SetQuantityDecimals(const std::int16_t& decimals) { quantityDecimals_ = decimals; }
    void SetAmountDecimals(const std::int16_t& decimals) { amountDecimals_ = decimals; }
    [[nodiscard]] std::int16_t quantityDecimals() const { return quantityDecimals_; }
    /// `decimals` below 0 count as 0, above 15 as 15.
    [[nodiscard]] std::string FormatAmount(const double& value, const std::int16_t& decimals) const;
    /// An amount of the company currency, with the amount decimals or as many more, up to two, as it needs.
    [[nodiscard]] std::string FormatValue(const double& value) const;
    /// An entered amount to the last digit that tells it from any other number, with the amount decimals at
    /// least: it reads back as exactly `value`. Ungrouped, with an exponent, from 10^15 on and for more than
    /// 20 decimals.
    [[nodiscard]] std::string FormatExactly(const double& value) const;
    /// A sum of amounts, with the amount decimals or as many more, up to money's four, as it needs.
    [[nodiscard]] std::string FormatSum(const double& value) const;
    /// An amount of a currency to its last digit, as FormatExactly, but with the currency's decimals at
    /// least.
    [[nodiscard]] std::string FormatMoney(double value, std::string_view currency) const;

  private:
    [[nodiscard]] std::string formatAsNeeded(double value, int mostDecimals) const;
    [[nodiscard]] std::string formatExactly(double value, int leastDecimals) const;
    const RegionalSettings& regional_;
    std::int16_t quantityDecimals_ = 0;
    std::int16_t amountDecimals_ = 0;
};

} // namespace kova
