#include "services/currency_decimals.h"

#include "base/ascii_text.h"

#include <algorithm>
#include <iterator>

namespace kova {
namespace {

constexpr int UsualDecimals = 2;

struct Decimals {
    std::string_view currency;
    int decimals;
};

/// Those that are not as usual. Some have a subunit no more, some one of a thousandth.
constexpr Decimals Unusual[] = {
    {"BIF", 0}, {"CLP", 0}, {"DJF", 0}, {"GNF", 0}, {"ISK", 0}, {"JPY", 0}, {"KMF", 0},
    {"KRW", 0}, {"PYG", 0}, {"RWF", 0}, {"UGX", 0}, {"UYI", 0}, {"VND", 0}, {"VUV", 0},
    {"XAF", 0}, {"XOF", 0}, {"XPF", 0}, {"¥", 0},   {"￥", 0},  {"円", 0},  {"₩", 0},
    {"원", 0},  {"₫", 0},   {"₲", 0},   {"BHD", 3}, {"IQD", 3}, {"JOD", 3}, {"KWD", 3},
    {"LYD", 3}, {"OMR", 3}, {"TND", 3}, {"CLF", 4}, {"UYW", 4},
};

} // namespace

int decimalsOf(std::string_view currency) {
    const std::string_view name = trimmed(currency);
    const auto* const found = std::ranges::find_if(
        Unusual, [&](const Decimals& one) { return equalIgnoringCase(one.currency, name); });
    return found == std::end(Unusual) ? UsualDecimals : found->decimals;
}

} // namespace kova
