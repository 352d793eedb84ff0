#pragma once
#include "adapters/qt/control_view.h"
#include "adapters/qt/panel.h"
#include "adapters/qt/report_grid_painter.h"
#include "adapters/qt/report_grid_tools.h"
#include "widgets/report_grid.h"

#include <QScrollBar>
#include <QTimer>
#include <QWidget>

namespace kova {

class PageNoticeView;

/// The list of movements: group-by area, column headers, rows, sums, and the text of an empty list.
///
/// A touch on a header sorts; a long one, or a drag into the group-by area, groups by that column; the border
/// between two headers moves. A touch on the group-by area ungroups, on a group's header collapses it, on a
/// row selects it; a long touch on the rows, a right click or the button opens a menu. A finger scrolls by
/// dragging. Letters search the list. The list is one stop of the tabulator, and inside it the keys go from
/// the rows, where arrows move, to the search field and the menu's button.
class ReportGridView final : public QWidget, public ModelView<ReportGrid> {
  public:
    ReportGridView(ReportGrid& grid, WindowFrame& frame, QWidget& parent);
    QWidget& widget() override { return *this; }
    QWidget& keyboardWidget() override { return *keyboard_; }
    bool moveFocusInside(bool forward) override;
    void showWords() override;
    void detach() override;
    QAccessibleInterface* makeAccessible() override;

    // For assistive technology.
    using CellPlace = ReportGridPlace;
    [[nodiscard]] const ReportGrid* shownGrid() const { return model(); } ///< null when detached
    [[nodiscard]] QRectF cell(int row, int column) const;                 ///< empty when out of sight
    [[nodiscard]] CellPlace cellAt(const QPointF& point) const;           ///< row -2 for none
    void touchCell(int row, int column, ReportGrid::Extent extent = ReportGrid::Extent::Single);
    /// What the arrow keys have reached; nothing without the focus.
    [[nodiscard]] std::optional<CellPlace> focusedCell() const;
    void focusCell(const CellPlace& place);
    void switchGroup(int column); ///< groups by it, or by none when it did already

  protected:
    void layOut() override;
    void showProperty(Property property) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    /// What a press has become so far. A finger that moves away from where it began drags, and no longer
    /// touches; a long touch is finished before the finger goes up.
    enum class Press { None, Touch, Drag, Finished };
    [[nodiscard]] ReportGridLayout layout() const;
    void measure();
    void fitParts(); ///< the scroll bar and the board, to what is listed
    void showNewest();
    void tellChanged(Property property);
    void onLongTouch();
    void finishTouch(const QPointF& at, ReportGrid::Extent extent);
    void takeFocus();
    void showBoard(bool shown);
    // report_grid_keys.cpp
    bool moveByKey(int key);
    void goTo(int row);
    void tellFocus();
    void useFocused(Qt::KeyboardModifiers keys);
    static ReportGrid::Extent extentOf(Qt::KeyboardModifiers keys);
    // report_grid_menu.cpp
    void openMenu(const QRect& beside); ///< in the window
    void closeMenu();
    void copySelection();
    void saveList();
    void showSaved(const QString& file, const QString& failure);

    QScrollBar scrollBar_{Qt::Vertical, this};
    ReportGridTools* tools_; ///< owned, as the two below, by the page
    SearchBoard* board_;
    QPointer<ChoicePanel> menu_;       ///< null until it is opened; the frame's
    PageNoticeView* notice_ = nullptr; ///< null where the list has none
    QWidget* keyboard_ = this;         ///< the part that the keys go to
    std::vector<double> needs_;        ///< widths of the columns
    QTimer longTouch_;
    Press press_ = Press::None;
    ReportGridTouch touch_;
    QPointF pressedAt_;
    int scrolledFrom_ = 0;
    CellPlace focus_{-1, 0};
    bool focusSeen_ = false; ///< the keys have been used
};

} // namespace kova
