#pragma once
#include "adapters/sqlite/sqlite_database.h"

#include <cstdint>
#include <string>

namespace kova {

class cls_Kova_Drawer_Man;

/// The values of one SalvaPagamento event.
struct SavedMovement {
    std::int32_t idpagamento;
    double importo;
    std::string Valuta, note;
    std::int16_t cassetto;
    std::int32_t tipoIncasso;
    bool isIncasso;
};

/// The row of a movement that the component handed over at that time.
StoredMovement storedMovement(const SavedMovement& movement, const cls_Kova_Drawer_Man& component,
                              DateTime time);

} // namespace kova
