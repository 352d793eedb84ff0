#pragma once
#include "drawer_dialog/frm_Drawer_Management.h"

namespace kova {

/// What goes to the host, as it is before the host's handler can write into it.
struct frm_Drawer_Management::SentMovement {
    const ButtonGrid& payments; ///< that hold the payment's caption
    std::int32_t idpagamento;
    double importo;
    const std::string& Valuta;
    std::int32_t tipoIncasso;
    bool isIncasso;
    std::string activity; ///< its name, when no button has it
};

} // namespace kova
