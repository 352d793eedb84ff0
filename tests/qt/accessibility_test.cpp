// What assistive technology is told of changes, and what it can do.
#include "till.h"
#include "unit/report_checks.h"

#include "widgets/button_grid.h"
#include "widgets/report_grid.h"

#include <QAccessible>

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace kova {
namespace {

using test::Till;

class Accessibility : public testing::Test {
  protected:
    Accessibility() { till.show(Till::Layout::DrawersAndCurrencies); }
    QAccessibleInterface& part(const char* name) {
        return *QAccessible::queryAccessibleInterface(&till.widget(name));
    }
    static void press(QAccessibleInterface* part) {
        part->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
    Till till;
};

TEST_F(Accessibility, FollowsLabelsAndPressesButtons) {
    till.control<Label>("lblNote").setCaption("Bemerkung");
    EXPECT_EQ(part("txtNote").text(QAccessible::Name), "Bemerkung");
    press(part("Pulsantiera_Pagamenti").child(1));
    EXPECT_TRUE(till.control<ButtonGrid>("Pulsantiera_Pagamenti").buttons()[1].marked);
}

TEST_F(Accessibility, GivesTheMovementsAsATable) {
    test::addMovements(till.database());
    till.control<TabControl>("TabControl").touchTab(1);
    till.loop.settle();
    auto& grid = till.control<ReportGrid>("grd_mov_giornata");
    auto& list = part("grd_mov_giornata");
    auto* const table = list.tableInterface();
    EXPECT_EQ(table->rowCount(), 8);
    auto* const cell = table->cellAt(1, 4);
    EXPECT_EQ(cell->text(QAccessible::Name), "7");
    EXPECT_EQ(cell->tableCellInterface()->columnHeaderCells().value(0)->text(QAccessible::Name), "importo");
    EXPECT_EQ(list.childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
    press(cell);
    EXPECT_EQ(table->selectedRows(), QList<int>{1});
    grid.deleteRecords();
    grid.populate();
    EXPECT_EQ(list.childCount(), 8) << "the headers";
    EXPECT_EQ(list.text(QAccessible::Description).toStdString(), grid.emptyText());
}

std::vector<std::string> told;

void listen(QAccessibleEvent* event) {
    const auto tell = [&](const QString& what) {
        told.push_back((event->accessibleInterface()->text(QAccessible::Name) + ' ' + what).toStdString());
    };
    if (event->type() == QAccessible::TextInserted)
        tell('+' + static_cast<QAccessibleTextInsertEvent*>(event)->textInserted());
    else if (event->type() == QAccessible::TextUpdated)
        tell('=' + static_cast<QAccessibleTextUpdateEvent*>(event)->textInserted());
    else if (event->type() == QAccessible::TextRemoved)
        tell('-' + static_cast<QAccessibleTextRemoveEvent*>(event)->textRemoved());
    else if (event->type() == QAccessible::StateChanged &&
             static_cast<QAccessibleStateChangeEvent*>(event)->changedStates().checked)
        tell(event->accessibleInterface()->state().checked ? "on" : "off");
}

/// No desktop asks for events here: the toolkit's platform part, which has no header, is told that one does.
bool askForEvents(bool on) {
    auto* const platform =
        static_cast<void**>(dlsym(RTLD_DEFAULT, "_ZN22QGuiApplicationPrivate20platform_integrationE"));
    const auto accessibility = reinterpret_cast<void* (*)(void*)>(
        dlsym(RTLD_DEFAULT, "_ZNK20QPlatformIntegration13accessibilityEv"));
    const auto setActive = reinterpret_cast<void (*)(void*, bool)>(
        dlsym(RTLD_DEFAULT, "_ZN22QPlatformAccessibility9setActiveEb"));
    if (platform == nullptr || accessibility == nullptr || setActive == nullptr)
        return false;
    setActive(accessibility(*platform), on);
    QAccessible::installUpdateHandler(on ? &listen : nullptr);
    return QAccessible::isActive() == on;
}

TEST_F(Accessibility, TellsAtOnceOfMarksAndOfTheAmountAsItIsKeyedIn) {
    if (!askForEvents(true))
        GTEST_SKIP() << "this toolkit cannot be told to send events";
    told.clear();
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("2");
    till.control<ButtonGrid>("Pulsantiera_Valuta").touch("CHF");
    for (const char* key : {"1", ".", "5", "BACKSPACE"})
        till.control<NumericKeypad>("Virtual_KeyPAD").touchKey(key);
    askForEvents(false);
    EXPECT_EQ(told, (std::vector<std::string>{"Contanti on", "Contanti off", "Carta on", "CHF on",
                                              "Importo digitato +1", "Importo digitato =1,",
                                              "Importo digitato =1,5", "Importo digitato -1,5"}));
}

} // namespace
} // namespace kova
