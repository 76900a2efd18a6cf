#pragma once

#include <QImage>
#include <QSize>

namespace orrivane::desktop {

/// The picture behind the windows: hills before an evening sky.
class Wallpaper {
  public:
    static constexpr int count = 3;

    /// `number` picks the colours: 0 to count - 1.
    Wallpaper(bool dark, int number);

    [[nodiscard]] QImage paint(QSize size) const;
    /// Makes it the root window's background, for as long as no other takes its place: it stays
    /// when this process ends. Does nothing where the same picture shows already.
    void install(QSize size) const;
    /// The number of the picture that shows; 0 when none of these does.
    static int shownNumber();

  private:
    bool dark_;
    int number_;
};

} // namespace orrivane::desktop
