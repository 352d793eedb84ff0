#include "demonstration/choices_panel.h"

#include "demonstration/look.h"
#include "demonstration/point_of_sale.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QScroller>
#include <QWheelEvent>

#include <algorithm>

namespace kova {

/// A drop-down list drawn like the window's other fields, with rows for fingers.
class ChoiceBox final : public QComboBox {
  public:
    explicit ChoiceBox(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
    /// Scrolling the page must not change a choice.
    void wheelEvent(QWheelEvent* event) override;
};

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
    setView(new QListView); // whose rows the style sheet may size
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(4);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ChoiceBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = height() / 44.0;
    painter.setPen(hasFocus() ? QPen(host_look::Accent, 2 * unit) : QPen(host_look::Line, unit));
    painter.setBrush(QColor(244, 246, 248));
    painter.drawRoundedRect(QRectF(rect()).adjusted(unit, unit, -unit, -unit), 6 * unit, 6 * unit);

    const QPointF tip(width() - 18 * unit, height() / 2.0 + 3 * unit);
    painter.setPen(QPen(host_look::Muted, 2 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({tip + QPointF(-6, -6) * unit, tip, tip + QPointF(6, -6) * unit}));

    const QRectF room = QRectF(rect()).adjusted(10 * unit, 0, -30 * unit, 0);
    painter.setPen(host_look::Ink);
    const QString shown =
        painter.fontMetrics().elidedText(currentText(), Qt::ElideRight, static_cast<int>(room.width()));
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, shown);
}

void ChoiceBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

/// A switch with its caption, and below that the name of what it switches. The whole row can be touched.
class ToggleSwitch final : public QAbstractButton {
  public:
    explicit ToggleSwitch(const QString& name, QWidget* parent = nullptr);
    void setScale(double scale);
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void paintTexts(QPainter& painter, const QRect& area) const;
    void paintSwitch(QPainter& painter, const QRectF& track) const;
    QString name_;
    double scale_ = 1;
};

namespace {

constexpr double RowHeight = 46;
constexpr double TrackWidth = 46;
constexpr double TrackHeight = 26;
constexpr double Margin = 6;

} // namespace

ToggleSwitch::ToggleSwitch(const QString& name, QWidget* parent) : QAbstractButton(parent), name_(name) {
    setCheckable(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleDescription(name);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ToggleSwitch::setScale(double scale) {
    scale_ = scale;
    updateGeometry();
    update();
}

QSize ToggleSwitch::sizeHint() const {
    return {host_look::pixels(230, scale_), host_look::pixels(RowHeight, scale_)};
}

void ToggleSwitch::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int margin = host_look::pixels(Margin, scale_);
    if (isDown() || hasFocus()) {
        painter.setPen(hasFocus() ? QPen(host_look::Accent, scale_) : QPen(Qt::NoPen));
        painter.setBrush(isDown() ? QColor(219, 232, 244) : QColor(Qt::transparent));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), margin, margin);
    }
    const QRectF track(margin, (height() - TrackHeight * scale_) / 2, TrackWidth * scale_,
                       TrackHeight * scale_);
    paintSwitch(painter, track);
    const int left = static_cast<int>(track.right()) + host_look::pixels(10, scale_);
    paintTexts(painter, rect().adjusted(left, 0, -margin, 0));
}

void ToggleSwitch::paintSwitch(QPainter& painter, const QRectF& track) const {
    const double radius = track.height() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? host_look::Accent : QColor(172, 182, 193));
    painter.drawRoundedRect(track, radius, radius);
    const double x = isChecked() ? track.right() - radius : track.left() + radius;
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(x, track.center().y()), radius * 0.78, radius * 0.78);
}

void ToggleSwitch::paintTexts(QPainter& painter, const QRect& area) const {
    const QRect upper = area.adjusted(0, area.height() / 12, 0, -area.height() * 5 / 12);
    const QRect lower = area.adjusted(0, area.height() * 7 / 12, 0, -area.height() / 12);
    const auto draw = [&](const QRect& place, const QString& text, double size, const QColor& color) {
        painter.setFont(host_look::font(size, scale_));
        painter.setPen(color);
        const QString shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width());
        painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter, shown);
    };
    draw(upper, text(), 15, host_look::Ink);
    draw(lower, name_, 10.5, host_look::Muted);
}

namespace {

constexpr int Tills = 4;
constexpr double FieldHeight = 46;   ///< 9 mm on a panel of 10 inches
constexpr std::int32_t Nothing = -1; ///< the id that the component takes for "none"

struct SwitchShape {
    Caption caption;
    const char* option;
};

constexpr SwitchShape SwitchShapes[] = {
    {Caption::DoubleMovement, "DoppioInserimentoObbligatorio"},
    {Caption::DarkColours, "ActiveColorMetroStyle"},
    {Caption::ConfirmAutomatically, "InserimentoAutomatico"},
    {Caption::CloseAutomatically, "ChiusuraAutomatica"},
    {Caption::OpeningFloat, "PredisponiInserimentoFondoCassaIniziale"},
    {Caption::OfferPreviousFloat, "AttivaRecuperaFondoCassaPrecedente"},
    {Caption::CompanyCurrencyOnly, "UsaSoloValutaAziendale"},
    {Caption::OnlyOwnMovements, "VisualizzaMovimentiUtenteLoggato"},
    {Caption::ShowProvisional, "AttivaVisualizzazionePrecontiDefinitivi"},
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
    for (const SwitchShape& shape : SwitchShapes) {
        auto* const input = new ToggleSwitch(shape.option);
        switchLayout_->addWidget(input, position / 2, position % 2);
        switches_.push_back({shape.caption, shape.option, input});
        ++position;
    }
}

Choices ChoicesPanel::choices() const {
    Choices chosen{{{"idCassa", tills_->checkedId()},
                    {"idUtente", user_->currentData().toInt()},
                    {"idPagamentoPredefinito", payment_->currentData().toInt()},
                    {"ValutaAziendale", currency_->currentText().toStdString()}},
                   softwareName_->text().toStdString()};
    for (const Switch& one : switches_)
        chosen.options.emplace_back(one.option, one.input->isChecked());
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
