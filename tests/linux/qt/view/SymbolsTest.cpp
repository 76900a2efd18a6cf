#include <linux/qt/view/Symbols.h>

#include "Contrast.h"

#include <tests/linux/qt/support/Canvas.h>

#include <QDir>
#include <QFile>
#include <QIcon>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace orrivane {
namespace {

const std::string names[]{
    "checkmark.circle", "ellipsis.circle", "exclamationmark.triangle", "macwindow",
    "eye.slash",        "arrow.clockwise", "arrow.down.circle.fill"};

struct SymbolsTest : ::testing::Test {
    QString themeBefore = QIcon::themeName();
    QStringList pathsBefore = QIcon::themeSearchPaths();
    QTemporaryDir folder;

    ~SymbolsTest() override {
        QIcon::setThemeSearchPaths(pathsBefore);
        QIcon::setThemeName(themeBefore);
    }
    void haveNoTheme() {
        QIcon::setThemeSearchPaths({folder.path()});
        QIcon::setThemeName("there-is-none");
        QIcon::setFallbackThemeName("there-is-none");
    }
    /// A theme whose symbols are all one full square.
    void haveATheme() {
        const QDir theme(folder.filePath("squares"));
        ASSERT_TRUE(theme.mkpath("16x16/actions"));
        QFile index(theme.filePath("index.theme"));
        ASSERT_TRUE(index.open(QIODevice::WriteOnly));
        index.write("[Icon Theme]\nName=Squares\nDirectories=16x16/actions\n"
                    "[16x16/actions]\nSize=16\nType=Fixed\n");
        QImage square(16, 16, QImage::Format_ARGB32);
        square.fill(Qt::black);
        for (const char* name :
             {"dialog-warning-symbolic", "view-conceal-symbolic", "view-refresh-symbolic"})
            ASSERT_TRUE(square.save(theme.filePath(QString("16x16/actions/%1.png").arg(name))));
        QIcon::setThemeSearchPaths({folder.path()});
        QIcon::setThemeName("squares");
    }
    static QImage shown(const std::string& name, double scale, const QPalette& palette) {
        return symbolPixmap(name, ColorRole::primary, palette, 20, scale).toImage();
    }
};

TEST_F(SymbolsTest, withoutAThemeEveryNamedOneHasAFigureOfItsOwn) {
    haveNoTheme();
    for (const double scale : {1.0, 1.5, 2.0}) {
        const auto unknown = shown("no.such.symbol", scale, lightPalette());
        std::map<std::string, QImage> seen;
        for (const auto& name : names) {
            const auto picture = shown(name, scale, lightPalette());
            EXPECT_EQ(picture.width(), qRound(20 * scale)) << name;
            EXPECT_FALSE(opaqueRect(picture).isEmpty()) << name;
            EXPECT_NE(picture, unknown) << name;
            for (const auto& [other, each] : seen)
                EXPECT_NE(picture, each) << name << " and " << other;
            seen.emplace(name, picture);
        }
    }
}

TEST_F(SymbolsTest, noFigureReachesTheEdgeOfItsCanvas) {
    for (const auto& name : names) {
        const auto picture = drawn(symbolDrawing(name, ColorRole::primary), {80, 80});
        EXPECT_TRUE(QRect(1, 1, 78, 78).contains(opaqueRect(picture))) << name;
    }
}

TEST_F(SymbolsTest, aFigureHasTheColourOfItsRoleInLightAndDark) {
    haveNoTheme();
    for (const auto& palette : {lightPalette(), darkPalette()})
        for (const auto& name : names) {
            const auto picture = shown(name, 2, palette);
            bool found = false;
            for (int y = 0; y < picture.height(); ++y)
                for (int x = 0; x < picture.width(); ++x)
                    found =
                        found || picture.pixelColor(x, y) == palette.color(QPalette::WindowText);
            EXPECT_TRUE(found) << name;
        }
}

TEST_F(SymbolsTest, theThemesOwnSymbolIsUsedInTheGivenColour) {
    haveATheme();
    for (const char* name : {"exclamationmark.triangle", "eye.slash", "arrow.clockwise"}) {
        const auto picture = shown(name, 1, darkPalette());
        EXPECT_EQ(picture.pixelColor(10, 10), darkPalette().color(QPalette::WindowText)) << name;
        EXPECT_EQ(picture.pixelColor(4, 4), darkPalette().color(QPalette::WindowText)) << name;
    }
}

} // namespace
} // namespace orrivane
