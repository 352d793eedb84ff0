// A host in ten lines: create, sink, connection, option, Show. Start it with a database file.
#include <kova_drawer_man.h>

#include <iostream>

struct Till : kova::EventSink {
    void SalvaPagamento(int& payment, double& amount, std::string& currency, std::string& note, short&,
                        int& activity, bool& in) override {
        std::cout << (in ? "in " : "out ") << amount << ' ' << currency << ", payment " << payment
                  << ", activity " << activity << ": " << note
                  << std::endl; // store it here; throw if you cannot
    }
    void Stampa(std::string& day) override { std::cout << "print " << day << std::endl; }
    void Anteprima(std::string& day) override { std::cout << "preview " << day << std::endl; }
    void ApriCassetto() override { std::cout << "open the drawer" << std::endl; }
};

int main(int count, char** arguments) {
    const std::string file = count > 1 ? arguments[1] : "shop.db";
    Till till;
    const auto drawer = kova::createComponent();
    const auto connection = drawer->connect(till);
    drawer->InizializzaByConnString("Data Source=" + file);
    drawer->idCassa(1);
    drawer->Show();
}
