// Whether a finger hits what it means to: sizes and gaps, in millimetres of a 10 inch panel of 1280 x 800.
#include "till.h"

#include "adapters/qt/button_grid_view.h"
#include "adapters/qt/key_button.h"

#include <QAccessible>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace kova {
namespace {

using test::as;
using test::Till;

constexpr double DotsPerInch = 149;
constexpr double LeastTarget = 9; // mm, as the others
constexpr double LeastKey = 11;
constexpr double LeastGap = 1.5;

double millimetres(double pixels) {
    return pixels * 25.4 / DotsPerInch;
}

struct Target {
    std::string name; ///< behind the name of what it stands on
    double width, height;
    bool key;
};

bool takesTouches(const QAccessibleInterface& part) {
    static const std::set<int> roles{QAccessible::Button,       QAccessible::CheckBox,
                                     QAccessible::EditableText, QAccessible::PageTab,
                                     QAccessible::ColumnHeader, QAccessible::Cell};
    return roles.contains(part.role());
}

void collect(QAccessibleInterface* at, std::vector<Target>& found) {
    if (at == nullptr || at->state().invisible)
        return;
    if (takesTouches(*at) && !at->state().offscreen) {
        const QString on = at->parent()->text(QAccessible::Name);
        found.push_back({(on + '/' + at->text(QAccessible::Name)).toStdString(),
                         millimetres(at->rect().width()), millimetres(at->rect().height()),
                         dynamic_cast<KeyButton*>(at->object()) != nullptr});
    }
    for (int i = 0; i < at->childCount(); ++i)
        collect(at->child(i), found);
}

/// What the fixed positions keep smaller on this panel: names begin so, and are at least so wide and high.
struct Exception {
    std::string begin;
    double width, height;
};

void expectFingerSized(QWidget& window, const std::vector<Exception>& exceptions) {
    std::vector<Target> targets;
    collect(QAccessible::queryAccessibleInterface(&window), targets);
    ASSERT_GT(targets.size(), 0U);
    std::set<std::string> used;
    for (const Target& target : targets) {
        Exception least{"", target.key ? LeastKey : LeastTarget, target.key ? LeastKey : LeastTarget};
        for (const Exception& exception : exceptions)
            if (target.name.starts_with(exception.begin)) {
                least = exception;
                used.insert(exception.begin);
            }
        EXPECT_GE(target.width, least.width) << target.name;
        EXPECT_GE(target.height, least.height) << target.name;
    }
    EXPECT_EQ(used.size(), exceptions.size()) << "an exception that nothing needs";
}

struct Face {
    QString name;
    QRectF area; ///< what is drawn, in the window
};

std::vector<Face> facesOn(QWidget& window) {
    std::vector<Face> faces;
    for (auto* const widget : window.findChildren<QWidget*>()) {
        const QPointF at = widget->mapTo(&window, QPointF());
        if (!widget->isVisible())
            continue;
        if (const auto* button = dynamic_cast<FaceButton*>(widget))
            faces.push_back({widget->objectName(), button->face().translated(at)});
        if (const auto* grid = dynamic_cast<ButtonGridView*>(widget))
            for (int i = 0; i < grid->cellCount(); ++i)
                if (const QRectF area = grid->face(i) & QRectF(grid->rect()); !area.isEmpty())
                    faces.push_back({widget->objectName() + QString::number(i), area.translated(at)});
    }
    return faces;
}

/// Whatever stands side by side or one above the other.
void expectFacesApart(QWidget& window) {
    const std::vector<Face> faces = facesOn(window);
    EXPECT_GT(faces.size(), 1U);
    for (const auto& [name, area] : faces)
        for (const auto& [otherName, other] : faces) {
            double gap = LeastGap;
            if (area.bottom() > other.top() && other.bottom() > area.top() && other.left() > area.left())
                gap = millimetres(other.left() - area.right());
            if (area.right() > other.left() && other.right() > area.left() && other.top() > area.top())
                gap = std::min(gap, millimetres(other.top() - area.bottom()));
            EXPECT_GE(gap, LeastGap) << name.toStdString() << ' ' << otherName.toStdString();
        }
}

// Fixed by the positions of the design, all of them: a row of buttons is 585 twips high, the keyboard's keys
// share 9600 x 3735 twips, a row of the coin count has 375 twips.
const std::vector<Exception> EntryPage{{"Tastiera/", 9.2, 9.3},
                                       {"Gestione cassetto/Importo digitato", 9, 8.8},
                                       {"Gestione cassetto/Conta Monete", 9, 8.8},
                                       {"Gestione cassetto/Conferma", 9, 8.8},
                                       {"Gestione cassetto/Chiudi", 9, 8.8}};
const std::vector<Exception> Drawers{{"Numero cassetto/", 9, 8.8}};
const std::vector<Exception> MovementsPage{{"Movimenti/", 9, 8.3}, {"Data movimenti/", 9, 8.3}};
const std::vector<Exception> CoinCount{{"/", 9, 6.8}};

std::vector<Exception> both(std::vector<Exception> one, const std::vector<Exception>& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

class TouchTargets : public testing::Test {
  protected:
    Till till{{1280, 800}};
};

TEST_F(TouchTargets, OfBothPagesAreFingerSized) {
    till.show();
    expectFingerSized(till.frame(), EntryPage);
    expectFacesApart(till.frame());
    till.control<TabControl>("TabControl").touchTab(1);
    till.loop.settle();
    expectFingerSized(till.frame(), MovementsPage);
    expectFacesApart(till.frame());
}

TEST_F(TouchTargets, OfTooManyButtonsForTheirGridsAreFingerSized) {
    till.show(Till::Layout::ManyButtons);
    expectFingerSized(till.frame(), both(EntryPage, Drawers));
    expectFacesApart(till.frame());
    for (const char* name : {"Pulsantiera_Pagamenti", "Pulsantiera_Attivita", "Pulsantiera_Valuta"}) {
        auto& grid = dynamic_cast<ButtonGridView&>(till.widget(name));
        for (int i = 0; i < grid.cellCount(); ++i) {
            const auto place = grid.touchPoint(grid.cellButton(i)->key);
            EXPECT_TRUE(QRectF(grid.rect()).contains(grid.face(i))) << name << " brings all of it into sight";
            EXPECT_EQ(grid.cellAt(place->point), i) << name;
        }
    }
}

TEST_F(TouchTargets, OfTheDoubleMovementAreFingerSized) {
    till.show(Till::Layout::Double);
    expectFacesApart(till.frame());
    till.dialog().moveFocus(till.control<TextBox>("txtNote")); // shows the keyboard
    till.loop.settle();
    expectFingerSized(till.frame(), EntryPage);
}

TEST_F(TouchTargets, OfTheWindowsInFrontAreFingerSized) {
    till.show();
    std::set<std::string> seen;
    till.insideModal = [&](Window& window) {
        seen.insert(window.name());
        auto& frame = *till.userInterface.frame(window);
        if (window.name() == "frmMsgBox") {
            expectFingerSized(frame, {});
            return;
        }
        expectFingerSized(frame, CoinCount);
        expectFacesApart(frame);
    };
    till.control<PushButton>("cmdConferma").press();
    till.control<PushButton>("CMD_CaricaMoneta").press();
    EXPECT_EQ(seen.size(), 2U);
}

} // namespace
} // namespace kova
