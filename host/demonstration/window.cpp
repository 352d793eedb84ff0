#include "demonstration/window.h"

#include "demonstration/choices_panel.h"
#include "demonstration/event_list.h"
#include "demonstration/look.h"
#include "demonstration/movement_list.h"
#include "documents/qt/day_document.h"
#include "documents/qt/day_printing.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

#include <algorithm>
#include <cmath>

namespace kova {
namespace {

std::int32_t supportedLanguage(std::int32_t id) {
    return id == German || id == English ? id : Italian;
}

/// About a document that the dialog asked for: over as soon as it asks for another one.
bool concernsDocuments(Caption message) {
    return message == Caption::NoDate || message == Caption::NoMovementsOn ||
           message == Caption::NotPrinted || message == Caption::DayUnreadable;
}

} // namespace

DemonstrationWindow::DemonstrationWindow(PointOfSale& shop)
    : shop_(shop), catalogues_(shop.catalogues()), choices_(new ChoicesPanel(catalogues_)),
      events_(new EventList(catalogues_)), movements_(new MovementList), banner_(new QPushButton),
      introduction_(new Introduction), open_(new QPushButton),
      languages_(new LanguageButtons(LanguageButtons::Place::InWindow)) {
    setObjectName("Demonstration");
    setAttribute(Qt::WA_StyledBackground);
    banner_->setObjectName("Banner");
    banner_->setFocusPolicy(Qt::NoFocus);
    banner_->hide();
    connect(banner_, &QPushButton::clicked, banner_, &QWidget::hide);
    open_->setObjectName("Primary");
    connect(open_, &QPushButton::clicked, this, [this] { openDialog(); });
    languages_->chosen =
        strip_.chosen = [this](std::int32_t id, const QString& name) { chooseLanguage(id, name); };
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeHeader());
    layout->addWidget(banner_);
    layout->addWidget(introduction_);
    layout->addWidget(makeWorkplace(), 1);
    open_->setFocus(); // the space bar opens the dialog at once
    setLanguage(supportedLanguage(languageId()));
    readMovements();
    if (!shop_.canStore())
        report({Caption::ReadOnly, {}});
    shop_.received = [this](const ReceivedEvent& event) { onReceived(event); };
}

QLabel* DemonstrationWindow::makeCaptioned(const char* objectName, Caption which) {
    auto* const label = new QLabel;
    label->setObjectName(objectName);
    labels_.emplace_back(which, label);
    return label;
}

QWidget* DemonstrationWindow::makeHeader() {
    auto* const header = new QFrame;
    header->setObjectName("Header");
    auto* const titles = new QVBoxLayout;
    titles->setSpacing(0);
    titles->addStretch();
    titles->addWidget(makeCaptioned("Title", Caption::Title));
    titles->addWidget(makeCaptioned("Subtitle", Caption::Subtitle));
    titles->addStretch();
    auto* const layout = new QHBoxLayout(header);
    layout->addLayout(titles, 1);
    layout->addWidget(languages_);
    header_ = layout;
    return header;
}

QWidget* DemonstrationWindow::makeWorkplace() {
    auto* const workplace = new QWidget;
    auto* const upper = new QHBoxLayout;
    upper->addWidget(makeCard(choices_), 58);
    upper->addWidget(makeActions(), 42);
    auto* const layout = new QVBoxLayout(workplace);
    layout->addLayout(upper, 62);
    layout->addWidget(makeCard(movements_, Caption::Movements), 38);
    wideLayouts_.push_back(upper);
    wideLayouts_.push_back(layout);
    workplace_ = layout;
    return workplace;
}

QWidget* DemonstrationWindow::makeActions() {
    auto* const actions = new QWidget;
    auto* const layout = new QVBoxLayout(actions);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(open_);
    layout->addWidget(makeCard(events_, Caption::Events), 1);
    wideLayouts_.push_back(layout);
    return actions;
}

QFrame* DemonstrationWindow::makeCard(QWidget* content, std::optional<Caption> title) {
    auto* const card = new QFrame;
    card->setObjectName("Card");
    auto* const layout = new QVBoxLayout(card);
    if (title)
        layout->addWidget(makeCaptioned("CardTitle", *title));
    layout->addWidget(content, 1);
    cardLayouts_.push_back(layout);
    return card;
}

void DemonstrationWindow::openDialog() {
    notice_.hide();
    strip_.accompanyModalWindows(scale_);
    introduction_->dismiss();
    shop_.show(choices_->choices());
    strip_.leave();
    notice_.hide(); // it was meant for who worked in the dialog
}

/// Called inside the component's request: the table is read when that is over.
void DemonstrationWindow::onReceived(const ReceivedEvent& event) {
    events_->add(event);
    if (!event.failure.empty()) {
        report({Caption::NotStored, QString::fromStdString(event.failure)});
    } else if (event.movement) {
        failure_.reset();
        showBanner();
        QMetaObject::invokeMethod(
            this, [this] { readMovements(); }, Qt::QueuedConnection);
    } else if (event.name == "ApriCassetto") {
        notice_.display(caption(Caption::DrawerOpened, languageId_), Notice::Kind::Success, scale_);
    } else {
        handOutDay(event);
    }
}

/// Returns when the document has been closed; the dialog waits for that.
void DemonstrationWindow::handOutDay(const ReceivedEvent& event) {
    notice_.hide();
    if (failure_ && concernsDocuments(failure_->message)) {
        failure_.reset();
        showBanner();
    }
    if (const auto document = makeDocument(event.date))
        showDocument(*document, event.name == "Anteprima");
}

std::optional<DayDocument> DemonstrationWindow::makeDocument(const std::string& date) {
    const auto day = parseDate(date);
    if (!day) {
        report({Caption::NoDate, QString::fromStdString(date).simplified()});
        return std::nullopt;
    }
    DayDocument document{{}, {}, PointOfSale::now(), regionalSettings(), languageId_};
    try {
        document.report = shop_.dayReport(*day);
    } catch (const std::exception& failure) {
        report({Caption::DayUnreadable, QString::fromUtf8(failure.what())});
        return std::nullopt;
    }
    if (document.report.movements.empty()) {
        report({Caption::NoMovementsOn, QString::fromStdString(formatDate(*day))});
        return std::nullopt;
    }
    if (const auto& user = document.report.scope.user) {
        const auto found = std::ranges::find(catalogues_.users, *user, &NamedId::id);
        document.userName =
            found == catalogues_.users.end() ? QString::number(*user) : QString::fromStdString(found->name);
    }
    return document;
}

void DemonstrationWindow::showDocument(const DayDocument& document, bool preview) {
    strip_.leave(); // it stands above everything
    try {
        if (preview)
            showPreview(document, scale_);
        else
            printWithDialog(document, scale_);
    } catch (const std::exception& failure) {
        report({Caption::NotPrinted, QString::fromUtf8(failure.what())});
    }
    strip_.accompanyModalWindows(scale_);
}

void DemonstrationWindow::readMovements() {
    try {
        movements_->setMovements(shop_.latestMovements());
    } catch (const std::exception& failure) {
        report({Caption::ListUnreadable, QString::fromUtf8(failure.what())});
    }
}

void DemonstrationWindow::report(Failure failure) {
    failure_ = std::move(failure);
    showBanner();
    // The dialog covers this window.
    if (failure_->message == Caption::NotStored)
        notice_.display(banner_->text() + '\n' + caption(Caption::EntriesKept, languageId_),
                        Notice::Kind::Failure, scale_);
    else if (concernsDocuments(failure_->message))
        notice_.display(banner_->text(), Notice::Kind::Failure, scale_);
}

void DemonstrationWindow::showBanner() {
    banner_->setVisible(failure_.has_value());
    if (!failure_)
        return;
    QString text = caption(failure_->message, languageId_);
    if (text.contains("%1"))
        text = text.arg(failure_->reason);
    banner_->setText(text);
}

void DemonstrationWindow::chooseLanguage(std::int32_t id, const QString& name) {
    setLanguage(id);
    kova::setLanguage(id, name.toStdString()); // of an open dialog too
}

void DemonstrationWindow::setLanguage(std::int32_t id) {
    languageId_ = id;
    languages_->select(id);
    strip_.select(id);
    setWindowTitle(caption(Caption::Title, id));
    for (const auto& [which, label] : labels_)
        label->setText(caption(which, id));
    open_->setText(caption(Caption::OpenDialog, id));
    introduction_->setLanguage(id);
    choices_->setLanguage(id);
    events_->setLanguage(id);
    movements_->setLanguage(id);
    if (!banner_->isHidden())
        showBanner();
}

void DemonstrationWindow::resizeEvent(QResizeEvent*) {
    constexpr double LeastChange = 0.01; // of the scale; each change lays everything out again
    const double scale = host_look::scaleFor(size());
    if (std::abs(scale - scale_) >= LeastChange)
        setScale(scale);
}

void DemonstrationWindow::setScale(double scale) {
    scale_ = scale;
    const auto px = [scale](double length) { return host_look::pixels(length, scale); };
    setStyleSheet(host_look::styleSheet(scale));
    header_->setContentsMargins(px(16), px(6), px(12), px(6));
    header_->setSpacing(px(6));
    for (QLayout* const layout : wideLayouts_)
        layout->setSpacing(px(10));
    workplace_->setContentsMargins(px(10), px(10), px(10), px(10));
    for (QLayout* const layout : cardLayouts_) {
        layout->setSpacing(px(8));
        layout->setContentsMargins(px(12), px(8), px(10), px(8));
    }
    open_->setFixedHeight(px(84));
    languages_->setScale(scale);
    introduction_->setScale(scale);
    choices_->setScale(scale);
    events_->setScale(scale);
    movements_->setScale(scale);
}

} // namespace kova
