// A host of the installed component: sets and reads every option, receives an event, shows the dialog, and
// sees a failure cross over.
#include <component/type_description.h>
#include <kova_drawer_man.h>

#include <iostream>

namespace {

namespace td = kova::type_description;

struct Host : kova::EventSink {
    void SalvaPagamento(std::int32_t&, double&, std::string&, std::string&, std::int16_t&, std::int32_t&,
                        bool&) override {}
    void Stampa(std::string& day) override { day += "!"; }
    void Anteprima(std::string&) override {}
    void ApriCassetto() override {}
};

int failures = 0;

template <class Value>
void expect(const Value& seen, const Value& wanted, std::string_view what) {
    if (seen == wanted)
        return;
    std::cout << what << " is " << seen << " instead of " << wanted << std::endl;
    ++failures;
}

/// Early bound what is set, late bound what is read by name and by id.
template <class Value>
void setAndRead(kova::cls_Kova_Drawer_Man& component, std::string_view name, const Value& value,
                void (kova::cls_Kova_Drawer_Man::*set)(const Value&)) {
    (component.*set)(value);
    expect(std::get<Value>(component.get(name)), value, name);
    const int id = td::find(name, td::MemberKind::PropertyRead)->dispatchId;
    expect(std::get<Value>(component.get(id)), value, name);
    component.set(id, kova::Variant(Value()));
    expect(std::get<Value>(component.get(name)), Value(), name);
    component.set(name, kova::Variant(value));
}

void setAndReadOptions(kova::cls_Kova_Drawer_Man& c) {
    using C = kova::cls_Kova_Drawer_Man;
    setAndRead(c, "idCassa", 7, &C::idCassa);
    setAndRead(c, "idUtente", 8, &C::idUtente);
    setAndRead(c, "idPagamentoPredefinito", 9, &C::idPagamentoPredefinito);
    setAndRead(c, "ValutaAziendale", std::string("a currency of more than sixteen bytes"),
               &C::ValutaAziendale);
    setAndRead(c, "ChiusuraAutomatica", true, &C::ChiusuraAutomatica);
    setAndRead(c, "InserimentoAutomatico", true, &C::InserimentoAutomatico);
    setAndRead(c, "DoppioInserimentoObbligatorio", true, &C::DoppioInserimentoObbligatorio);
    setAndRead(c, "UsaSoloValutaAziendale", true, &C::UsaSoloValutaAziendale);
    setAndRead(c, "VisualizzaMovimentiUtenteLoggato", true, &C::VisualizzaMovimentiUtenteLoggato);
    setAndRead(c, "AttivaVisualizzazionePrecontiDefinitivi", true,
               &C::AttivaVisualizzazionePrecontiDefinitivi);
    // None of them lies on another one.
    expect(c.idCassa() + c.idUtente() + c.idPagamentoPredefinito(), 24, "the sum of the ids");
    expect(c.ValutaAziendale().size(), std::size_t{37}, "the currency's length");
    expect(c.ChiusuraAutomatica() && c.InserimentoAutomatico() && c.DoppioInserimentoObbligatorio() &&
               c.UsaSoloValutaAziendale() && c.VisualizzaMovimentiUtenteLoggato() &&
               c.AttivaVisualizzazionePrecontiDefinitivi(),
           true, "every flag");
}

} // namespace

int main() {
    const auto component = kova::createComponent();
    setAndReadOptions(*component);
    Host host;
    kova::Variant day = "today";
    {
        const auto connection = component->connect(host);
        component->invoke("Stampa", {&day, 1});
    }
    component->invoke("Stampa", {&day, 1});
    expect(std::get<std::string>(day), std::string("today!"), "the day that the sink wrote, connected once");
    component->Show(0);
    kova::processEvents();
    try {
        (void)component->get("Version");
        ++failures;
    } catch (const kova::Error& failure) {
        expect(failure.number(), 438, "the error of a member that does not exist");
    }
    return failures == 0 ? 0 : 1;
}
