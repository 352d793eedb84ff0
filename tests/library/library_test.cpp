// A host of the shared library, with a Qt application of its own (argument "with-qt") or without one: opens
// dialogs, looks at what stands on the screen, and ends in the orders that hosts end in.

#include "kova_drawer_man.h"

#include <QApplication>
#include <QWidget>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

namespace {

struct Host final : kova::EventSink {
    void SalvaPagamento(std::int32_t&, double&, std::string&, std::string&, std::int16_t&, std::int32_t&,
                        bool&) override {}
    void Stampa(std::string&) override {}
    void Anteprima(std::string&) override {}
    void ApriCassetto() override { ++drawersOpened; }
    int drawersOpened = 0;
};

/// Answers every query of the component with no rows.
struct EmptyDatabase final : kova::DatabaseConnection {
    kova::Recordset query(const kova::Query&) override {
        ++queries;
        return kova::Recordset(std::make_shared<kova::Snapshot>());
    }
    int queries = 0;
};

int failures = 0;

void expect(bool holds, const char* what) {
    if (holds)
        return;
    std::cout << "does not hold: " << what << std::endl;
    ++failures;
}

int windowsTitled(const char* title) {
    int count = 0;
    for (const QWidget* const widget : QApplication::topLevelWidgets())
        count += widget->isVisible() && widget->windowTitle() == QString::fromUtf8(title) ? 1 : 0;
    return count;
}

std::shared_ptr<kova::cls_Kova_Drawer_Man> shownComponent() {
    auto component = kova::createComponent();
    component->Inizializza(std::make_shared<EmptyDatabase>());
    component->Show(0);
    kova::processEvents();
    return component;
}

void dialogComesAndGoes() {
    Host host;
    const auto database = std::make_shared<EmptyDatabase>();
    const auto component = kova::createComponent();
    const auto connection = component->connect(host);
    component->Inizializza(database);
    expect(database->queries > 0, "connecting reads the settings");
    kova::setLanguage(1040, "Italiano");
    component->Show(0);
    kova::processEvents();
    expect(windowsTitled("Gestione cassetto") == 1, "a modeless show puts one dialog on the screen");
    kova::setLanguage(9, "English");
    kova::processEvents();
    expect(windowsTitled("Drawer management") == 1, "a change of language reaches the open dialog");
    component->ApriCassetto();
    expect(host.drawersOpened == 1, "an event reaches the host");
    component->DiscardForm();
    kova::processEvents();
    expect(windowsTitled("Drawer management") == 0, "discarding takes the dialog off the screen");
}

void failuresCrossTheLibrary() {
    try {
        (void)kova::openDatabase("Driver=none");
        expect(false, "a connection string that nothing understands fails");
    } catch (const kova::DatabaseError& error) {
        expect(error.sqlState().size() == 5, "a database failure has its state");
    }
    try {
        (void)kova::hostOdbcConnection(nullptr)->query({"SELECT 1"});
        expect(false, "a connection that is none fails");
    } catch (const kova::DatabaseError& error) {
        expect(error.sqlState().size() == 5, "a connection that is none fails like a database");
    }
    try {
        (void)kova::createComponent()->get("Version");
        expect(false, "a member that does not exist fails");
    } catch (const kova::Error& error) {
        expect(error.number() == 438, "a member that does not exist is error 438");
    }
}

void libraryEndsAndBeginsAgain() {
    const auto held = shownComponent();
    kova::setLanguage(1040, "Italiano");
    kova::processEvents();
    expect(windowsTitled("Gestione cassetto") == 1, "the dialog is open before the end");
    kova::shutDown();
    expect(windowsTitled("Gestione cassetto") == 0, "the end closes open dialogs");
    kova::shutDown();
}

void run() {
    dialogComesAndGoes();
    failuresCrossTheLibrary();
    libraryEndsAndBeginsAgain();
}

/// Components that outlive main, with the dialog open.
std::shared_ptr<kova::cls_Kova_Drawer_Man> forgotten;

} // namespace

int main(int count, char** arguments) {
    if (count > 1 && std::string(arguments[1]) == "with-qt") {
        QApplication application(count, arguments);
        QApplication::setQuitOnLastWindowClosed(false);
        run();
        expect(QCoreApplication::instance() == &application, "the host's application is left alone");
        forgotten = shownComponent();
    } else {
        run();
        expect(QCoreApplication::instance() == nullptr, "the library's application ends with it");
        forgotten = shownComponent();
    }
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
