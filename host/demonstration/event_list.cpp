#include "demonstration/event_list.h"

#include "demonstration/look.h"
#include "demonstration/texts.h"

#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QScroller>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

namespace kova {
namespace {

constexpr std::size_t MostEvents = 500;
const QString PartSeparator = QStringLiteral(" \u00B7 ");

QString nameOf(const std::vector<NamedId>& names, std::int32_t id) {
    const auto found = std::ranges::find(names, id, &NamedId::id);
    return found == names.end() ? QString::number(id) : QString::fromStdString(found->name);
}

QString timeOfDay(DateTime time) {
    using namespace std::chrono;
    const hh_mm_ss clock(floor<seconds>(time - floor<days>(time)));
    const auto two = [](auto part) { return QString::number(part.count()).rightJustified(2, '0'); };
    return two(clock.hours()) + ':' + two(clock.minutes()) + ':' + two(clock.seconds());
}

QColor colourOf(const ReceivedEvent& event) {
    if (!event.failure.empty())
        return host_look::Failure;
    if (event.movement)
        return event.movement->isIncasso ? host_look::Incoming : host_look::Outgoing;
    return host_look::Accent;
}

} // namespace

void EventListModel::add(const ReceivedEvent& event) {
    beginInsertRows({}, 0, 0);
    events_.push_front(event);
    endInsertRows();
    if (events_.size() <= MostEvents)
        return;
    const int last = static_cast<int>(MostEvents);
    beginRemoveRows({}, last, last);
    events_.pop_back();
    endRemoveRows();
}

void EventListModel::setLanguage(std::int32_t id) {
    languageId_ = id;
    if (!events_.empty())
        emit dataChanged(index(0), index(rowCount() - 1));
}

int EventListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(events_.size());
}

QVariant EventListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const ReceivedEvent& event = events_[static_cast<std::size_t>(index.row())];
    const QString name = QString::fromStdString(event.name);
    switch (role) {
    case Qt::DisplayRole: // also what assistive technology reads
        return timeOfDay(event.time) + ' ' + name + PartSeparator + details(event);
    case Time:
        return timeOfDay(event.time);
    case Name:
        return name;
    case Details:
        return details(event);
    case Colour:
        return colourOf(event);
    default:
        return {};
    }
}

QString EventListModel::details(const ReceivedEvent& event) const {
    const QString date = QString::fromStdString(event.date);
    if (!event.failure.empty() && event.movement)
        return caption(Caption::NotStored, languageId_).arg(QString::fromStdString(event.failure)) + '\n' +
               movementText(*event.movement);
    if (event.movement)
        return movementText(*event.movement);
    if (event.name == "Stampa")
        return caption(Caption::PrintDay, languageId_).arg(date);
    if (event.name == "Anteprima")
        return caption(Caption::PreviewDay, languageId_).arg(date);
    return caption(Caption::DrawerOpened, languageId_);
}

QString EventListModel::movementText(const Movement& movement) const {
    const QString direction =
        caption(movement.isIncasso ? Caption::Incoming : Caption::Outgoing, languageId_);
    QStringList parts{direction + ' ' + amountText(movement.importo) + ' ' +
                          QString::fromStdString(movement.Valuta),
                      nameOf(catalogues_.payments, movement.idpagamento),
                      nameOf(catalogues_.activities, movement.tipoIncasso)};
    if (movement.cassetto != 0)
        parts << caption(Caption::Drawer, languageId_) + ' ' + QString::number(movement.cassetto);
    if (!movement.note.empty())
        parts << QString::fromUtf8("«%1»").arg(QString::fromStdString(movement.note).simplified());
    return parts.join(PartSeparator);
}

/// Draws an event on three lines: its name and time, and the values below in up to two lines.
class EventList::RowPainter final : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    double scale = 1;

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {host_look::pixels(200, scale), host_look::pixels(68, scale)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const auto px = [this](double length) { return host_look::pixels(length, scale); };
        const QColor colour = index.data(EventListModel::Colour).value<QColor>();
        const QRect inside = option.rect.adjusted(px(12), px(4), -px(8), -px(4));
        painter->save();
        painter->fillRect(QRect(option.rect.topLeft() + QPoint(0, px(4)), QSize(px(4), inside.height())),
                          colour);
        const QRect upper(inside.topLeft(), QSize(inside.width(), px(22)));
        painter->setFont(host_look::font(13, scale));
        painter->setPen(host_look::Muted);
        painter->drawText(upper, Qt::AlignRight | Qt::AlignVCenter,
                          index.data(EventListModel::Time).toString());
        painter->setFont(host_look::font(15, scale, QFont::Bold));
        painter->setPen(colour);
        painter->drawText(upper, Qt::AlignLeft | Qt::AlignVCenter,
                          index.data(EventListModel::Name).toString());
        painter->setFont(host_look::font(13, scale));
        painter->setPen(host_look::Ink);
        const QRect lower = inside.adjusted(0, upper.height(), 0, 0);
        painter->drawText(lower, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                          index.data(EventListModel::Details).toString());
        painter->restore();
    }
};

EventList::EventList(const ShopCatalogues& catalogues, QWidget* parent)
    : QWidget(parent), model_(catalogues), painter_(new RowPainter(this)), pages_(new QStackedWidget),
      empty_(new QLabel), list_(new QListView) {
    empty_->setObjectName("Empty");
    empty_->setWordWrap(true);
    empty_->setAlignment(Qt::AlignCenter);
    list_->setModel(&model_);
    list_->setItemDelegate(painter_);
    list_->setSelectionMode(QAbstractItemView::NoSelection);
    list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QScroller::grabGesture(list_->viewport());
    pages_->addWidget(empty_);
    pages_->addWidget(list_);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(pages_);
}

void EventList::add(const ReceivedEvent& event) {
    model_.add(event);
    pages_->setCurrentWidget(list_);
    list_->scrollToTop();
}

void EventList::setLanguage(std::int32_t id) {
    model_.setLanguage(id);
    empty_->setText(caption(Caption::NoEvents, id));
    list_->setAccessibleName(caption(Caption::Events, id));
}

void EventList::setScale(double scale) {
    painter_->scale = scale;
    list_->doItemsLayout();
}

} // namespace kova
