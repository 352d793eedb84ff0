#include "adapters/qt/control_view.h"

#include "adapters/qt/window_frame.h"
#include "screen/spoken_name.h"
#include "widgets/captioned_controls.h"
#include "widgets/tab_control.h"

#include <QPainter>
#include <QWidget>

#include <cmath>
#include <utility>

namespace kova {
namespace {

class BackgroundOf : public ControlVisitor {
  public:
    void visit(Window& window) override { color = look::toQt(window.backColor()); }
    void visit(TabPage& page) override { color = look::toQt(page.backColor()); }
    void visit(GroupFrame& frame) override { color = look::toQt(frame.backColor()); }
    std::optional<QColor> color;
};

/// What is painted behind a control: the background of the frame, page or window that it stands on.
QColor backdropOf(const Control& control) {
    BackgroundOf background;
    for (Control* parent = control.parent(); parent != nullptr && !background.color;
         parent = parent->parent())
        parent->accept(background);
    return background.color.value_or(palette::Paper);
}

} // namespace

ControlView::ControlView(Control& control, WindowFrame& frame) : control_(&control), frame_(frame) {
    changed_ = control.changed.connect([this](Property property) { showProperty(property); });
    needChanged_ = control.needChanged.connect([this] { showNeed(); });
}

void ControlView::detach() {
    changed_.disconnect();
    needChanged_.disconnect();
    control_ = nullptr;
}

const Scale& ControlView::scale() const {
    return frame_.scale();
}

const Wording& ControlView::words() const {
    return frame_.words();
}

void ControlView::paintBoard(QPainter& painter, Color color, double radius) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look::toQt(color));
    painter.drawRoundedRect(widget().rect(), pixels(radius), pixels(radius));
}

int ControlView::pixels(double design) const {
    return static_cast<int>(std::lround(design * scale().smaller()));
}

QColor ControlView::backdrop() const {
    return control_ != nullptr ? backdropOf(*control_) : palette::Paper;
}

void ControlView::run(const std::function<void()>& handler) const {
    frame_.loop().runHandler(handler);
}

void ControlView::nameWidget() {
    QString name = QString::fromStdString(control_->name());
    if (const auto index = control_->index())
        name += QString("_%1").arg(*index);
    widget().setObjectName(name);
    updateSpokenName();
}

void ControlView::updateSpokenName() {
    if (control_ == nullptr)
        return;
    describeNeed();
    const QString name = QString::fromStdString(spokenNameOf(*control_, frame_.words()));
    if (name != widget().accessibleName())
        showSpokenName(name);
}

// Titles have a mark, which is for the eye; the fields themselves say it.
void ControlView::describeNeed() {
    if (control_ == nullptr || widget().focusPolicy() == Qt::NoFocus)
        return;
    QString said = described_;
    if (control_->need() != Need::None)
        said += (said.isEmpty() ? "" : ", ") + QString::fromStdString(frame_.words()(Word::Missing));
    if (said != widget().accessibleDescription())
        widget().setAccessibleDescription(said);
}

void ControlView::describe(const QString& description) {
    described_ = description;
    describeNeed();
}

void ControlView::showSpokenName(const QString& name) {
    widget().setAccessibleName(name);
}

// What is missing is seen at the title; the field itself only shows that it was refused.
void ControlView::showNeed() {
    describeNeed();
    const bool refused = control_->need() == Need::Refused;
    if (std::exchange(showsRefused_, refused) != refused)
        widget().update();
}

void ControlView::layOut() {
    widget().setGeometry(frame_.pixels(*control_));
}

bool ControlView::drawnEnabled() const {
    return control_->enabled();
}

bool ControlView::drawnVisible() const {
    return control_->visible();
}

void ControlView::showAll() {
    if (control_ == nullptr)
        return;
    layOut();
    showProperty(Property::Enabled);
    showProperty(Property::Visible);
}

void ControlView::showProperty(Property property) {
    switch (property) {
    case Property::Visible:
        widget().setVisible(drawnVisible());
        frame_.followFocus();
        frame_.neighbourMoved();
        break;
    case Property::Enabled:
        widget().setEnabled(drawnEnabled());
        frame_.followFocus();
        break;
    case Property::Bounds:
        layOut();
        frame_.neighbourMoved();
        break;
    case Property::SpokenName:
        updateSpokenName();
        break;
    case Property::ZOrder:
        widget().raise();
        break;
    default:
        break;
    }
    widget().update();
}

} // namespace kova
