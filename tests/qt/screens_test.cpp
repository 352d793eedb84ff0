// Every screen that a cashier meets, in every layout and both colour schemes: texts can be read, targets hit
// with a finger, and parts have names, states and values for assistive technology.
#include "text_paper.h"
#include "till.h"
#include "unit/report_checks.h"
#include "unit/trace_file.h"

#include "adapters/qt/button_grid_view.h"
#include "adapters/qt/buttons.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLineEdit>
#include <QMetaEnum>
#include <QTabBar>
#include <QTest>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace kova {
namespace {

using test::Till;

// In millimetres of a 10 inch panel of 1280 x 800.
constexpr double DotsPerMillimetre = 149 / 25.4;
constexpr double LeastTarget = 9, LeastKey = 11, LeastGap = 1.5;
constexpr int LeastCaption = 16; // pixels of the font

/// What the positions of the design keep smaller, by how widgets' names begin: a row of buttons is 585 twips
/// high, the keyboard's keys share 9600 x 3735 twips, a row of the coin count has 375 twips.
const std::map<std::string, QSizeF> SmallTargets{
    {"Virtual_Keyboard_", {9.2, 9.3}}, {"txtVisore", {9, 8.6}},        {"CMD_CaricaMoneta", {9, 8.6}},
    {"cmdConferma", {9, 8.6}},         {"cmdAnnulla", {9, 8.6}},       {"cmdCassetto", {9, 8.6}},
    {"cmdCaricaMovimenti", {9, 8.6}},  {"cmdAnteprima", {9, 8.6}},     {"cmd_print", {9, 8.6}},
    {"PushButton1", {9, 8.6}},         {"grd_mov_giornata", {9, 8.3}}, {"comboData", {9, 8.3}},
    {"txtValuta", {9, 6.8}},           {"txtPrimaValuta", {9, 6.8}},   {"txtSecondaValuta", {9, 6.8}}};

bool isUsed(QAccessible::Role role) {
    static const std::set<int> roles{
        QAccessible::Button,      QAccessible::EditableText, QAccessible::PageTab,      QAccessible::CheckBox,
        QAccessible::RadioButton, QAccessible::ComboBox,     QAccessible::ColumnHeader, QAccessible::Table};
    return roles.contains(role);
}

QString statesOf(const QAccessibleInterface& part) {
    const auto state = part.state();
    const QString value = part.role() == QAccessible::Cell ? QString() : part.text(QAccessible::Value);
    QString all = value.isEmpty() ? value : " = \"" + value + '"';
    for (const auto& [on, name] :
         {std::pair(state.disabled, " disabled"), std::pair(state.checked, " checked"),
          std::pair(state.readOnly, " read-only"), std::pair(state.focused, " focused"),
          std::pair(state.selected, " selected"), std::pair(state.expanded, " expanded")})
        if (on)
            all += name;
    return all;
}

bool isTouched(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) != nullptr ||
           qobject_cast<const QTabBar*>(widget) != nullptr ||
           dynamic_cast<const ButtonGridView*>(widget) != nullptr;
}

/// What is drawn of the buttons, in the window.
std::vector<std::pair<std::string, QRectF>> facesOn(QWidget& window) {
    std::vector<std::pair<std::string, QRectF>> faces;
    for (auto* const widget : window.findChildren<QWidget*>()) {
        const QPointF at = widget->mapTo(&window, QPointF());
        const std::string name = widget->objectName().toStdString();
        if (!widget->isVisible())
            continue;
        if (const auto* button = dynamic_cast<FaceButton*>(widget))
            faces.emplace_back(name, button->face().translated(at));
        if (const auto* grid = dynamic_cast<ButtonGridView*>(widget))
            for (int i = 0; i < grid->cellCount(); ++i)
                if (const QRectF area = grid->face(i) & QRectF(grid->rect()); !area.isEmpty())
                    faces.emplace_back(name + ' ' + std::to_string(i), area.translated(at));
    }
    return faces;
}

class Screens : public testing::Test {
  protected:
    void look(QWidget& window, bool covered = false) {
        const test::TextPaper paper(window);
        expectLegible(window, paper, covered);
        QStringList parts;
        readParts(QAccessible::queryAccessibleInterface(&window), nullptr, parts);
        QStringList& before = lastSpoken[window.objectName()];
        spoken << QString();
        std::ranges::copy_if(parts, std::back_inserter(spoken),
                             [&](const QString& part) { return !before.contains(part); });
        before = parts;
        if (covered)
            return;
        expectFacesApart(window);
        expectEdgesSeen(window, paper.picture());
    }
    /// As a cashier does: idle, refused, complete, under the finger, saved, counted, listed.
    void use(Till& till);

    int texts = 0, targets = 0, faces = 0;     ///< looked at
    std::map<std::string, std::string> faint;  ///< text on background, and a text that has it
    std::set<std::string> small;               ///< exceptions met
    std::map<std::string, int> captions;       ///< of buttons and tabs, and the least size of each
    QStringList spoken;                        ///< of each screen what it had not before
    std::map<QString, QStringList> lastSpoken; ///< by window

  private:
    /// Disabled texts are excepted.
    void expectLegible(QWidget& window, const test::TextPaper& paper, bool covered) {
        for (const auto& [words, ink, behind, place, pixels] : paper.texts) {
            const QWidget* const on = window.childAt(place.center().toPoint());
            if (on != nullptr && !on->isEnabled())
                continue;
            ++texts;
            if (!covered && isTouched(on)) {
                int& least = captions.emplace(words.toStdString(), pixels).first->second;
                least = std::min(least, pixels);
            }
            const QRect room =
                on == nullptr ? window.rect() : QRect(on->mapTo(&window, QPoint()), on->size());
            EXPECT_TRUE(covered || dynamic_cast<const ButtonGridView*>(on) != nullptr || // which is panned
                        (place.height() >= 10 && QRectF(room).adjusted(-1, -1, 1, 1).contains(place)))
                << words.toStdString() << " is cut or tiny";
            if (look::contrast(ink, behind) < 4.5)
                faint.emplace((ink.name() + " on " + behind.name()).toStdString(), words.toStdString());
        }
    }
    /// This one and those on it.
    void readParts(QAccessibleInterface* part, QAccessibleInterface* parent, QStringList& lines) {
        if (part == nullptr || !part->isValid() || part->state().invisible)
            return;
        const QString name = part->text(QAccessible::Name);
        const auto role = part->role();
        if (role != QAccessible::Client) // inside an editor
            lines << QMetaEnum::fromType<QAccessible::Role>().valueToKey(role) + (" \"" + name + '"') +
                         statesOf(*part);
        if (isUsed(role)) {
            EXPECT_TRUE(!name.trimmed().isEmpty() && parent->indexOfChild(part) >= 0)
                << lines.last().toStdString();
            if (!part->state().offscreen && role != QAccessible::Table)
                expectFingerSized(*part, part->object() != nullptr ? *part->object() : *parent->object());
        }
        if (part->tableCellInterface() != nullptr && !part->state().offscreen) {
            const QPoint place = part->rect().center();
            EXPECT_EQ(parent->childAt(place.x(), place.y()), part) << lines.last().toStdString();
        }
        for (int i = 0; i < part->childCount(); ++i)
            readParts(part->child(i), part, lines);
    }
    void expectFingerSized(const QAccessibleInterface& part, const QObject& widget) {
        const std::string name = widget.objectName().toStdString();
        ++targets;
        const bool key = dynamic_cast<const KeyButton*>(&widget) != nullptr;
        QSizeF least = key ? QSizeF(LeastKey, LeastKey) : QSizeF(LeastTarget, LeastTarget);
        for (const auto& [begin, size] : SmallTargets)
            if (name.starts_with(begin)) {
                least = size;
                small.insert(begin);
            }
        EXPECT_GE(part.rect().width() / DotsPerMillimetre, least.width()) << name;
        EXPECT_GE(part.rect().height() / DotsPerMillimetre, least.height()) << name;
    }
    /// Side by side and one above the other.
    void expectFacesApart(QWidget& window) {
        constexpr double gap = LeastGap * DotsPerMillimetre;
        const auto all = facesOn(window);
        faces += static_cast<int>(all.size());
        for (const auto& [name, area] : all) {
            const double beside = name == "cmdConferma" ? 2 * gap : gap;
            for (const auto& [otherName, other] : all)
                EXPECT_TRUE(&area == &other || !(area.adjusted(-beside, 0, beside, 0).intersects(other) ||
                                                 area.adjusted(0, -gap, 0, gap).intersects(other)))
                    << name << ' ' << otherName;
        }
    }
    /// Between what lies on both sides of the left edge of each button and field is something that stands out
    /// from either, if only the one from the other.
    void expectEdgesSeen(const QWidget& window, const QImage& picture) {
        auto edges = facesOn(const_cast<QWidget&>(window));
        for (const auto* field : window.findChildren<QLineEdit*>())
            if (field->isVisible() && !field->isReadOnly())
                edges.emplace_back(field->objectName().toStdString(),
                                   QRectF(field->mapTo(&window, QPoint()), field->size()));
        for (const auto& [name, area] : edges) {
            const QPoint edge(qRound(area.left()), qRound(area.top()) + 8);
            const QWidget* const on = window.childAt(edge + QPoint(4, 0));
            if (on == nullptr || !on->isEnabled() || edge.x() < 3)
                continue;
            const auto seenFrom = [&](int x) {
                for (int other = -3; other <= 6; ++other)
                    if (look::standsOut(picture.pixelColor(edge + QPoint(x, 0)),
                                        picture.pixelColor(edge + QPoint(other, 0))))
                        return true;
                return false;
            };
            EXPECT_TRUE(seenFrom(-3) && seenFrom(6)) << name;
        }
    }
};

void Screens::use(Till& till) {
    const auto lookAgain = [&] {
        till.loop.settle();
        look(till.frame(), till.control<PushButton>("cmdNascondiTastiera").visible()); // by the keyboard
    };
    till.insideModal = [&](Window& window) {
        if (window.name() == "frm_CaricaMoneta") {
            test::as<TextBox>(window.find("txtPrimaValuta")).setText("12.345.678,00");
            test::as<TextBox>(window.find("txt_valuta")).setText("12");
        }
        look(*till.userInterface.frame(window));
    };
    lookAgain();
    till.control<PushButton>("cmdConferma").press(); // refused by the message window
    till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    till.control<ButtonGrid>("Pulsantiera_Attivita").touch("2");
    till.control<ButtonGrid>("Pulsantiera_Pagamenti_Versamenti").touch("2");
    till.wait(50);
    const auto& currencies = till.control<ButtonGrid>("Pulsantiera_Valuta").buttons();
    if (!currencies.empty())
        till.control<ButtonGrid>("Pulsantiera_Valuta").touch(currencies.front().key);
    till.control<PushButton>("cmdCassetto", 2).press();
    till.control<TextBox>("txtVisore").setText("12.5");
    lookAgain();
    till.control<TextBox>("txtVisore").setText("1250");
    till.dialog().moveFocus(till.control<TextBox>("txtNote"));
    till.control<TextBox>("txtNote").paste("RESTO");
    for (auto* button : till.frame().findChildren<QAbstractButton*>())
        button->setDown(true);
    const auto touched = touchPoint(till.userInterface, *till.dialog().find("Pulsantiera_Pagamenti"), "1");
    QTest::mousePress(touched->widget, Qt::LeftButton, {}, touched->point.toPoint());
    lookAgain();
    QTest::mouseRelease(touched->widget, Qt::LeftButton, {}, QPoint(-1, -1));
    till.control<PushButton>("cmdConferma").press();
    EXPECT_FALSE(till.sink.movements.empty());
    lookAgain();
    till.control<PushButton>("cmdAnnulla").setEnabled(false);
    till.control<TextBox>("txtNote").setLocked(true);
    till.control<OnScreenKeyboard>("Virtual_Keyboard").toggleCapsLock();
    lookAgain();
    till.control<PushButton>("CMD_CaricaMoneta").press();
    till.control<TabControl>("TabControl").touchTab(1);
    lookAgain();
    auto* const list = QAccessible::queryAccessibleInterface(&till.widget("grd_mov_giornata"));
    auto* const cell = list->tableInterface()->cellAt(1, 4);
    cell->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    lookAgain();
    till.control<ReportGrid>("grd_mov_giornata").groupBy(2);
    till.runtime.change(1031);
    lookAgain();
    for (const char* const panel : {"grd_mov_giornata_menu", "comboData_calendar"}) {
        till.frame().findChild<QAbstractButton*>(panel)->click();
        look(till.frame(), true);
        QTest::keyClick(till.frame().focusWidget(), Qt::Key_Escape);
    }
    till.control<TabControl>("TabControl").touchTab(0);
    lookAgain();
}

TEST(Accent, StandsOutFromEveryFace) {
    for (int i = 0; i < 4096; ++i) {
        const QColor face(i / 256 * 17, i / 16 % 16 * 17, i % 16 * 17);
        EXPECT_TRUE(look::standsOut(look::accentOn(face), face)) << face.name().toStdString();
    }
}

TEST_F(Screens, AreReadTouchedAndNamedInEveryLayout) {
    // What the rules fix; docs/contrast.md says where.
    const std::vector<std::set<std::string>> fixed{{}, {"#ffffff on #737f8d", "#000000 on #586472"}};
    for (const bool metro : {false, true}) {
        for (const auto layout : {Till::Layout::DrawersAndCurrencies, Till::Layout::Double,
                                  Till::Layout::Single, Till::Layout::ManyButtons}) {
            const testing::ScopedTrace trace(__FILE__, __LINE__, "layout " + std::to_string(int(layout)));
            Till till;
            till.component->ActiveColorMetroStyle(metro);
            till.component->SetSoftwareName("Cassa"); // whose double layout saves pairs
            test::addMovements(till.database());
            till.show(layout);
            use(till);
            if (!metro && layout == Till::Layout::Double)
                test::expectTrace("spoken_screens", spoken.join('\n').toStdString() + '\n');
        }
        std::set<std::string> names;
        for (const auto& [name, example] : faint)
            names.insert(name);
        EXPECT_EQ(names, fixed[metro ? 1 : 0]) << testing::PrintToString(faint);
        faint.clear();
        for (const auto& [caption, pixels] : captions)
            EXPECT_GE(pixels, LeastCaption) << caption;
    }
    EXPECT_GT(std::min({texts, targets, faces}), 1000);
    EXPECT_GT(captions.size(), 60U);
    EXPECT_EQ(small.size(), SmallTargets.size()) << testing::PrintToString(small);
}

} // namespace
} // namespace kova
