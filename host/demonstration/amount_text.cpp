#include "demonstration/amount_text.h"

#include "services/number_format.h"

namespace kova {

QString amountText(double amount, const RegionalSettings& regional) {
    constexpr int MostDecimals = 4; // those of the money column
    constexpr int LeastDecimals = 2;
    QString text = QString::fromStdString(NumberFormat(regional).FormatAmount(amount, MostDecimals));
    for (int surplus = MostDecimals - LeastDecimals; surplus > 0 && text.endsWith('0'); --surplus)
        text.chop(1);
    return text;
}

} // namespace kova
