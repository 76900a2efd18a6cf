#include "ProgramOnDesktop.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <algorithm>

namespace orrivane::e2e {
namespace {

const QString watcherName = "org.kde.StatusNotifierWatcher";
const QString itemInterface = "org.kde.StatusNotifierItem";

/// A panel that shows icons over D-Bus: applications that find one make no tray windows.
class Watcher : public QDBusVirtualObject {
  public:
    explicit Watcher(const std::string& address)
        : bus_(QDBusConnection::connectToBus(QString::fromStdString(address), "watcher")) {
        bus_.registerVirtualObject("/StatusNotifierWatcher", this);
        bus_.registerService(watcherName);
    }
    ~Watcher() override { QDBusConnection::disconnectFromBus("watcher"); }

    [[nodiscard]] bool isReady() const { return bus_.isConnected(); }
    /// Bus names of the icons that were registered.
    [[nodiscard]] const QStringList& items() const { return items_; }
    /// As a click on the icon at this place of the screen.
    void activate(const QString& item, int x, int y) {
        auto call =
            QDBusMessage::createMethodCall(item, "/StatusNotifierItem", itemInterface, "Activate");
        call << x << y;
        bus_.send(call);
    }

    // Toolkits ask only for what is described here.
    [[nodiscard]] QString introspect(const QString&) const override {
        return "<interface name=\"org.kde.StatusNotifierWatcher\">"
               "<property name=\"IsStatusNotifierHostRegistered\" type=\"b\" access=\"read\"/>"
               "<property name=\"ProtocolVersion\" type=\"i\" access=\"read\"/>"
               "<method name=\"RegisterStatusNotifierItem\">"
               "<arg type=\"s\" direction=\"in\"/></method></interface>";
    }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        if (message.member() == "RegisterStatusNotifierItem") {
            const auto name = message.arguments().value(0).toString();
            items_.push_back(name.startsWith('/') ? message.service() : name);
            return bus.send(message.createReply());
        }
        if (message.member() == "Get")
            return bus.send(message.createReply(
                QVariant::fromValue(QDBusVariant(property(message.arguments().value(1))))));
        if (message.member() == "GetAll")
            return bus.send(message.createReply(
                QVariantMap{{"IsStatusNotifierHostRegistered", true}, {"ProtocolVersion", 0}}));
        return false;
    }

  private:
    [[nodiscard]] static QVariant property(const QVariant& name) {
        if (name.toString() == "IsStatusNotifierHostRegistered")
            return true;
        return 0;
    }

    QDBusConnection bus_;
    QStringList items_;
};

class OwnIconOverDBus : public ProgramOnDesktop {};

TEST_F(OwnIconOverDBus, hasNoWindowIsNeverMirroredAndOpensThePopoverUnderThePointer) {
    startDesktop({"--no-windows", "--panel", "16"});
    Watcher watcher(desktop_->environment().at("DBUS_SESSION_BUS_ADDRESS"));
    ASSERT_TRUE(watcher.isReady());
    const auto before = desktop_->icons().size();
    startProgram();
    // The panel answers only while this process turns its loop.
    const auto comesTrue = [](const std::string& what, const std::function<bool()>& holds) {
        return waitFor(what, [&] {
            QCoreApplication::processEvents();
            return holds();
        });
    };
    ASSERT_TRUE(comesTrue("it offers its icon", [&] { return !watcher.items().isEmpty(); }))
        << program_->log();
    const auto strip = [&]() -> std::optional<WindowState> {
        for (const auto& each : observer().topLevels())
            if (windows().own(each) && each.overrideRedirect &&
                each.area.right() == observer().cutouts().at(0).x - 6)
                return each;
        return std::nullopt;
    };
    ASSERT_TRUE(comesTrue("the hidden icons are mirrored", [&] { return strip().has_value(); }));
    int hidden = 0;
    for (const auto& icon : desktop_->icons()) {
        EXPECT_FALSE(windows().own(icon));
        if (icon.area.x < observer().cutouts().at(0).right() &&
            icon.area.right() > observer().cutouts().at(0).x)
            hidden += icon.area.width;
    }
    EXPECT_EQ(strip()->area.width, hidden);
    EXPECT_EQ(desktop_->icons().size(), before);

    const auto screen = observer().imageOfRoot();
    const PixelPoint place{screen.width - 40, 18};
    observer().movePointer(place);
    watcher.activate(watcher.items().front(), place.x, place.y);
    std::optional<WindowState> popover;
    ASSERT_TRUE(comesTrue("the popover opens", [&] {
        popover = windows().large(300, 300);
        return popover.has_value();
    }));
    EXPECT_GE(popover->area.x, 0);
    EXPECT_LE(popover->area.right(), screen.width);
    EXPECT_GE(popover->area.y, place.y);
    EXPECT_LE(popover->area.bottom(), screen.height);
    EXPECT_GT(popover->area.right(), screen.width - 60) << "under the pointer";
}

} // namespace
} // namespace orrivane::e2e
