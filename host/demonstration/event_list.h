#pragma once
#include "demonstration/point_of_sale.h"

#include <QAbstractListModel>
#include <QWidget>

#include <deque>

class QLabel;
class QListView;
class QStackedWidget;

namespace kova {

/// The events as they arrived, newest first; the last 500.
class EventListModel final : public QAbstractListModel {
  public:
    enum Role { Time = Qt::UserRole, Name, Details, Colour };

    /// The catalogues outlive the model.
    explicit EventListModel(const ShopCatalogues& catalogues) : catalogues_(catalogues) {}
    void add(const ReceivedEvent& event);
    void setLanguage(std::int32_t id);
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

  private:
    [[nodiscard]] QString details(const ReceivedEvent& event) const;
    [[nodiscard]] QString movementText(const Movement& movement) const;
    const ShopCatalogues& catalogues_;
    std::deque<ReceivedEvent> events_;
    std::int32_t languageId_ = 0;
};

/// The list on the window, with a sentence in its place until the first event comes.
class EventList final : public QWidget {
  public:
    explicit EventList(const ShopCatalogues& catalogues, QWidget* parent = nullptr);
    void add(const ReceivedEvent& event);
    void setLanguage(std::int32_t id);
    void setScale(double scale);

  private:
    class RowPainter;
    EventListModel model_;
    RowPainter* painter_; ///< owned by this widget, like those below
    QStackedWidget* pages_;
    QLabel* empty_;
    QListView* list_;
};

} // namespace kova
