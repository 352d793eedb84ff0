// What assistive technology is told: the whole tree of each window is walked through the toolkit's interface.
#include "till.h"

#include "widgets/button_grid.h"
#include "widgets/report_grid.h"

#include <QAccessible>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <set>

namespace kova {
namespace {

using test::as;
using test::Till;

struct Node {
    QAccessibleInterface* accessible;
    QString path;
    [[nodiscard]] QString name() const { return accessible->text(QAccessible::Name); }
    [[nodiscard]] QString value() const { return accessible->text(QAccessible::Value); }
    [[nodiscard]] QAccessible::State state() const { return accessible->state(); }
};

void walk(QAccessibleInterface* at, const QString& path, std::vector<Node>& found) {
    if (at == nullptr || !at->isValid() || at->state().invisible)
        return;
    const QString here = path + '/' + at->text(QAccessible::Name);
    found.push_back({at, here});
    for (int i = 0; i < at->childCount(); ++i)
        walk(at->child(i), here, found);
}

std::vector<Node> treeOf(QWidget& window) {
    std::vector<Node> found;
    walk(QAccessible::queryAccessibleInterface(&window), {}, found);
    return found;
}

bool isUsed(QAccessible::Role role) {
    static const std::set<int> roles{QAccessible::Button,  QAccessible::PushButton, QAccessible::EditableText,
                                     QAccessible::PageTab, QAccessible::CheckBox,   QAccessible::ColumnHeader,
                                     QAccessible::Table,   QAccessible::ComboBox};
    return roles.contains(role);
}

/// What is wrong with a tree: a used part without name or with a programmer's one, a part without role, a
/// child that does not know its parent.
QStringList faultsOf(const std::vector<Node>& tree) {
    static const QRegularExpression programmers("^(cmd|CMD|txt|lbl|grd|frm|frame|Pulsantiera|Virtual|combo|"
                                                "PushButton|Label|FlatEdit|TabControl|Picture)");
    QStringList faults;
    for (const Node& node : tree) {
        const bool used = isUsed(node.accessible->role());
        if (used && node.name().trimmed().isEmpty())
            faults << "no name: " + node.path;
        if (programmers.match(node.name()).hasMatch())
            faults << "object name: " + node.path;
        const auto role = node.accessible->role();
        const bool inEditor = node.accessible->parent() != nullptr &&
                              node.accessible->parent()->role() == QAccessible::EditableText;
        if (role == QAccessible::NoRole || (role == QAccessible::Client && !inEditor))
            faults << "no role: " + node.path;
        if (used && node.accessible->rect().isEmpty() && !node.state().offscreen)
            faults << "no place: " + node.path;
        if (auto* const parent = node.accessible->parent();
            used && (parent == nullptr || parent->indexOfChild(node.accessible) < 0))
            faults << "lost child: " + node.path;
    }
    return faults;
}

const Node* find(const std::vector<Node>& tree, QAccessible::Role role, const QString& name) {
    const auto found = std::ranges::find_if(
        tree, [&](const Node& node) { return node.accessible->role() == role && node.name() == name; });
    return found == tree.end() ? nullptr : &*found;
}

class Accessibility : public testing::Test {
  protected:
    std::vector<Node> tree() { return treeOf(till.frame()); }
    Till till;
};

TEST_F(Accessibility, NamesEverythingThatCanBeUsedOnBothTabs) {
    till.show(Till::Layout::DrawersAndCurrencies);
    auto entry = tree();
    EXPECT_TRUE(faultsOf(entry).isEmpty()) << faultsOf(entry).join('\n').toStdString();
    for (const char* name : {"Conferma", "Chiudi", "Conta Monete", "7", "A", "Contanti", "Prelievo", "CHF",
                             "1", "4", "Virgola", "Invio", "Spazio"})
        EXPECT_TRUE(find(entry, QAccessible::Button, name) || find(entry, QAccessible::CheckBox, name))
            << name;
    for (const char* name : {"Tipo pagamento", "Tipo movimento", "Valuta", "Tastierino numerico", "Tastiera"})
        EXPECT_NE(find(entry, QAccessible::Grouping, name), nullptr) << name;
    EXPECT_NE(find(entry, QAccessible::EditableText, "Importo digitato"), nullptr);
    EXPECT_NE(find(entry, QAccessible::EditableText, "Note"), nullptr);
    EXPECT_EQ(entry.front().accessible->role(), QAccessible::Dialog);
    EXPECT_EQ(entry.front().name(), "Gestione cassetto");

    till.control<TabControl>("TabControl").touchTab(1);
    till.loop.settle();
    auto movements = tree();
    EXPECT_TRUE(faultsOf(movements).isEmpty()) << faultsOf(movements).join('\n').toStdString();
    EXPECT_NE(find(movements, QAccessible::EditableText, "Data movimenti"), nullptr);
    EXPECT_NE(find(movements, QAccessible::Button, "Data movimenti, Calendario"), nullptr);
    ASSERT_NE(find(movements, QAccessible::PageTab, "Movimenti"), nullptr);
    EXPECT_TRUE(find(movements, QAccessible::PageTab, "Movimenti")->state().selected);
    EXPECT_FALSE(find(movements, QAccessible::PageTab, "Gestione cassetto")->state().selected);
    EXPECT_EQ(find(movements, QAccessible::Button, "Conferma"), nullptr) << "not of the other page";
}

TEST_F(Accessibility, TellsStatesAndValues) {
    till.show(Till::Layout::DrawersAndCurrencies);
    till.control<PushButton>("cmdCassetto", 3).press();
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("2");
    till.control<TextBox>("txtVisore").paste("12,5");
    till.control<PushButton>("cmdConferma").setEnabled(false);
    till.control<TextBox>("txtNote").setLocked(true);
    till.loop.settle();
    auto now = tree();
    const auto state = [&](QAccessible::Role role, const QString& name) {
        const Node* const node = find(now, role, name);
        return node == nullptr ? QAccessible::State() : node->state();
    };
    EXPECT_TRUE(state(QAccessible::Button, "Carta").checked);
    EXPECT_FALSE(state(QAccessible::Button, "Contanti").checked);
    find(now, QAccessible::Button, "Contanti")
        ->accessible->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(state(QAccessible::Button, "Contanti").checked);
    EXPECT_TRUE(state(QAccessible::Button, "Conferma").disabled);
    EXPECT_FALSE(state(QAccessible::Button, "Chiudi").disabled);
    EXPECT_TRUE(state(QAccessible::EditableText, "Note").readOnly);
    EXPECT_FALSE(state(QAccessible::EditableText, "Importo digitato").readOnly);
    EXPECT_TRUE(state(QAccessible::EditableText, "Importo digitato").focused);
    EXPECT_EQ(find(now, QAccessible::EditableText, "Importo digitato")->value(), "12,5");

    const auto heldDown = [&](const char* name, std::optional<int> index) {
        const auto latch = QAccessible::queryAccessibleInterface(&till.widget(name, index))->state();
        return latch.checkable && latch.checked;
    };
    EXPECT_TRUE(heldDown("cmdCassetto", 3));
    EXPECT_FALSE(heldDown("cmdCassetto", 1));
    const auto capsLock = [&] {
        return QAccessible::queryAccessibleInterface(
                   till.frame().findChild<QWidget*>("Virtual_Keyboard_CapsLock"))
            ->state()
            .checked;
    };
    EXPECT_TRUE(capsLock());
    till.control<OnScreenKeyboard>("Virtual_Keyboard").toggleCapsLock();
    EXPECT_FALSE(capsLock());
}

TEST_F(Accessibility, FollowsTheLabelsWhenTheyChange) {
    till.show(Till::Layout::Double);
    auto now = tree();
    EXPECT_TRUE(faultsOf(now).isEmpty()) << faultsOf(now).join('\n').toStdString();
    EXPECT_NE(find(now, QAccessible::Grouping, "Prelievo"), nullptr);
    EXPECT_NE(find(now, QAccessible::Grouping, "Versamento"), nullptr);
    EXPECT_NE(find(now, QAccessible::EditableText, "Note"), nullptr) << "the label moved along";
    till.control<Label>("lblNote").setCaption("Bemerkung");
    now = tree();
    EXPECT_NE(find(now, QAccessible::EditableText, "Bemerkung"), nullptr);
}

TEST_F(Accessibility, GivesTheMovementsAsATable) {
    till.show();
    till.control<TabControl>("TabControl").touchTab(1);
    auto& grid = till.control<ReportGrid>("grd_mov_giornata");
    grid.deleteRecords();
    grid.deleteColumns();
    for (const char* caption : {"Ora", "Importo"})
        grid.addColumn(100, caption, 20, true);
    for (const std::string hour : {"9:00", "10:00", "10:00"}) {
        grid.addRecord();
        grid.addItem(grid.recordCount() - 1, hour);
        grid.addItem(grid.recordCount() - 1, "5," + std::to_string(grid.recordCount()));
    }
    grid.populate();
    till.loop.settle();
    auto* const accessible = QAccessible::queryAccessibleInterface(&till.widget("grd_mov_giornata"));
    auto* const table = accessible->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Movimenti");
    EXPECT_EQ(table->rowCount(), 3);
    EXPECT_EQ(table->columnCount(), 2);
    EXPECT_EQ(table->columnDescription(1), "Importo");
    auto* const cell = table->cellAt(1, 1);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->text(QAccessible::Name), "5,2");
    EXPECT_EQ(cell->tableCellInterface()->columnHeaderCells().value(0)->text(QAccessible::Name), "Importo");
    EXPECT_EQ(accessible->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
    EXPECT_EQ(accessible->child(accessible->indexOfChild(cell)), cell);
    cell->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(cell->state().selected);
    EXPECT_EQ(table->selectedRows(), QList<int>{1});
    EXPECT_TRUE(faultsOf(tree()).isEmpty()) << faultsOf(tree()).join('\n').toStdString();

    grid.groupBy(0);
    EXPECT_EQ(table->cellAt(0, 0)->text(QAccessible::Name).toStdString(), "Ora: 10:00 (2)");
    EXPECT_TRUE(table->cellAt(0, 0)->state().expanded);
    grid.deleteRecords();
    grid.populate();
    EXPECT_EQ(table->rowCount(), 0);
    EXPECT_EQ(accessible->childCount(), 2) << "the headers";
    EXPECT_EQ(accessible->text(QAccessible::Description).toStdString(), grid.emptyText());
}

TEST_F(Accessibility, NamesTheCoinCountByRowAndCurrency) {
    till.show();
    bool looked = false;
    till.insideModal = [&](Window& window) {
        if (window.name() != "frm_CaricaMoneta")
            return;
        looked = true;
        const auto coins = treeOf(*till.userInterface.frame(window));
        EXPECT_TRUE(faultsOf(coins).isEmpty()) << faultsOf(coins).join('\n').toStdString();
        EXPECT_NE(find(coins, QAccessible::EditableText, "0.50 €"), nullptr);
        ASSERT_NE(find(coins, QAccessible::EditableText, "Tot. €"), nullptr);
        as<TextBox>(window.find("txtPrimaValuta")).setText("12,50");
        EXPECT_EQ(find(coins, QAccessible::EditableText, "Tot. €")->value(), "12,50");
        EXPECT_TRUE(find(coins, QAccessible::EditableText, "Tot. €")->state().readOnly);
        EXPECT_NE(find(coins, QAccessible::Button, "Cancella monete"), nullptr) << "a picture alone";
    };
    till.control<PushButton>("CMD_CaricaMoneta").press();
    EXPECT_TRUE(looked);
}

TEST_F(Accessibility, ReadsAMessage) {
    till.show();
    bool looked = false;
    till.insideModal = [&](Window& window) {
        looked = true;
        const auto message = treeOf(*till.userInterface.frame(window));
        EXPECT_TRUE(faultsOf(message).isEmpty()) << faultsOf(message).join('\n').toStdString();
        EXPECT_EQ(message.front().name(), "Gestione cassetto");
        EXPECT_NE(find(message, QAccessible::StaticText, "Selezionare un pagamento."), nullptr);
        ASSERT_NE(find(message, QAccessible::Button, "OK"), nullptr);
        EXPECT_TRUE(find(message, QAccessible::Button, "OK")->state().focused);
    };
    till.control<PushButton>("cmdConferma").press();
    EXPECT_TRUE(looked);
}

} // namespace
} // namespace kova
