#pragma once

#include <QGroupBox>

namespace orrivane {

/// A heading over a card. The toolkit's own box, for its role and name, drawn our way.
class GroupBoxWidget : public QGroupBox {
  public:
    GroupBoxWidget();

    void setHeading(const QString& heading);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    [[nodiscard]] int cardTop() const;
    void reserveHeading();
};

} // namespace orrivane
