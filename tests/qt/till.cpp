#include "till.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

namespace kova::test {

MessageAnswer AttendedInterface::messageBox(const PlatformMessage& message) {
    const MessageAnswer wanted = answer(message);
    QTimer::singleShot(0, qApp, [wanted] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        const auto name = wanted == MessageAnswer::Yes  ? QMessageBox::Yes
                          : wanted == MessageAnswer::No ? QMessageBox::No
                                                        : QMessageBox::Ok;
        if (QAbstractButton* const button = box->button(name))
            button->click();
        else
            box->reject();
    });
    return drawing_.messageBox(message);
}

QtScreen::QtScreen(const QSize& surface, std::unique_ptr<QtEventLoop> eventLoop)
    : ownLoop(std::move(eventLoop)), userInterface(loop, italian, surface) {}

Till::Till(const QSize& surface, std::unique_ptr<QtEventLoop> eventLoop)
    : QtScreen(surface, std::move(eventLoop)), World(attended, loop) {
    attended.modalLoop = [this](Window& window) {
        loop.settle();
        passModal(window);
    };
    attended.answer = [this](const PlatformMessage& message) {
        messages.push_back("!" + message.text);
        return MessageAnswer::Ok;
    };
}

Till::~Till() {
    if (dialogOf(*component) != nullptr && dialogOf(*component)->window() != nullptr)
        dialog().requestClose();
    component.reset();
    loop.settle();
    EXPECT_EQ(log, std::vector<LogRecord>{});
}

void Till::show(Layout layout) {
    if (layout == Layout::DrawersAndCurrencies) {
        database().table("Attiva_Gestione_MultiCassetto", {"Valore"}, {{"1"}});
        database().table("tabValute", {"Valuta"}, {{"€"}, {"CHF"}, {"USD"}, {"GBP"}});
    }
    if (layout == Layout::ManyButtons)
        fillCatalogues();
    connect();
    component->DoppioInserimentoObbligatorio(layout == Layout::Double);
    if (layout == Layout::Double)
        process.SoftwareName = "Cassa";
    component->Show(0);
    loop.settle();
}

// Twenty activities, thirty payments, eight currencies, and drawers.
void Till::fillCatalogues() {
    using Rows = std::vector<std::vector<Value>>;
    Rows activities, payments, currencies;
    for (std::int64_t i = 1; i <= 30; ++i) {
        payments.push_back({i, "Buono sconto", std::int64_t{4}, "€"});
        if (i <= 20)
            activities.push_back({i, "Spese di reparto", std::int64_t{0}});
        if (i <= 8)
            currencies.push_back({std::string_view("ABCDEFGH").substr(static_cast<std::size_t>(i) - 1, 1)});
    }
    database().table("Attiva_Gestione_MultiCassetto", {"Valore"}, {{"1"}});
    database().table("FROM tabPagamenti", {"idpagamento", "TipoPagamento", "IdTipoPagamento", "Valuta"},
                     payments);
    database().table("tabValute", {"Valuta"}, currencies);
    database().table("where visible", {"id", "Description", "idTypeRow"}, activities);
}

void Till::composeMovement() {
    control<ButtonGrid>("Pulsantiera_Pagamenti").touch("1");
    control<ButtonGrid>("Pulsantiera_Attivita").touch("2");
    wait(50);
    control<TextBox>("txtNote").paste("RESTO");
}

} // namespace kova::test
