#include "coin_count/coin_count.h"

#include "base/numbered_errors.h"
#include "services/conversions.h"
#include "services/process_state.h"

#include <cmath>

namespace kova {
namespace {

constexpr std::int16_t ColumnLength = CoinCount::FieldCount - CoinCount::FirstOfSecondCurrency;

} // namespace

const std::array<double, CoinCount::FieldCount> CoinCount::Denominations{
    500,  200, 100, 50,  20, 10, 5,  2, 1, 0.5, 0.2, 0.1, 0.05, 0.02, 0.01, // the euro
    1000, 500, 200, 100, 50, 20, 10, 5, 2, 1,   0.5, 0.2, 0.1,  0.05, 0.02};

double CoinCount::Coeff(const std::int16_t& index) const {
    double value = 0;
    trapped(process_, "Coeff", [&] {
        if (index < 0 || index >= FieldCount)
            return;
        const auto position = static_cast<std::size_t>(index);
        if (position >= denominations_.size())
            throw subscriptOutOfRange();
        value = denominations_[position];
    });
    return value;
}

void CoinCount::add(const Counts& counts, std::int16_t first, double& total) const {
    const auto& regional = process_.platform.regional;
    for (auto index = first; index < first + ColumnLength; ++index) {
        const std::string& count = counts.at(static_cast<std::size_t>(index));
        if (!isNumeric(count, regional))
            continue;
        const double sum = total + toDouble(count, regional) * Coeff(index);
        if (!std::isfinite(sum))
            throw overflow();
        total = sum;
    }
}

void CoinCount::load(const Counts& counts) {
    ImportoPrimaValuta_ = 0;
    add(counts, 0, ImportoPrimaValuta_);
    add(counts, FirstOfSecondCurrency, ImportoSecondaValuta_);
}

void CoinCount::confirm(const Counts& counts) {
    clear();
    add(counts, 0, ImportoPrimaValuta_);
    add(counts, FirstOfSecondCurrency, ImportoSecondaValuta_);
}

void CoinCount::clear() {
    ImportoPrimaValuta_ = 0;
    ImportoSecondaValuta_ = 0;
}

std::string CoinCount::primaValuta() const {
    return process_.numberFormat().FormatAmount(ImportoPrimaValuta_, 2);
}

std::string CoinCount::secondaValuta() const {
    return process_.numberFormat().FormatValue(ImportoSecondaValuta_);
}

std::string CoinCount::caption(const std::int16_t& index) const {
    const double value = Coeff(index);
    if (index < FirstOfSecondCurrency)
        return "€ " + process_.numberFormat().FormatAmount(value, 2);
    return process_.settings.ValutaAziendale + process_.numberFormat().FormatValue(value);
}

} // namespace kova
