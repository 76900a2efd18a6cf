#include <linux/qt/StripCellAccessible.h>

#include <linux/qt/StripWidget.h>

namespace orrivane {

StripCellAccessible::StripCellAccessible(StripWidget& strip, const CellId& id)
    : widget_(&strip)
    , strip_(&strip)
    , id_(id) {}

bool StripCellAccessible::isValid() const {
    return widget_ && strip_->cell(id_) != nullptr;
}

QWindow* StripCellAccessible::window() const {
    return widget_ ? widget_->windowHandle() : nullptr;
}

QAccessibleInterface* StripCellAccessible::parent() const {
    return widget_ ? QAccessible::queryAccessibleInterface(widget_) : nullptr;
}

QString StripCellAccessible::text(QAccessible::Text kind) const {
    const auto* cell = widget_ ? strip_->cell(id_) : nullptr;
    if (!cell)
        return {};
    if (kind == QAccessible::Name)
        return QString::fromStdString(cell->accessibleName);
    if (kind == QAccessible::Description && cell->tooltip != cell->accessibleName)
        return QString::fromStdString(cell->tooltip);
    return {};
}

QRect StripCellAccessible::rect() const {
    const auto* cell = widget_ ? strip_->cell(id_) : nullptr;
    if (!cell)
        return {};
    const auto local = strip_->toolkitRect(cell->pixels);
    return {strip_->mapToGlobal(local.topLeft()), local.size()};
}

QAccessible::State StripCellAccessible::state() const {
    QAccessible::State state;
    state.invalid = !isValid();
    state.invisible = !widget_ || !widget_->isVisible();
    return state;
}

void* StripCellAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
}

QStringList StripCellAccessible::actionNames() const {
    const auto* cell = widget_ ? strip_->cell(id_) : nullptr;
    if (!cell)
        return {};
    QStringList names{pressAction()};
    if (cell->secondaryAction)
        names << showMenuAction();
    return names;
}

void StripCellAccessible::doAction(const QString& name) {
    if (!isValid())
        return;
    if (name == pressAction())
        strip_->activate(id_, Qt::LeftButton);
    else if (name == showMenuAction())
        strip_->activate(id_, Qt::RightButton);
}

} // namespace orrivane
