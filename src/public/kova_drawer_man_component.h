#pragma once
#include "kova_drawer_man_basics.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// The component and its events; included by kova_drawer_man.h.
namespace kova {

/// What a host implements to receive the component's requests. Calls come synchronously on the user-interface
/// thread; the component goes on when the last connected sink has returned. What a sink writes into an
/// argument reaches later sinks and the component. An exception ends the request: the component records it in
/// its log and does not reset what the cashier entered.
class EventSink {
  public:
    virtual ~EventSink() = default;
    /// Store one movement. `importo` in units of `Valuta`, as typed: not signed by direction; `isIncasso` is
    /// true when the money enters the drawer. `cassetto` [0-4], 0 for no drawer chosen. `tipoIncasso` is the
    /// id of the activity.
    virtual void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta,
                                std::string& note, std::int16_t& cassetto, std::int32_t& tipoIncasso,
                                bool& isIncasso) = 0;
    /// Print the movements of a day; the text is as the cashier left it and need not be a date.
    virtual void Stampa(std::string& DataOperazione) = 0;
    /// Show a print preview of the movements of a day.
    virtual void Anteprima(std::string& DataOperazione) = 0;
    /// Open the cash drawer.
    virtual void ApriCassetto() = 0;
};

/// Keeps a sink connected; disconnects it when destroyed. It may outlive the component.
class [[nodiscard]] Connection {
  public:
    Connection() = default;
    explicit Connection(kova_sink sink) : sink_(sink) {}
    Connection(Connection&& other) noexcept : sink_(std::exchange(other.sink_, nullptr)) {}
    Connection& operator=(Connection&& other) noexcept {
        disconnect();
        sink_ = std::exchange(other.sink_, nullptr);
        return *this;
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() { disconnect(); }
    void disconnect() noexcept {
        if (sink_ != nullptr)
            kova_disconnect(std::exchange(sink_, nullptr));
    }

  private:
    kova_sink sink_ = nullptr;
};

/// The component that a host creates, connects and shows: it holds the options and the one movement dialog,
/// and hands every request of the dialog to the host's event sinks. It stores, prints and opens nothing
/// itself. See examples/01_ten_lines.
///
/// Parameters are passed by reference as the published interface has them; only the event-raising methods may
/// change their arguments. `Show`, `Inizializza`, `InizializzaByConnString` and `DiscardForm` never fail
/// towards the host: a failure is one record of the error log. The others throw Error. What each option is
/// for stands in kova_drawer_man_members.h.
class cls_Kova_Drawer_Man {
  public:
    /// Takes the handle over.
    explicit cls_Kova_Drawer_Man(kova_component handle) : handle_(handle) {}
    cls_Kova_Drawer_Man(const cls_Kova_Drawer_Man&) = delete;
    cls_Kova_Drawer_Man& operator=(const cls_Kova_Drawer_Man&) = delete;
    ~cls_Kova_Drawer_Man() { kova_release(handle_); }
    [[nodiscard]] kova_component handle() const { return handle_; }

    /// Connects a sink, which must outlive the connection. Sinks are called in order of connecting.
    [[nodiscard]] Connection connect(EventSink& sink) {
        kova_handlers handlers{};
        handlers.size = sizeof handlers;
        handlers.user = &sink;
        handlers.SalvaPagamento = [](void* user, std::int32_t* idpagamento, double* importo, kova_text Valuta,
                                     kova_text note, std::int16_t* cassetto, std::int32_t* tipoIncasso,
                                     std::int32_t* isIncasso) {
            return detail::handled([&] {
                std::string currency = detail::contentOf(Valuta), text = detail::contentOf(note);
                bool incoming = *isIncasso != 0;
                const detail::AtEnd takeBack{[&] {
                    *isIncasso = incoming ? 1 : 0;
                    detail::assign(Valuta, currency);
                    detail::assign(note, text);
                }};
                of(user).SalvaPagamento(*idpagamento, *importo, currency, text, *cassetto, *tipoIncasso,
                                        incoming);
            });
        };
        handlers.Stampa = [](void* user, kova_text day) {
            return detail::handledText(day, [&](std::string& text) { of(user).Stampa(text); });
        };
        handlers.Anteprima = [](void* user, kova_text day) {
            return detail::handledText(day, [&](std::string& text) { of(user).Anteprima(text); });
        };
        handlers.ApriCassetto = [](void* user) { return detail::handled([&] { of(user).ApriCassetto(); }); };
        kova_sink connected = nullptr;
        detail::check(kova_connect(handle_, &handlers, &connected));
        return Connection(connected);
    }

    // Raise the event of the same name; the host may call them too. A sink's exception reaches the caller.
    void ApriCassetto() {
        raise([&] { return kova_ApriCassetto(handle_); });
    }
    void Stampa(std::string& DataOP) {
        const detail::Text day(DataOP);
        raise([&] { return kova_Stampa(handle_, day.handle()); });
    }
    void Anteprima(std::string& DataOP) {
        const detail::Text day(DataOP);
        raise([&] { return kova_Anteprima(handle_, day.handle()); });
    }
    void SalvaPagamento(std::int32_t& idpagamento, double& importo, std::string& Valuta, std::string& note,
                        std::int16_t& cassetto, std::int32_t& tipoIncasso, bool& isIncasso) {
        const detail::Text currency(Valuta), text(note);
        std::int32_t incoming = isIncasso ? 1 : 0;
        const detail::AtEnd takeBack{[&] { isIncasso = incoming != 0; }};
        raise([&] {
            return kova_SalvaPagamento(handle_, &idpagamento, &importo, currency.handle(), text.handle(),
                                       &cassetto, &tipoIncasso, &incoming);
        });
    }

    /// Shows the dialog: 0 modeless, anything else modal, when it returns after the dialog has closed. A
    /// dialog that is on the screen already gets this call's settings and comes to the front. Always returns
    /// "". After the end of the library it is one record of the error log.
    std::string Show(const std::int32_t& method = -1) {
        kova_Show(handle_, method, nullptr);
        return {};
    }
    /// Closes the dialog and what it opened. Before any `Show`, or with the dialog closed, it is no error.
    void DiscardForm() { kova_DiscardForm(handle_); }
    /// Whether the dialog is on the screen.
    [[nodiscard]] bool isOpen() const { return read(kova_is_open) != 0; }
    /// Calls `closed` each time the dialog has closed: before a modal `Show` returns, else from the event
    /// loop; the dialog may be shown again in it. It must not throw. An empty function ends it.
    void onClosed(std::function<void()> closed) {
        closed_ = std::move(closed);
        detail::check(kova_on_closed(
            handle_,
            closed_ ? [](void* user) { std::function<void()> (*static_cast<std::function<void()>*>(user))(); }
                    : kova_closed_handler{},
            &closed_));
    }

    void SetSoftwareName(const std::string& SwName) { write(kova_SetSoftwareName, SwName); }
    /// Makes a connection that the host opened the one of the process, and reads the settings. It is shared,
    /// never closed by the component, and not checked.
    void Inizializza(const std::shared_ptr<DatabaseConnection>& ConnessioneDB) {
        kova_Inizializza(handle_, ConnessioneDB ? ConnessioneDB->handle() : nullptr);
    }
    /// Opens a connection unless the process has one, and reads the settings.
    void InizializzaByConnString(const std::string& locConnString) {
        kova_InizializzaByConnString(handle_, locConnString.c_str());
    }

    // Options; each may be set at any time before `Show`. Ids of -1 mean none.
    // clang-format off
    void AttivaRecuperaFondoCassaPrecedente(const bool& on) { write(kova_set_AttivaRecuperaFondoCassaPrecedente, on); }
    void PredisponiInserimentoFondoCassaIniziale(const bool& on) { write(kova_set_PredisponiInserimentoFondoCassaIniziale, on); }
    void ActiveColorMetroStyle(const bool& on) { write(kova_set_ActiveColorMetroStyle, on); }
    void AttivaVisualizzazionePrecontiDefinitivi(const bool& on) { write(kova_set_AttivaVisualizzazionePrecontiDefinitivi, on); }
    [[nodiscard]] bool AttivaVisualizzazionePrecontiDefinitivi() const { return read(kova_get_AttivaVisualizzazionePrecontiDefinitivi) != 0; }
    void idCassa(const std::int32_t& id) { write(kova_set_idCassa, id); }
    [[nodiscard]] std::int32_t idCassa() const { return read(kova_get_idCassa); }
    void ChiusuraAutomatica(const bool& on) { write(kova_set_ChiusuraAutomatica, on); }
    [[nodiscard]] bool ChiusuraAutomatica() const { return read(kova_get_ChiusuraAutomatica) != 0; }
    void InserimentoAutomatico(const bool& on) { write(kova_set_InserimentoAutomatico, on); }
    [[nodiscard]] bool InserimentoAutomatico() const { return read(kova_get_InserimentoAutomatico) != 0; }
    void DoppioInserimentoObbligatorio(const bool& on) { write(kova_set_DoppioInserimentoObbligatorio, on); }
    [[nodiscard]] bool DoppioInserimentoObbligatorio() const { return read(kova_get_DoppioInserimentoObbligatorio) != 0; }
    void idPagamentoPredefinito(const std::int32_t& id) { write(kova_set_idPagamentoPredefinito, id); }
    [[nodiscard]] std::int32_t idPagamentoPredefinito() const { return read(kova_get_idPagamentoPredefinito); }
    void idUtente(const std::int32_t& id) { write(kova_set_idUtente, id); }
    [[nodiscard]] std::int32_t idUtente() const { return read(kova_get_idUtente); }
    void UsaSoloValutaAziendale(const bool& on) { write(kova_set_UsaSoloValutaAziendale, on); }
    [[nodiscard]] bool UsaSoloValutaAziendale() const { return read(kova_get_UsaSoloValutaAziendale) != 0; }
    void VisualizzaMovimentiUtenteLoggato(const bool& on) { write(kova_set_VisualizzaMovimentiUtenteLoggato, on); }
    [[nodiscard]] bool VisualizzaMovimentiUtenteLoggato() const { return read(kova_get_VisualizzaMovimentiUtenteLoggato) != 0; }
    void ValutaAziendale(const std::string& currency) { write(kova_set_ValutaAziendale, currency); }
    // clang-format on
    [[nodiscard]] std::string ValutaAziendale() const {
        const char* currency = nullptr;
        detail::check(kova_get_ValutaAziendale(handle_, &currency));
        return currency;
    }

    // Late-bound calls by name (letter case aside) or dispatch id. They throw Error: 438 for a member that
    // the interface does not offer, 450 for a wrong number of arguments, 13 and 6 for values of the wrong
    // type or range.
    Variant get(const std::string& name) {
        kova_value value{};
        detail::check(kova_get(handle_, name.c_str(), &value));
        return detail::variantOf(value, {});
    }
    Variant get(int dispatchId) {
        kova_value value{};
        detail::check(kova_get_by_id(handle_, dispatchId, &value));
        return detail::variantOf(value, {});
    }
    void set(const std::string& name, const Variant& value) {
        const kova_value given = detail::valueOf(value);
        detail::check(kova_set(handle_, name.c_str(), &given));
    }
    void set(int dispatchId, const Variant& value) {
        const kova_value given = detail::valueOf(value);
        detail::check(kova_set_by_id(handle_, dispatchId, &given));
    }
    /// Arguments are by reference: what a sink wrote stands in them afterwards.
    Variant invoke(const std::string& name, std::vector<Variant>& arguments) {
        return detail::invoked(arguments, [&](kova_value* values, std::int32_t count, kova_value* result) {
            return kova_invoke(handle_, name.c_str(), values, count, result);
        });
    }
    Variant invoke(int dispatchId, std::vector<Variant>& arguments) {
        return detail::invoked(arguments, [&](kova_value* values, std::int32_t count, kova_value* result) {
            return kova_invoke_by_id(handle_, dispatchId, values, count, result);
        });
    }
    template <class Member>
    Variant invoke(const Member& member) {
        std::vector<Variant> none;
        return invoke(member, none);
    }

  private:
    template <class Call>
    static void raise(const Call& call) {
        detail::thrownByHandler() = nullptr;
        detail::checkRaised(call());
    }

    static EventSink& of(void* user) { return *static_cast<EventSink*>(user); }

    void write(kova_status(KOVA_CALL* function)(kova_component, std::int32_t), std::int32_t value) {
        detail::check(function(handle_, value));
    }
    void write(kova_status(KOVA_CALL* function)(kova_component, const char*), const std::string& text) {
        detail::check(function(handle_, text.c_str()));
    }
    std::int32_t read(kova_status(KOVA_CALL* function)(kova_component, std::int32_t*)) const {
        std::int32_t result = 0;
        detail::check(function(handle_, &result));
        return result;
    }

    kova_component handle_;
    std::function<void()> closed_;
};

} // namespace kova
