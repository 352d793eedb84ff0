#pragma once
#include "documents/day_report.h"
#include "library/library.h"
#include "shop/shop_database.h"
#include "shop/shop_rows.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kova {

struct HostOptions;

/// One event of the component, as it arrived.
struct ReceivedEvent {
    DateTime time;
    std::string name;
    std::optional<Movement> movement; ///< of SalvaPagamento
    std::string date;                 ///< of Stampa and Anteprima
    std::string failure;              ///< why the movement could not be stored; empty when it was
};

/// What the host chose for the next showing of the dialog.
struct Choices {
    std::vector<std::pair<std::string, Variant>> options; ///< by name, as a script would set them
    std::string softwareName;
};

/// The database as a person knows it: the file's path, where there is a file. A connection string is not
/// shown, as it may hold a password.
std::string databaseName(const HostOptions& options);

/// The demonstration's shop behind its window: database, component, and the sink that stores each movement
/// before the component goes on. A QApplication of the program's outlives it; without one the component makes
/// its own, which ends with this.
class PointOfSale final : private EventSink {
  public:
    /// Opens what the options ask for, where "sample" is a file in the user's data folder. Throws
    /// std::exception when the database cannot be read, or an embedded one cannot be written.
    explicit PointOfSale(const HostOptions& options);
    PointOfSale(const PointOfSale&) = delete;
    PointOfSale& operator=(const PointOfSale&) = delete;
    ~PointOfSale() override;

    /// Shows the dialog and returns when it has closed.
    void show(const Choices& choices);
    /// False on a server: the component's connections only read, and the host has no other one.
    [[nodiscard]] bool canStore() const { return database_.embedded.has_value(); }

    // All throw DatabaseError.
    [[nodiscard]] ShopCatalogues catalogues() const;
    /// The last 200 rows stored, newest first. Throws Error for an amount that is none.
    [[nodiscard]] std::vector<ListedMovement> latestMovements() const;
    /// Of the till in use, and of its user alone where the choices ask for that. Throws Error for stored
    /// amounts that cannot be summed.
    [[nodiscard]] DayReport dayReport(DateTime day) const;
    [[nodiscard]] static DateTime now();

    /// Called after the movement is stored, or has failed to be.
    std::function<void(const ReceivedEvent&)> received = [](const ReceivedEvent&) {};

  private:
    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso) override;
    void Stampa(std::string& DataOperazione) override;
    void Anteprima(std::string& DataOperazione) override;
    void ApriCassetto() override;

    void store(const Movement& movement);
    void announce(const ReceivedEvent& event) noexcept;

    HostDatabase database_;
    std::shared_ptr<cls_Kova_Drawer_Man> component_;
    Connection sink_;
};

} // namespace kova
