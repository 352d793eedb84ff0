#pragma once
#include <cstdint>
#include <string>

namespace kova {

/// The movement being composed; one per process, shared by all components and kept while no dialog is open.
struct SelectionState {
    std::int32_t idAttivita = -1; ///< -1: none
    bool isIncasso = false;
    bool isOpenECRDrawer = false;
    std::int16_t Cassetto = 0;               ///< [1-4], 0: none
    std::int32_t idPagamento = -1;           ///< -1: none
    std::int32_t idPagamentoVersamento = -1; ///< -1: none
    std::string Valuta;                      ///< empty: none
    bool MultiValuta = false;
};

} // namespace kova
