#pragma once
#include <cstdint>

namespace kova {

/// The kinds of activity, as in the column `idTypeRow` of `tabActivityDrawer`. The values are frozen.
enum class kDMTypeRow : std::int32_t {
    kDMTR_FondoCassaIniziale = 1,
    kDMTR_AmmancoConteggioCassetto = 2,
    kDMTR_EsuberoConteggioCassetto = 3,
    kDMTR_PrelievoPerVersamento = 4,
    kDMTR_FondoCassaFinale = 5
};

} // namespace kova
