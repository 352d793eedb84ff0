#pragma once
#include <cstdint>
#include <string>

namespace kova {

/// One movement of a cash drawer, with the values of the event that hands it to the host.
struct Movement {
    std::int32_t idpagamento = -1; ///< of the payment type, -1 for none
    double importo = 0;            ///< in units of `Valuta`, as typed: not signed by direction
    std::string Valuta;            ///< as the host's database writes it, as "€"; empty for none
    std::string note;
    std::int16_t cassetto = 0;     ///< [1-4], 0 for no drawer chosen
    std::int32_t tipoIncasso = -1; ///< of the activity, -1 for none
    bool isIncasso = false;        ///< whether the money enters the drawer
    friend bool operator==(const Movement&, const Movement&) = default;
};

} // namespace kova
