// Reads each text off the windows as it is drawn, with the colour that lies behind it.
#include "text_paper.h"
#include "till.h"

#include "widgets/page_notice.h"

#include <QAbstractButton>
#include <QTest>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace kova {
namespace {

using test::Till;

using Pairs = std::map<std::string, std::string>; ///< text on background, and a text that has it

/// Adds the pairs that are hard to read; disabled texts are excepted.
void addFaintPairs(QWidget& window, Pairs& faint, int& looked) {
    constexpr double least = 4.5;
    for (const auto& [words, ink, behind, place] : test::TextPaper(window).texts) {
        const QWidget* const on = window.childAt(place.center().toPoint());
        if (on != nullptr && !on->isEnabled())
            continue;
        ++looked;
        if (look::contrast(ink, behind) < least)
            faint.emplace((ink.name() + " on " + behind.name()).toStdString(), words.toStdString());
    }
}

std::set<std::string> namesOf(const Pairs& pairs) {
    std::set<std::string> names;
    for (const auto& [name, example] : pairs)
        names.insert(name);
    return names;
}

/// As a cashier meets it: idle, complete, refused, saved, under the finger.
void useEntryScreen(Till& till, Pairs& faint, int& looked) {
    const auto look = [&] {
        till.loop.settle();
        addFaintPairs(till.frame(), faint, looked);
    };
    look();
    if (till.control<ButtonGrid>("Pulsantiera_Attivita").visible())
        till.composeMovement();
    else
        till.control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    till.control<ButtonGrid>("Pulsantiera_Pagamenti_Versamenti").touch("2");
    till.wait(50);
    till.control<PushButton>("cmdCassetto", 2).press();
    till.control<TextBox>("txtVisore").setText("12.5");
    look();
    till.control<TextBox>("txtVisore").setText("1250");
    till.dialog().moveFocus(till.control<TextBox>("txtNote"));
    for (auto* button : till.frame().findChildren<QAbstractButton*>())
        button->setDown(true);
    const auto touched = till.userInterface.touchPoint(*till.dialog().find("Pulsantiera_Pagamenti"), "1");
    QTest::mousePress(touched->widget, Qt::LeftButton, {}, touched->point.toPoint());
    look();
    QTest::mouseRelease(touched->widget, Qt::LeftButton, {}, QPoint(-1, -1));
    till.control<PushButton>("cmdConferma").press();
    look();
    till.insideModal = [&](Window& window) {
        addFaintPairs(*till.userInterface.frame(window), faint, looked);
    };
    till.control<PushButton>("CMD_CaricaMoneta").press();
    till.control<PushButton>("cmdConferma").press(); // refused by the message window
    till.control<TabControl>("TabControl").touchTab(1);
    look();
}

TEST(Contrast, IsEnoughForEveryTextWhoseColoursAreOursToChoose) {
    EXPECT_NEAR(look::contrast(Qt::black, Qt::white), 21, 1e-9);
    EXPECT_NEAR(look::contrast(Qt::white, QColor(0x77, 0x77, 0x77)), 4.478, 1e-3); // a hair too little
    Pairs light, dark;
    int looked = 0;
    for (const bool metro : {false, true})
        for (const auto layout :
             {Till::Layout::Single, Till::Layout::DrawersAndCurrencies, Till::Layout::Double}) {
            Till till;
            till.component->ActiveColorMetroStyle(metro);
            till.component->SetSoftwareName("Cassa"); // whose double layout saves pairs
            till.show(layout);
            if (layout == Till::Layout::DrawersAndCurrencies)
                till.control<ButtonGrid>("Pulsantiera_Valuta").touch("€");
            useEntryScreen(till, metro ? dark : light, looked);
        }
    EXPECT_GT(looked, 1000);
    // What the rules fix; docs/contrast.md says where.
    const std::set<std::string> hidden{"#c0c0c0 on #c0c0c0"};
    std::set<std::string> dimmed{"#ffffff on #737f8d", "#000000 on #586472"};
    dimmed.merge(std::set(hidden));
    EXPECT_EQ(namesOf(light), hidden) << testing::PrintToString(light);
    EXPECT_EQ(namesOf(dark), dimmed) << testing::PrintToString(dark);
}

} // namespace
} // namespace kova
