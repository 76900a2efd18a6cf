#include "NotchedDesktop.h"
#include "WaitFor.h"

#include <csignal>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

namespace orrivane::e2e {
namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String settings("org.freedesktop.portal.Settings");

QVariant unwrapped(const QVariant& value) {
    return value.value<QDBusVariant>().variant();
}

/// A desktop and a program of its own on its session bus.
class Portal {
  public:
    explicit Portal(std::vector<std::string> arguments = {})
        : desktop_([&arguments] {
            arguments.insert(arguments.end(), {"--items", "none", "--no-windows"});
            return arguments;
        }())
        , bus_(QDBusConnection::connectToBus(
              QString::fromStdString(desktop_.environment().at("DBUS_SESSION_BUS_ADDRESS")),
              "portal-test")) {}
    Portal(const Portal&) = delete;
    Portal& operator=(const Portal&) = delete;
    ~Portal() { QDBusConnection::disconnectFromBus("portal-test"); }

    QDBusMessage call(const QString& method, const QVariantList& arguments,
                      const QString& interface = settings) {
        auto message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setArguments(arguments);
        message.setAutoStartService(false);
        return bus_.call(message, QDBus::Block, 10'000);
    }
    /// The only value of the reply; invalid when there is another number of them.
    QVariant value(const QString& method, const QVariantList& arguments,
                   const QString& interface = settings) {
        const auto reply = call(method, arguments, interface);
        EXPECT_EQ(reply.errorMessage().toStdString(), "");
        return reply.arguments().size() == 1 ? reply.arguments().front() : QVariant();
    }
    QVariant scheme() {
        return unwrapped(value("ReadOne", {"org.freedesktop.appearance", "color-scheme"}));
    }
    std::string all(const QStringList& nameSpaces) {
        QMap<QString, QVariantMap> groups;
        value("ReadAll", {nameSpaces}).value<QDBusArgument>() >> groups;
        std::string result;
        for (auto group = groups.begin(); group != groups.end(); ++group)
            for (auto each = group->begin(); each != group->end(); ++each)
                result += group.key().toStdString() + " " + each.key().toStdString() + "=" +
                          each->toString().toStdString();
        return result;
    }
    std::string owner() {
        return QDBusReply<QString>(bus_.interface()->serviceOwner(service)).value().toStdString();
    }
    NotchedDesktop& desktop() { return desktop_; }

  private:
    NotchedDesktop desktop_;
    QDBusConnection bus_;
};

TEST(SettingsPortal, tellsADarkDesktopInEveryWayItCanBeAsked) {
    Portal portal({"--dark"});
    EXPECT_EQ(portal.scheme(), QVariant(1U));
    const auto twice = portal.value("Read", {"org.freedesktop.appearance", "color-scheme"});
    EXPECT_EQ(unwrapped(unwrapped(twice)), QVariant(1U));
    const std::string dark = "org.freedesktop.appearance color-scheme=1";
    EXPECT_EQ(portal.all({}), dark);
    EXPECT_EQ(portal.all({""}), dark);
    EXPECT_EQ(portal.all({"org.freedesktop.*"}), dark);
    EXPECT_EQ(portal.all({"org.gnome.*", "org.freedesktop.appearance"}), dark);
    EXPECT_EQ(portal.all({"org.gnome.*"}), "");
    EXPECT_EQ(portal.all({"org.freedesktop"}), "");
}

TEST(SettingsPortal, tellsALightDesktop) {
    Portal portal;
    EXPECT_EQ(portal.scheme(), QVariant(2U));
    EXPECT_EQ(portal.all({}), "org.freedesktop.appearance color-scheme=2");
}

TEST(SettingsPortal, saysWhatItHasNot) {
    Portal portal;
    const auto error = [&](const QString& method, const QVariantList& arguments) {
        return portal.call(method, arguments).errorName().toStdString();
    };
    const std::string notFound = "org.freedesktop.portal.Error.NotFound";
    EXPECT_EQ(error("Read", {"org.freedesktop.appearance", "accent-color"}), notFound);
    EXPECT_EQ(error("ReadOne", {"org.gnome.desktop.interface", "color-scheme"}), notFound);
    const std::string unknown = "org.freedesktop.DBus.Error.UnknownMethod";
    EXPECT_EQ(error("Read", {"org.freedesktop.appearance"}), unknown);
    EXPECT_EQ(error("Read", {1U, 2U}), unknown);
    EXPECT_EQ(error("ReadAll", {}), unknown);
    EXPECT_EQ(error("Write", {}), unknown);
    EXPECT_EQ(portal.scheme(), QVariant(2U));
}

TEST(SettingsPortal, describesItself) {
    Portal portal;
    const QString properties = "org.freedesktop.DBus.Properties";
    EXPECT_EQ(unwrapped(portal.value("Get", {settings, "version"}, properties)), QVariant(2U));
    QVariantMap all;
    portal.value("GetAll", {settings}, properties).value<QDBusArgument>() >> all;
    EXPECT_EQ(all, (QVariantMap{{"version", 2U}}));
    EXPECT_EQ(portal.call("Get", {settings, "colour"}, properties).type(),
              QDBusMessage::ErrorMessage);
    const auto text =
        portal.value("Introspect", {}, "org.freedesktop.DBus.Introspectable").toString();
    for (const auto* name : {"Read", "ReadOne", "ReadAll", "SettingChanged", "version"})
        EXPECT_TRUE(text.contains(QString("name=\"%1\"").arg(name))) << name;
}

TEST(SettingsPortal, isBackWithTheBarThatOffersIt) {
    Portal portal({"--dark"});
    const auto before = portal.owner();
    ASSERT_NE(before, "");
    kill(portal.desktop().processesOf("ControlCenter").at(0), SIGKILL);
    ASSERT_TRUE(waitFor("another portal", [&] {
        const auto now = portal.owner();
        return !now.empty() && now != before;
    }));
    EXPECT_EQ(portal.scheme(), QVariant(1U));
}

} // namespace
} // namespace orrivane::e2e

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
