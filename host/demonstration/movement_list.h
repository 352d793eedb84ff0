#pragma once
#include "shop/shop_rows.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <optional>
#include <vector>

class QLabel;
class QStackedWidget;
class QTableView;

namespace kova {

/// The rows of the shop's movements, in the order given.
class MovementListModel final : public QAbstractTableModel {
  public:
    enum Column { Moment, Activity, Payment, Direction, Amount, Currency, Note, Drawer, Till, Operator };
    static constexpr int ColumnCount = Operator + 1;

    void setMovements(const std::vector<ListedMovement>& movements);
    void setLanguage(std::int32_t id);
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    struct Row {
        std::vector<QString> texts; ///< by column; that of the direction is empty
        std::optional<bool> incoming;
    };
    static Row rowOf(const ListedMovement& movement);
    [[nodiscard]] QString text(const Row& row, int column) const;
    std::vector<Row> rows_;
    std::int32_t languageId_ = 0;
};

/// The table on the window; a sentence takes its place while there are no rows.
class MovementList final : public QWidget {
  public:
    explicit MovementList(QWidget* parent = nullptr);
    void setMovements(const std::vector<ListedMovement>& movements);
    void setLanguage(std::int32_t id);
    void setScale(double scale);

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void layOutColumns();
    MovementListModel model_;
    QStackedWidget* pages_; ///< owned by this widget, like those below
    QLabel* empty_;
    QTableView* table_;
};

} // namespace kova
