#include <Orrivane/MenuBarIcon.h>
#include <linux/qt/DrawingPainter.h>
#include <packaging/ScalableIcon.h>

#include <QColor>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>

#include <algorithm>
#include <cstdio>

// Draws the program's icons into a folder, as an icon theme lays them out. The figure is the one of
// its status item, in the colour that its windows' icon has.

namespace {

using orrivane::Drawing;

constexpr QRgb ink = 0xff3d6fd8;

QImage iconOf(const Drawing& figure, int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const double scale = side / std::max(figure.size.width, figure.size.height);
    const QSize size(qRound(figure.size.width * scale), qRound(figure.size.height * scale));
    const QRect place(QPoint((side - size.width()) / 2, (side - size.height()) / 2), size);
    const auto palette = QGuiApplication::palette();
    QPainter painter(&image);
    orrivane::DrawingPainter(painter, palette).draw(figure, place);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), QColor::fromRgb(ink));
    painter.end();
    return image;
}

QString folderOf(const QString& theme, const QString& size) {
    const QString folder = theme + '/' + size + "/apps";
    return QDir().mkpath(folder) ? folder : QString();
}

bool saveScalable(const QString& theme, const Drawing& figure) {
    const auto text = orrivane::scalableIcon(figure, QColor::fromRgb(ink).name().toStdString());
    QFile file(folderOf(theme, "scalable") + "/orrivane.svg");
    return text && file.open(QIODevice::WriteOnly) &&
           file.write(text->data(), static_cast<qint64>(text->size())) ==
               static_cast<qint64>(text->size()) &&
           file.flush();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("Usage: orrivane_make_icons FOLDER\n", stderr);
        return 2;
    }
    const QString theme = QFile::decodeName(argv[1]);
    const auto figure = orrivane::MenuBarIcon::image();
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const auto folder = folderOf(theme, QStringLiteral("%1x%1").arg(side));
        if (!iconOf(figure, side).save(folder + "/orrivane.png", "PNG")) {
            std::fprintf(stderr, "The icon of %d pixels cannot be written below %s.\n", side,
                         argv[1]);
            return 1;
        }
    }
    if (!saveScalable(theme, figure)) {
        std::fprintf(stderr, "The scalable icon cannot be written below %s.\n", argv[1]);
        return 1;
    }
    return 0;
}
