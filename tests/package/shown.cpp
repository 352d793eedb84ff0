// A host of the installed component: sets and reads every option, receives an event, shows the dialog, and
// sees a failure cross over.
#include <kova_drawer_man.h>

#include <iostream>
#include <string_view>

namespace {

struct Host : kova::EventSink {
    void SalvaPagamento(std::int32_t&, double&, std::string&, std::string&, std::int16_t&, std::int32_t&,
                        bool&) override {}
    void Stampa(std::string& day) override { day += "!"; }
    void Anteprima(std::string&) override {}
    void ApriCassetto() override {}
};

int failures = 0;

void expect(bool holds, std::string_view what) {
    if (holds)
        return;
    std::cout << "does not hold: " << what << std::endl;
    ++failures;
}

/// Sets each early bound; sets and reads it late bound, by name and by id; reads each early bound.
void setAndReadOptions(kova::cls_Kova_Drawer_Man& c) {
    c.idCassa(7);
    c.idUtente(8);
    c.idPagamentoPredefinito(9);
    c.ValutaAziendale("a currency of more than sixteen bytes");
    c.ChiusuraAutomatica(true);
    c.InserimentoAutomatico(true);
    c.DoppioInserimentoObbligatorio(true);
    c.UsaSoloValutaAziendale(true);
    c.VisualizzaMovimentiUtenteLoggato(true);
    c.AttivaVisualizzazionePrecontiDefinitivi(true);
    const std::pair<const char*, int> options[] = {
        {"idCassa", KOVA_ID_idCassa},
        {"idUtente", KOVA_ID_idUtente},
        {"idPagamentoPredefinito", KOVA_ID_idPagamentoPredefinito},
        {"ValutaAziendale", KOVA_ID_ValutaAziendale},
        {"ChiusuraAutomatica", KOVA_ID_ChiusuraAutomatica},
        {"InserimentoAutomatico", KOVA_ID_InserimentoAutomatico},
        {"DoppioInserimentoObbligatorio", KOVA_ID_DoppioInserimentoObbligatorio},
        {"UsaSoloValutaAziendale", KOVA_ID_UsaSoloValutaAziendale},
        {"VisualizzaMovimentiUtenteLoggato", KOVA_ID_VisualizzaMovimentiUtenteLoggato},
        {"AttivaVisualizzazionePrecontiDefinitivi", KOVA_ID_AttivaVisualizzazionePrecontiDefinitivi}};
    for (const auto& [name, id] : options) {
        const kova::Variant value = c.get(name);
        const auto none = std::visit([](auto held) { return kova::Variant(decltype(held)()); }, value);
        expect(value != none && c.get(id) == value, name);
        c.set(id, none);
        expect(c.get(name) == none, name);
        c.set(name, value);
    }
    expect(c.idCassa() == 7 && c.idUtente() == 8 && c.idPagamentoPredefinito() == 9 &&
               c.ValutaAziendale() == "a currency of more than sixteen bytes" && c.ChiusuraAutomatica() &&
               c.InserimentoAutomatico() && c.DoppioInserimentoObbligatorio() && c.UsaSoloValutaAziendale() &&
               c.VisualizzaMovimentiUtenteLoggato() && c.AttivaVisualizzazionePrecontiDefinitivi(),
           "no option lies on another one");
}

} // namespace

int main() {
    const auto component = kova::createComponent();
    setAndReadOptions(*component);
    Host host;
    std::vector<kova::Variant> day{std::string("today")};
    {
        const auto connection = component->connect(host);
        component->invoke("Stampa", day);
    }
    component->invoke("Stampa", day);
    expect(day.front() == kova::Variant(std::string("today!")),
           "the day that the sink wrote, connected once");
    component->Show(0);
    kova::processEvents();
    try {
        (void)component->get("Version");
        expect(false, "there is no such member");
    } catch (const kova::Error& failure) {
        expect(failure.number() == 438, "the error of a member that does not exist");
    }
    return failures == 0 ? 0 : 1;
}
