#include "demonstration/amount_text.h"

#include "library/kova_drawer_man.h"

namespace kova {

QString amountText(double amount) {
    constexpr int MostDecimals = 4; // those of the money column
    constexpr int LeastDecimals = 2;
    QString text = QString::fromStdString(formatAmount(amount, MostDecimals));
    for (int surplus = MostDecimals - LeastDecimals; surplus > 0 && text.endsWith('0'); --surplus)
        text.chop(1);
    return text;
}

} // namespace kova
