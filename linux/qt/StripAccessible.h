#pragma once

#include <linux/qt/StripLayout.h>

#include <QAccessibleWidget>

#include <map>
#include <vector>

namespace orrivane {

class StripWidget;
struct StripCell;

/// The strip as the screen reader sees it: a panel with a button for each cell.
class StripAccessible : public QAccessibleWidget {
  public:
    explicit StripAccessible(StripWidget& strip);
    ~StripAccessible() override;

    /// Lets the toolkit find this class for strips. Any number of times.
    static void install();
    /// Tells assistive programs, if there are any, which cells are about to go, and afterwards what
    /// came, moved and changed its name.
    static void announceRemovals(StripWidget& strip, const std::vector<StripCell>& next);
    static void announceChanges(StripWidget& strip, const std::vector<StripCell>& before);

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;

  private:
    [[nodiscard]] StripWidget& strip() const;
    void remove(const CellId& id);

    mutable std::map<CellId, QAccessible::Id> children_;
};

} // namespace orrivane
