#include <QApplication>

#include <gtest/gtest.h>

// The scale is that of the whole process, and its surroundings say which: QT_SCALE_FACTOR.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
