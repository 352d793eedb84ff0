// A host of the installed component: shows the dialog, calls late bound, and sees failures stay inside.
#include <kova_drawer_man.h>

#include <cstdlib>
#include <iostream>

namespace {

void require(bool holds, const char* what) {
    if (holds)
        return;
    std::cerr << "failed: " << what << std::endl;
    std::exit(1);
}

struct Sink : kova::EventSink {
    void SalvaPagamento(std::int32_t&, double& importo, std::string&, std::string&, std::int16_t&,
                        std::int32_t&, bool&) override {
        importo += 1;
    }
    void Stampa(std::string&) override { throw kova::Error(7, "no paper"); }
    void Anteprima(std::string&) override {}
    void ApriCassetto() override {}
};

} // namespace

int main() {
    Sink sink;
    const auto component = kova::createComponent();
    const auto connection = component->connect(sink);
    component->InizializzaByConnString("Data Source=there-is-no-such-file.db");
    require(component->Show(0).empty(), "Show returns an empty text");
    kova::processEvents();
    kova::setLanguage(1031, "Deutsch");
    component->DiscardForm();
    component->set("IDCASSA", kova::Variant(std::int32_t{5}));
    require(component->idCassa() == 5, "a late-bound write arrives");

    std::vector<kova::Variant> movement{
        std::int32_t{1}, 2.5, std::string("€"), std::string("n"), std::int16_t{0}, std::int32_t{3}, true};
    component->invoke("SalvaPagamento", movement);
    require(std::get<double>(movement[1]) == 3.5, "what a sink writes comes back");
    bool caught = false;
    try {
        std::string day = "oggi";
        component->Stampa(day);
    } catch (const kova::Error& error) {
        caught = error.number() == 7;
    }
    require(caught, "a sink's failure crosses the library's boundary");
    kova::shutDown();
    std::cout << "the installed component works" << std::endl;
}
