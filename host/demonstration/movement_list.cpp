#include "demonstration/movement_list.h"

#include "demonstration/look.h"
#include "demonstration/texts.h"

#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QScroller>
#include <QStackedWidget>
#include <QTableView>
#include <QVBoxLayout>

#include <array>
#include <numeric>

namespace kova {
namespace {

struct ColumnShape {
    Caption caption;
    double share; ///< of the table's width, over the sum of all
    Qt::Alignment alignment;
};

constexpr Qt::Alignment Left = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment Right = Qt::AlignRight | Qt::AlignVCenter;
constexpr Qt::Alignment Middle = Qt::AlignHCenter | Qt::AlignVCenter;

constexpr std::array<ColumnShape, MovementListModel::ColumnCount> Shapes{{
    {Caption::ColumnMoment, 165, Left},
    {Caption::ColumnActivity, 160, Left},
    {Caption::ColumnPayment, 105, Left},
    {Caption::ColumnDirection, 68, Left},
    {Caption::ColumnAmount, 84, Right},
    {Caption::ColumnCurrency, 74, Middle},
    {Caption::ColumnNote, 140, Left},
    {Caption::ColumnDrawer, 76, Middle},
    {Caption::ColumnTill, 54, Middle},
    {Caption::ColumnOperator, 125, Left},
}};

const ColumnShape& shape(int column) {
    return Shapes.at(static_cast<std::size_t>(column));
}

} // namespace

MovementListModel::Row MovementListModel::rowOf(const ListedMovement& movement) {
    const auto text = [](const std::string& utf8) { return QString::fromStdString(utf8).simplified(); };
    Row row{std::vector<QString>(ColumnCount), movement.incoming};
    const auto at = [&](Column column) -> QString& { return row.texts[column]; };
    at(Moment) = text(movement.moment);
    at(Activity) = text(movement.activity);
    at(Payment) = text(movement.payment);
    at(Amount) = movement.amount ? amountText(*movement.amount) : QString();
    at(Currency) = text(movement.currency);
    at(Note) = text(movement.note);
    at(Drawer) = movement.drawer == "0" ? QStringLiteral("\u2013") : text(movement.drawer); // none was chosen
    at(Till) = text(movement.till);
    at(Operator) = text(movement.user);
    return row;
}

void MovementListModel::setMovements(const std::vector<ListedMovement>& movements) {
    std::vector<Row> rows;
    rows.reserve(movements.size());
    for (const ListedMovement& movement : movements)
        rows.push_back(rowOf(movement));
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

void MovementListModel::setLanguage(std::int32_t id) {
    languageId_ = id;
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    if (!rows_.empty())
        emit dataChanged(index(0, Direction), index(rowCount() - 1, Direction));
}

int MovementListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int MovementListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QString MovementListModel::text(const Row& row, int column) const {
    if (column != Direction)
        return row.texts[static_cast<std::size_t>(column)];
    if (!row.incoming)
        return {};
    return caption(*row.incoming ? Caption::Incoming : Caption::Outgoing, languageId_);
}

QVariant MovementListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    const bool money = index.column() == Direction || index.column() == Amount;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: // for what does not fit
        return text(row, index.column());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(shape(index.column()).alignment);
    case Qt::ForegroundRole:
        if (money && row.incoming)
            return *row.incoming ? host_look::Incoming : host_look::Outgoing;
        return host_look::Ink;
    default:
        return {};
    }
}

QVariant MovementListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::DisplayRole)
        return caption(shape(section).caption, languageId_);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(shape(section).alignment);
    return {};
}

MovementList::MovementList(QWidget* parent)
    : QWidget(parent), pages_(new QStackedWidget), empty_(new QLabel), table_(new QTableView) {
    empty_->setObjectName("Empty");
    empty_->setAlignment(Qt::AlignCenter);
    table_->setModel(&model_);
    table_->setShowGrid(false);
    table_->setAlternatingRowColors(true);
    table_->setWordWrap(false);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setTabKeyNavigation(false); // the tabulator key leaves the table
    table_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    QScroller::grabGesture(table_->viewport());
    pages_->addWidget(empty_);
    pages_->addWidget(table_);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(pages_);
}

void MovementList::setMovements(const std::vector<ListedMovement>& movements) {
    model_.setMovements(movements);
    pages_->setCurrentIndex(model_.rowCount() == 0 ? 0 : 1);
    table_->scrollToTop();
    layOutColumns();
}

void MovementList::setLanguage(std::int32_t id) {
    model_.setLanguage(id);
    empty_->setText(caption(Caption::NoMovements, id));
    table_->setAccessibleName(caption(Caption::Movements, id));
}

void MovementList::setScale(double scale) {
    table_->verticalHeader()->setMinimumSectionSize(1);
    table_->verticalHeader()->setDefaultSectionSize(host_look::pixels(36, scale));
    table_->horizontalHeader()->setFixedHeight(host_look::pixels(34, scale));
    layOutColumns();
}

void MovementList::resizeEvent(QResizeEvent*) {
    layOutColumns();
}

void MovementList::layOutColumns() {
    const double whole = std::accumulate(Shapes.begin(), Shapes.end(), 0.0,
                                         [](double sum, const auto& one) { return sum + one.share; });
    const int room = table_->width() - table_->verticalScrollBar()->sizeHint().width();
    for (int column = 0; column < MovementListModel::ColumnCount; ++column)
        table_->setColumnWidth(column, static_cast<int>(room * shape(column).share / whole));
}

} // namespace kova
