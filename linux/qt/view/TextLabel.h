#pragma once

#include <QLabel>

namespace orrivane {

/// Plain text that would like to stand on one line and grows downwards where it cannot. The
/// toolkit's own label proposes several lines of its own accord.
class TextLabel : public QLabel {
  public:
    TextLabel();

    void setWraps(bool wraps);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return wordWrap(); }
};

} // namespace orrivane
