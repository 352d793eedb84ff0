#include "shop/movement_store.h"

#include "component/cls_Kova_Drawer_Man.h"

namespace kova {

StoredMovement storedMovement(const SavedMovement& movement, const cls_Kova_Drawer_Man& component,
                              DateTime time) {
    return {.dataOperazione = time,
            .tipoOperazione = movement.tipoIncasso,
            .idpagamento = movement.idpagamento,
            .coefficiente = movement.isIncasso ? 1 : -1,
            .importoIncassato = movement.importo,
            .valuta = movement.Valuta,
            .note = movement.note,
            .cassetto = movement.cassetto,
            .idCassa = component.idCassa(),
            .idutente = component.idUtente()};
}

} // namespace kova
