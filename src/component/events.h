#pragma once

#include <cstdint>
#include <string>

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

} // namespace kova
