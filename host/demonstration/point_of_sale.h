#pragma once
#include "adapters/databases/databases.h"
#include "adapters/qt/event_loop.h"
#include "adapters/qt/user_interface.h"
#include "adapters/system/ini_settings_store.h"
#include "adapters/system/system_clock.h"
#include "adapters/system/system_language_runtime.h"
#include "component/cls_Kova_Drawer_Man.h"
#include "documents/day_report.h"
#include "services/parent_component.h"
#include "services/process_state.h"
#include "shop/host_database.h"
#include "shop/movement_store.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kova {

struct HostOptions;

/// One event of the component, as it arrived.
struct ReceivedEvent {
    DateTime time;
    std::string name;
    std::optional<SavedMovement> movement; ///< of SalvaPagamento
    std::string date;                      ///< of Stampa and Anteprima
    std::string failure;                   ///< why the movement could not be stored; empty when it was
};

struct NamedId {
    std::int32_t id;
    std::string name;
};

/// What the shop's tables offer to choose from, and the names behind the ids of an event.
struct ShopCatalogues {
    std::vector<NamedId> users, payments, activities;
    std::vector<std::string> currencies;
};

/// The demonstration's shop behind its window: database, component, and the sink that stores each movement
/// before the component goes on. Needs a QApplication, which must outlive it.
class PointOfSale final : private EventSink {
  public:
    /// Throws std::exception when the database cannot be used.
    explicit PointOfSale(const HostOptions& options);
    PointOfSale(const PointOfSale&) = delete;
    PointOfSale& operator=(const PointOfSale&) = delete;
    ~PointOfSale() override;

    /// Shows the dialog and returns when it has closed.
    void show(const ComponentOptions& choices);

    /// 1040 Italian, 1031 German, 9 English; others show Italian. An open dialog follows at once.
    void setLanguage(std::int32_t id, const std::string& name) { language_.setLanguage(id, name); }
    [[nodiscard]] std::int32_t languageId() const { return language_.languageId(); }
    [[nodiscard]] const RegionalSettings& regional() const { return regional_; }
    /// False on a server: the component's connections only read, and the host has no other one.
    [[nodiscard]] bool canStore() const { return database_.embedded.has_value(); }

    // All throw DatabaseError.
    [[nodiscard]] ShopCatalogues catalogues() const;
    /// The last 200 rows stored, newest first: moment, activity, payment, coefficient, amount, currency,
    /// note, drawer, till, operator.
    [[nodiscard]] Recordset latestMovements() const;
    /// Of the till in use, and of its user alone where the choices ask for that. Throws Error for stored
    /// amounts that cannot be summed.
    [[nodiscard]] DayReport dayReport(DateTime day) const;
    [[nodiscard]] DateTime now() const { return clock_.now(); }

    /// After the movement is stored, or has failed to be.
    Signal<const ReceivedEvent&> received;

  private:
    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso) override;
    void Stampa(std::string& DataOperazione) override;
    void Anteprima(std::string& DataOperazione) override;
    void ApriCassetto() override;

    Platform platform(const HostOptions& options);
    void store(const SavedMovement& movement);
    void announce(const ReceivedEvent& event) noexcept;

    // In order of dependence: each may use those above it.
    QtEventLoop eventLoop_{QtEventLoop::Time::Live};
    RegionalSettings regional_;
    QtUserInterface userInterface_{eventLoop_, regional_};
    SystemClock clock_;
    SystemLanguageRuntime language_;
    IniSettingsStore settings_{settingsFile()};
    Databases servers_;
    HostDatabase database_;
    MovementStore store_;
    ProcessState process_;
    std::shared_ptr<cls_Kova_Drawer_Man> component_;
    Connection sink_;
};

} // namespace kova
