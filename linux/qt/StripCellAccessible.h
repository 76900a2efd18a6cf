#pragma once

#include <linux/qt/StripLayout.h>

#include <QAccessible>
#include <QPointer>

namespace orrivane {

class StripWidget;

/// One cell as an assistive program sees it: a button that can be pressed. Invalid once the cell is
/// gone.
class StripCellAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    StripCellAccessible(StripWidget& strip, const CellId& id);

    [[nodiscard]] const CellId& id() const { return id_; }

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Button; }
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    QPointer<QWidget> widget_;
    StripWidget* strip_; // valid as long as widget_ is
    CellId id_;
};

} // namespace orrivane
