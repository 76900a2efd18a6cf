#include <linux/qt/StripAccessible.h>

#include <linux/qt/StripCellAccessible.h>
#include <linux/qt/StripWidget.h>

#include <algorithm>

namespace orrivane {

namespace {

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* strip = dynamic_cast<StripWidget*>(object);
    return strip ? new StripAccessible(*strip) : nullptr;
}

// Null while no assistive program listens: nothing is made for nobody.
StripAccessible* listened(StripWidget& strip) {
    if (!QAccessible::isActive())
        return nullptr;
    return dynamic_cast<StripAccessible*>(QAccessible::queryAccessibleInterface(&strip));
}

void announce(QAccessibleInterface* interface, QAccessible::Event kind) {
    QAccessibleEvent event(interface, kind);
    QAccessible::updateAccessibility(&event);
}

} // namespace

StripAccessible::StripAccessible(StripWidget& strip)
    : QAccessibleWidget(&strip, QAccessible::Pane, QStringLiteral("Orrivane")) {}

StripAccessible::~StripAccessible() {
    for (const auto& [id, child] : children_)
        QAccessible::deleteAccessibleInterface(child);
}

void StripAccessible::install() {
    QAccessible::installFactory(makeAccessible);
}

void StripAccessible::announceRemovals(StripWidget& strip, const std::vector<StripCell>& next) {
    auto* accessible = listened(strip);
    if (!accessible)
        return;
    for (const auto& cell : strip.cells())
        if (std::ranges::find(next, cell.id, &StripCell::id) == next.end())
            accessible->remove(cell.id);
}

void StripAccessible::announceChanges(StripWidget& strip, const std::vector<StripCell>& before) {
    const auto* accessible = listened(strip);
    if (!accessible)
        return;
    for (int i = 0; i < accessible->childCount(); ++i) {
        const auto& cell = strip.cells()[static_cast<std::size_t>(i)];
        const auto old = std::ranges::find(before, cell.id, &StripCell::id);
        auto* child = accessible->child(i);
        if (old == before.end()) {
            announce(child, QAccessible::ObjectCreated);
            continue;
        }
        if (old->accessibleName != cell.accessibleName)
            announce(child, QAccessible::NameChanged);
        if (old->pixels != cell.pixels)
            announce(child, QAccessible::LocationChanged);
    }
}

int StripAccessible::childCount() const {
    return static_cast<int>(strip().cells().size());
}

QAccessibleInterface* StripAccessible::child(int index) const {
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto& id = strip().cells()[static_cast<std::size_t>(index)].id;
    if (const auto found = children_.find(id); found != children_.end())
        return QAccessible::accessibleInterface(found->second);
    auto* made = new StripCellAccessible(strip(), id);
    children_.emplace(id, QAccessible::registerAccessibleInterface(made));
    return made;
}

QAccessibleInterface* StripAccessible::childAt(int x, int y) const {
    const auto* cell = strip().cellAt(strip().mapFromGlobal(QPointF(x, y)));
    return cell ? child(static_cast<int>(cell - strip().cells().data())) : nullptr;
}

int StripAccessible::indexOfChild(const QAccessibleInterface* child) const {
    const auto* cell = dynamic_cast<const StripCellAccessible*>(child);
    if (!cell)
        return -1;
    const auto found = std::ranges::find(strip().cells(), cell->id(), &StripCell::id);
    return found == strip().cells().end() ? -1 : static_cast<int>(found - strip().cells().begin());
}

StripWidget& StripAccessible::strip() const {
    return *static_cast<StripWidget*>(widget());
}

void StripAccessible::remove(const CellId& id) {
    const auto found = children_.find(id);
    if (found == children_.end())
        return;
    announce(QAccessible::accessibleInterface(found->second), QAccessible::ObjectDestroyed);
    QAccessible::deleteAccessibleInterface(found->second);
    children_.erase(found);
}

} // namespace orrivane
