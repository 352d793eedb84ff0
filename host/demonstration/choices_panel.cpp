#include "demonstration/choices_panel.h"

#include "demonstration/choice_box.h"
#include "demonstration/look.h"
#include "demonstration/point_of_sale.h"
#include "demonstration/toggle_switch.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScroller>

#include <algorithm>

namespace kova {
namespace {

constexpr int Tills = 4;
constexpr double FieldHeight = 46;   ///< 9 mm on a panel of 10 inches
constexpr std::int32_t Nothing = -1; ///< the id that the component takes for "none"

struct SwitchShape {
    Caption caption;
    const char* name;
    bool ComponentOptions::*option;
};

using O = ComponentOptions;
constexpr SwitchShape switchShapes[] = {
    {Caption::DoubleMovement, "DoppioInserimentoObbligatorio", &O::DoppioInserimentoObbligatorio},
    {Caption::DarkColours, "ActiveColorMetroStyle", &O::ActiveColorMetroStyle},
    {Caption::ConfirmAutomatically, "InserimentoAutomatico", &O::InserimentoAutomatico},
    {Caption::CloseAutomatically, "ChiusuraAutomatica", &O::ChiusuraAutomatica},
    {Caption::OpeningFloat, "PredisponiInserimentoFondoCassaIniziale",
     &O::PredisponiInserimentoFondoCassaIniziale},
    {Caption::OfferPreviousFloat, "AttivaRecuperaFondoCassaPrecedente",
     &O::AttivaRecuperaFondoCassaPrecedente},
    {Caption::CompanyCurrencyOnly, "UsaSoloValutaAziendale", &O::UsaSoloValutaAziendale},
    {Caption::OnlyOwnMovements, "VisualizzaMovimentiUtenteLoggato", &O::VisualizzaMovimentiUtenteLoggato},
    {Caption::ShowProvisional, "AttivaVisualizzazionePrecontiDefinitivi",
     &O::AttivaVisualizzazionePrecontiDefinitivi},
};

} // namespace

ChoicesPanel::ChoicesPanel(const ShopCatalogues& catalogues, QWidget* parent)
    : QScrollArea(parent), fieldLayout_(new QGridLayout), switchLayout_(new QGridLayout),
      tills_(new QButtonGroup(this)), user_(new ChoiceBox), payment_(new ChoiceBox), currency_(new ChoiceBox),
      softwareName_(new QLineEdit("Punto cassa")) {
    setObjectName("Choices");
    auto* const page = new QWidget;
    page->setObjectName("ChoicesPage");
    auto* const layout = new QVBoxLayout(page);
    layout->addLayout(fieldLayout_);
    layout->addLayout(switchLayout_);
    layout->addStretch();
    addField(Caption::Till, makeTills(), 0, 0);
    addField(Caption::User, user_, 0, 1);
    addField(Caption::DefaultPayment, payment_, 0, 2);
    addField(Caption::CompanyCurrency, currency_, 1, 0);
    addField(Caption::SoftwareName, softwareName_, 1, 1, 2);
    for (int column = 0; column < 3; ++column)
        fieldLayout_->setColumnStretch(column, 1);
    fillLists(catalogues);
    addSwitches();
    setWidget(page);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QScroller::grabGesture(viewport());
}

void ChoicesPanel::addField(Caption which, QWidget* input, int row, int column, int columns) {
    auto* const title = new QLabel;
    title->setObjectName("FieldTitle");
    title->setBuddy(input);
    fieldLayout_->addWidget(title, 2 * row, column, 1, columns);
    fieldLayout_->addWidget(input, 2 * row + 1, column, 1, columns);
    fields_.push_back({which, title, input});
}

QWidget* ChoicesPanel::makeTills() {
    auto* const tills = new QWidget;
    auto* const layout = new QHBoxLayout(tills);
    layout->setContentsMargins(0, 0, 0, 0);
    for (int till = 1; till <= Tills; ++till) {
        auto* const button = new QPushButton(QString::number(till));
        button->setObjectName("Segment");
        button->setCheckable(true);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        tills_->addButton(button, till);
        layout->addWidget(button, 1);
    }
    tills_->button(1)->setChecked(true);
    return tills;
}

void ChoicesPanel::fillLists(const ShopCatalogues& catalogues) {
    const auto fill = [](ChoiceBox& box, const std::vector<NamedId>& names) {
        box.addItem({}, Nothing); // its caption follows the language
        for (const NamedId& one : names)
            box.addItem(QString::fromStdString(one.name), one.id);
    };
    fill(*user_, catalogues.users);
    fill(*payment_, catalogues.payments);
    user_->setCurrentIndex(user_->count() > 1 ? 1 : 0);
    currency_->addItem(QString::fromUtf8("€"));
    for (const std::string& one : catalogues.currencies)
        if (const QString text = QString::fromStdString(one); currency_->findText(text) < 0)
            currency_->addItem(text);
}

void ChoicesPanel::addSwitches() {
    int position = 0;
    for (const SwitchShape& shape : switchShapes) {
        auto* const input = new ToggleSwitch(shape.name);
        switchLayout_->addWidget(input, position / 2, position % 2);
        switches_.push_back({shape.caption, shape.option, input});
        ++position;
    }
}

ComponentOptions ChoicesPanel::choices() const {
    ComponentOptions chosen;
    chosen.idCassa = tills_->checkedId();
    chosen.idUtente = user_->currentData().toInt();
    chosen.idPagamentoPredefinito = payment_->currentData().toInt();
    chosen.ValutaAziendale = currency_->currentText().toStdString();
    chosen.SwName = softwareName_->text().toStdString();
    for (const Switch& one : switches_)
        chosen.*one.option = one.input->isChecked();
    return chosen;
}

void ChoicesPanel::setLanguage(std::int32_t id) {
    for (const Field& field : fields_) {
        field.title->setText(caption(field.caption, id));
        field.input->setAccessibleName(field.title->text());
    }
    for (QAbstractButton* const till : tills_->buttons())
        till->setAccessibleName(caption(Caption::Till, id) + ' ' + till->text());
    for (const Switch& one : switches_)
        one.input->setText(caption(one.caption, id));
    user_->setItemText(0, caption(Caption::NoUser, id));
    payment_->setItemText(0, caption(Caption::NoPayment, id));
    setAccessibleName(caption(Caption::Choices, id));
}

void ChoicesPanel::setScale(double scale) {
    const int margin = host_look::pixels(12, scale);
    widget()->layout()->setContentsMargins(0, 0, 0, 0);
    widget()->layout()->setSpacing(host_look::pixels(8, scale));
    fieldLayout_->setHorizontalSpacing(margin);
    fieldLayout_->setVerticalSpacing(host_look::pixels(3, scale));
    switchLayout_->setHorizontalSpacing(margin);
    switchLayout_->setVerticalSpacing(0);
    fields_.front().input->layout()->setSpacing(host_look::pixels(4, scale));
    for (const Field& field : fields_)
        field.input->setFixedHeight(host_look::pixels(FieldHeight, scale));
    for (QAbstractButton* const till : tills_->buttons())
        till->setFixedHeight(host_look::pixels(FieldHeight, scale));
    for (const Switch& one : switches_)
        one.input->setScale(scale);
}

} // namespace kova
