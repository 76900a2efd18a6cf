#include <QFile>
#include <QMap>
#include <QString>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

namespace orrivane {
namespace {

struct PropertyList {
    QMap<QString, QString> values; ///< a Boolean is "true" or "false"
    QString problem;               ///< empty: well formed, one dictionary of keys and values
};

PropertyList read(const QString& path) {
    PropertyList list;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, path + " cannot be read"};
    QXmlStreamReader reader(&file);
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("plist") ||
        !reader.readNextStartElement() || reader.name() != QLatin1String("dict"))
        return {{}, "it is no property list of one dictionary"};
    while (reader.readNextStartElement()) {
        if (reader.name() != QLatin1String("key"))
            return {{}, "a value without a key: " + reader.name().toString()};
        const QString key = reader.readElementText();
        if (list.values.contains(key))
            return {{}, key + " stands there twice"};
        if (!reader.readNextStartElement())
            return {{}, key + " has no value"};
        const QString kind = reader.name().toString();
        const QString text = reader.readElementText();
        list.values[key] = kind == QLatin1String("string") ? text : kind;
    }
    reader.readNextStartElement();
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        list.problem = reader.errorString();
    return list;
}

TEST(BundleFiles, TheInformationListMakesAnAccessoryOfThisVersion) {
    const auto list = read(BUILT_FILES "/Info.plist");
    ASSERT_EQ(list.problem, QString());
    const QMap<QString, QString> expected{
        {"CFBundleDevelopmentRegion", "en"},
        {"CFBundleExecutable", "Orrivane"},
        {"CFBundleIconFile", "Orrivane"},
        {"CFBundleIdentifier", "io.github.orrivane.Orrivane"},
        {"CFBundleInfoDictionaryVersion", "6.0"},
        {"CFBundleName", "Orrivane"},
        {"CFBundlePackageType", "APPL"},
        {"CFBundleShortVersionString", PROJECT_VERSION},
        {"CFBundleVersion", PROJECT_VERSION},
        {"LSMinimumSystemVersion", "14.0"},
        {"LSUIElement", "true"},
        {"NSHighResolutionCapable", "true"},
        {"NSPrincipalClass", "NSApplication"},
    };
    EXPECT_EQ(list.values, expected);
}

TEST(BundleFiles, FeedAndKeyGoInWithTheUpdateFrameworkWhateverCharactersTheyHave) {
    auto list = read(BUILT_FILES "/InfoWithSparkle.plist");
    ASSERT_EQ(list.problem, QString());
    EXPECT_EQ(list.values.take("SUFeedURL"),
              QString("https://example.org/feed?channel=<stable>&arch=arm64"));
    EXPECT_EQ(list.values.take("SUPublicEDKey"), QString("aBc+/0123="));
    EXPECT_EQ(list.values, read(BUILT_FILES "/Info.plist").values);
}

TEST(BundleFiles, TheEntitlementsOfAnUnsignedBuildLiftLibraryValidationAlone) {
    const auto list = read(BUNDLE_FILES "/AdHoc.entitlements");
    ASSERT_EQ(list.problem, QString());
    const QMap<QString, QString> expected{
        {"com.apple.security.cs.disable-library-validation", "true"}};
    EXPECT_EQ(list.values, expected);
}

} // namespace
} // namespace orrivane
