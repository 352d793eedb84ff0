// What assistive technology is told at once, without asking again: marks, and the amount as it is keyed in.
#include "till.h"

#include <QAccessible>

#include <gtest/gtest.h>

#include <dlfcn.h>

namespace kova {
namespace {

using test::Till;

using Told = std::vector<std::string>;
Told told;

void tell(QAccessibleEvent& event, const QString& what) {
    told.push_back((event.accessibleInterface()->text(QAccessible::Name) + ' ' + what).toStdString());
}

void listen(QAccessibleEvent* event) {
    switch (event->type()) {
    case QAccessible::StateChanged:
        if (static_cast<QAccessibleStateChangeEvent*>(event)->changedStates().checked)
            tell(*event, event->accessibleInterface()->state().checked ? "on" : "off");
        break;
    case QAccessible::TextInserted:
        tell(*event, '+' + static_cast<QAccessibleTextInsertEvent*>(event)->textInserted());
        break;
    case QAccessible::TextUpdated:
        tell(*event, '=' + static_cast<QAccessibleTextUpdateEvent*>(event)->textInserted());
        break;
    case QAccessible::TextRemoved:
        tell(*event, '-' + static_cast<QAccessibleTextRemoveEvent*>(event)->textRemoved());
        break;
    default:
        break;
    }
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
    return QAccessible::isActive() == on;
}

class AccessibleChanges : public testing::Test {
  protected:
    void SetUp() override {
        till.show(Till::Layout::DrawersAndCurrencies);
        if (!askForEvents(true))
            GTEST_SKIP() << "this toolkit cannot be told to send events";
        QAccessible::installUpdateHandler(&listen);
        told.clear();
    }
    void TearDown() override {
        QAccessible::installUpdateHandler(nullptr);
        askForEvents(false);
    }
    Till till;
};

TEST_F(AccessibleChanges, TellsWhichButtonsOfAGridAreMarked) {
    auto& payments = till.control<ButtonGrid>("Pulsantiera_Pagamenti");
    payments.touch("1");
    EXPECT_EQ(told, Told{"Contanti on"});
    payments.touch("2");
    EXPECT_EQ(told, (Told{"Contanti on", "Contanti off", "Carta on"}));
    till.control<ButtonGrid>("Pulsantiera_Valuta").touch("CHF");
    ASSERT_EQ(told.size(), 4U);
    EXPECT_EQ(told.back(), "CHF on");
}

TEST_F(AccessibleChanges, ReadsTheAmountAsItIsKeyedIn) {
    auto& keypad = till.control<NumericKeypad>("Virtual_KeyPAD");
    for (const char* key : {"1", ".", "5", "BACKSPACE"})
        keypad.touchKey(key);
    EXPECT_EQ(told, (Told{"Importo digitato +1", "Importo digitato =1,", "Importo digitato =1,5",
                          "Importo digitato -1,5"}));
}

} // namespace
} // namespace kova
