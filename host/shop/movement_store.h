#pragma once
#include "ports/platform.h"

#include <cstdint>
#include <string>

namespace kova {

class SqliteHostDatabase;
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

/// Stores the movements that the component hands over in the host's database, if it is told to.
class MovementStore {
  public:
    /// Both outlive the store; without a database it cannot be switched on.
    MovementStore(SqliteHostDatabase* database, const Clock& clock) : database_(database), clock_(clock) {}
    /// Throws ScenarioError without a database.
    void switchOn(bool on);
    /// Committed when it returns. Throws DatabaseError.
    void save(const SavedMovement& movement, cls_Kova_Drawer_Man& component);

  private:
    SqliteHostDatabase* database_;
    const Clock& clock_;
    bool on_ = false;
};

} // namespace kova
