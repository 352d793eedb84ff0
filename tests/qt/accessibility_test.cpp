// What assistive technology is told of names, states and values, and at once of what changes.
#include "accessible_tree.h"
#include "till.h"

#include "widgets/button_grid.h"
#include "widgets/report_grid.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace kova {
namespace {

using test::as;
using test::Till;

class Accessibility : public testing::Test {
  protected:
    Accessibility() { till.show(Till::Layout::DrawersAndCurrencies); }
    /// Null when there is none on the screen.
    QAccessibleInterface* find(QAccessible::Role role, const QString& name, QWidget* window = nullptr) {
        const auto tree = test::accessibleTree(window != nullptr ? *window : till.frame());
        const auto found = std::ranges::find_if(
            tree, [&](const auto& part) { return part.role() == role && part.name() == name; });
        return found == tree.end() ? nullptr : found->accessible;
    }
    QAccessible::State button(const QString& name) { return find(QAccessible::Button, name)->state(); }
    QAccessible::State editor(const QString& name) { return find(QAccessible::EditableText, name)->state(); }
    static QAccessible::State stateOf(QWidget& widget) {
        return QAccessible::queryAccessibleInterface(&widget)->state();
    }
    static void press(QAccessibleInterface* part) {
        part->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
    Till till;
};

TEST_F(Accessibility, NamesEachPartByWhatAPersonReads) {
    const std::map<QAccessible::Role, std::vector<const char*>> entry{
        {QAccessible::Dialog, {"Gestione cassetto"}},
        {QAccessible::Button,
         {"Conferma", "Chiudi", "Conta Monete", "7", "A", "Contanti", "CHF", "Virgola", "Invio", "Spazio"}},
        {QAccessible::CheckBox, {"1", "4"}},
        {QAccessible::Grouping,
         {"Tipo pagamento", "Tipo movimento", "Valuta", "Tastierino numerico", "Tastiera"}},
        {QAccessible::EditableText, {"Importo digitato", "Note"}}};
    for (const auto& [role, names] : entry)
        for (const char* name : names)
            EXPECT_NE(find(role, name), nullptr) << name;
    till.control<Label>("lblNote").setCaption("Bemerkung");
    EXPECT_NE(find(QAccessible::EditableText, "Bemerkung"), nullptr);
    till.control<TabControl>("TabControl").touchTab(1);
    till.loop.settle();
    EXPECT_NE(find(QAccessible::EditableText, "Data movimenti"), nullptr);
    EXPECT_NE(find(QAccessible::Button, "Data movimenti, Calendario"), nullptr);
    EXPECT_TRUE(find(QAccessible::PageTab, "Movimenti")->state().selected);
    EXPECT_FALSE(find(QAccessible::PageTab, "Gestione cassetto")->state().selected);
    EXPECT_EQ(find(QAccessible::Button, "Conferma"), nullptr) << "not of the other page";
}

TEST_F(Accessibility, TellsStatesAndValues) {
    till.control<PushButton>("cmdCassetto", 3).press();
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("2");
    till.control<TextBox>("txtVisore").paste("12,5");
    till.control<PushButton>("cmdConferma").setEnabled(false);
    till.control<TextBox>("txtNote").setLocked(true);
    till.loop.settle();
    EXPECT_TRUE(button("Carta").checked);
    press(find(QAccessible::Button, "Contanti"));
    EXPECT_TRUE(button("Contanti").checked && !button("Carta").checked);
    EXPECT_TRUE(button("Conferma").disabled && !button("Chiudi").disabled);
    EXPECT_TRUE(editor("Note").readOnly && !editor("Importo digitato").readOnly);
    EXPECT_TRUE(editor("Importo digitato").focused);
    EXPECT_EQ(find(QAccessible::EditableText, "Importo digitato")->text(QAccessible::Value), "12,5");
    EXPECT_TRUE(stateOf(till.widget("cmdCassetto", 3)).checked);
    EXPECT_FALSE(stateOf(till.widget("cmdCassetto", 1)).checked);
    auto* const capsLock = till.frame().findChild<QWidget*>("Virtual_Keyboard_CapsLock");
    EXPECT_TRUE(stateOf(*capsLock).checked);
    till.control<OnScreenKeyboard>("Virtual_Keyboard").toggleCapsLock();
    EXPECT_FALSE(stateOf(*capsLock).checked);
}

TEST_F(Accessibility, GivesTheMovementsAsATable) {
    till.control<TabControl>("TabControl").touchTab(1);
    auto& grid = till.control<ReportGrid>("grd_mov_giornata");
    for (const char* caption : {"Ora", "Importo"})
        grid.addColumn(100, caption, 20, true);
    for (const std::string hour : {"9:00", "10:00", "10:00"}) {
        grid.addRecord();
        grid.addItem(grid.recordCount() - 1, hour);
        grid.addItem(grid.recordCount() - 1, "5," + std::to_string(grid.recordCount()));
    }
    grid.populate();
    till.loop.settle();
    auto* const accessible = find(QAccessible::Table, "Movimenti");
    ASSERT_NE(accessible, nullptr);
    auto* const table = accessible->tableInterface();
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(table->columnDescription(1), "Importo");
    auto* const cell = table->cellAt(1, 1);
    EXPECT_EQ(cell->text(QAccessible::Name), "5,2");
    EXPECT_EQ(cell->tableCellInterface()->columnHeaderCells().value(0)->text(QAccessible::Name), "Importo");
    EXPECT_EQ(accessible->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
    press(cell);
    EXPECT_TRUE(cell->state().selected);
    EXPECT_EQ(table->selectedRows(), QList<int>{1});
    grid.groupBy(0);
    EXPECT_EQ(table->cellAt(0, 0)->text(QAccessible::Name).toStdString(), "Ora: 10:00 (2)");
    EXPECT_TRUE(table->cellAt(0, 0)->state().expanded);
    grid.deleteRecords();
    grid.populate();
    EXPECT_EQ(accessible->childCount(), 2) << "the headers";
    EXPECT_EQ(accessible->text(QAccessible::Description).toStdString(), grid.emptyText());
}

TEST_F(Accessibility, ReadsTheWindowsInFront) {
    std::vector<std::string> read;
    till.insideModal = [&](Window& window) {
        read.push_back(window.name());
        QWidget* const frame = till.userInterface.frame(window);
        if (window.name() == "frmMsgBox") {
            EXPECT_NE(find(QAccessible::StaticText, "Selezionare un pagamento.", frame), nullptr);
            EXPECT_TRUE(find(QAccessible::Button, "OK", frame)->state().focused);
            return;
        }
        EXPECT_NE(find(QAccessible::EditableText, "0.50 €", frame), nullptr);
        EXPECT_NE(find(QAccessible::Button, "Cancella monete", frame), nullptr) << "a picture alone";
        as<TextBox>(window.find("txtPrimaValuta")).setText("12,50");
        auto* const total = find(QAccessible::EditableText, "Tot. €", frame);
        ASSERT_NE(total, nullptr);
        EXPECT_EQ(total->text(QAccessible::Value), "12,50");
        EXPECT_TRUE(total->state().readOnly);
    };
    till.control<PushButton>("cmdConferma").press();
    till.control<PushButton>("CMD_CaricaMoneta").press();
    EXPECT_EQ(read, (std::vector<std::string>{"frmMsgBox", "frm_CaricaMoneta"}));
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
