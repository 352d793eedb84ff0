#pragma once
#include "adapters/headless/headless.h"
#include "adapters/sqlite/sqlite_database.h"
#include "component/component_state.h"
#include "drawer_dialog/frm_Drawer_Management.h"
#include "services/process_state.h"
#include "shop/shop_database.h"
#include "widgets/control.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace kova::bench {

/// The surroundings of a component that no benchmark varies.
struct Surroundings {
    struct NoonClock final : Clock {
        [[nodiscard]] DateTime now() const override {
            using namespace std::chrono;
            return local_days(2026y / November / 16) + 12h;
        }
    } clock;
    struct NoStore final : SettingsStore {
        [[nodiscard]] std::optional<std::string> read(const std::string&, const std::string&,
                                                      const std::string&) const override {
            return std::nullopt;
        }
    } store;
    struct ItalianRuntime final : LanguageRuntime {
        [[nodiscard]] std::int32_t languageId() const override { return 1040; }
        [[nodiscard]] std::string languageName() const override { return "Italiano"; }
    } runtime;
    /// A record would mean that the benchmark does not measure what it says.
    struct NoErrors final : ErrorLogger {
        void SetApplicationName(const std::string&) override {}
        void SetLogFile(const std::string&) override {}
        void LogError(const std::string& procedure, const std::string& message, const char*, std::int32_t,
                      const std::string&) override {
            throw std::runtime_error(procedure + message);
        }
    };
    SqliteProvider provider;
    RegionalSettings regional;
};

/// The sample shop with a component on some user interface; the host stores each movement.
class Shop final : public EventSink {
  public:
    Shop(EventLoop& loop, UserInterface& userInterface)
        : database_(ShopDatabase::inMemory()),
          process_(Platform{userInterface, loop, around_.clock, around_.runtime, around_.store,
                            around_.provider, around_.regional,
                            [] { return std::make_unique<Surroundings::NoErrors>(); }, "/tmp"}),
          component_(ComponentState::createComponent(process_)), connection_(component_->connect(*this)) {
        database_.createSchema();
        database_.loadSample();
        component_->Inizializza(database_.connection());
        component_->UsaSoloValutaAziendale(true);
    }

    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso) override {
        database_.storeMovement({around_.clock.now(),
                                 1,
                                 1,
                                 {idpagamento, importo, Valuta, note, cassetto, tipoIncasso, isIncasso}});
        ++stored;
    }
    void Stampa(std::string&) override {}
    void Anteprima(std::string&) override {}
    void ApriCassetto() override {}

    [[nodiscard]] cls_Kova_Drawer_Man& component() { return *component_; }
    [[nodiscard]] ShopDatabase& database() { return database_; }
    template <class Kind>
    Kind& control(const std::string& name) {
        struct Pick : ControlVisitor {
            using ControlVisitor::visit;
            void visit(Kind& found) override { kind = &found; }
            Kind* kind = nullptr;
        } pick;
        dialogOf(*component_)->window()->find(name)->accept(pick);
        return *pick.kind;
    }

    int stored = 0;

  private:
    Surroundings around_;
    ShopDatabase database_;
    ProcessState process_;
    std::shared_ptr<cls_Kova_Drawer_Man> component_;
    Connection connection_;
};

} // namespace kova::bench
