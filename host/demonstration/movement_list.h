#pragma once
#include "library/kova_drawer_man.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <optional>
#include <vector>

class QLabel;
class QStackedWidget;
class QTableView;

namespace kova {

/// The rows stored in the host's movement table, in the order of the recordset given.
class MovementListModel final : public QAbstractTableModel {
  public:
    enum Column { Moment, Activity, Payment, Direction, Amount, Currency, Note, Drawer, Till, Operator };
    static constexpr int ColumnCount = Operator + 1;

    /// The fields are those of the columns, in their order; Direction is the coefficient.
    void setMovements(Recordset movements);
    void setLanguage(std::int32_t id);
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    struct Row {
        std::vector<QString> texts;   ///< by column; that of the direction is empty
        std::optional<bool> incoming; ///< nothing when the coefficient is Null
    };
    [[nodiscard]] Row readRow(const Recordset& movements) const;
    [[nodiscard]] QString text(const Row& row, int column) const;
    RegionalSettings regional_ = regionalSettings();
    std::vector<Row> rows_;
    std::int32_t languageId_ = 0;
};

/// The table on the window; a sentence takes its place while there are no rows.
class MovementList final : public QWidget {
  public:
    explicit MovementList(QWidget* parent = nullptr);
    void setMovements(Recordset movements);
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
