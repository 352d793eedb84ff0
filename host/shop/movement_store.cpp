#include "shop/movement_store.h"

#include "adapters/sqlite/sqlite_database.h"
#include "component/cls_Kova_Drawer_Man.h"
#include "scenario/scenario_parser.h"

namespace kova {

void MovementStore::switchOn(bool on) {
    if (on && database_ == nullptr)
        throw ScenarioError("only the embedded database can store movements");
    on_ = on;
}

void MovementStore::save(const SavedMovement& movement, cls_Kova_Drawer_Man& component) {
    if (!on_)
        return;
    database_->storeMovement({
        .dataOperazione = clock_.now(),
        .tipoOperazione = movement.tipoIncasso,
        .idpagamento = movement.idpagamento,
        .coefficiente = movement.isIncasso ? 1 : -1,
        .importoIncassato = movement.importo,
        .valuta = movement.Valuta,
        .note = movement.note,
        .cassetto = movement.cassetto,
        .idCassa = std::get<std::int32_t>(component.get("idCassa")),
        .idutente = std::get<std::int32_t>(component.get("idUtente")),
    });
}

} // namespace kova
