#include "support/StripFixture.h"

#include <QAccessible>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <optional>

namespace orrivane {

namespace {

std::vector<std::string> announced;

void note(QAccessibleEvent* event) {
    const auto* interface = event->accessibleInterface();
    if (!interface || interface->role() != QAccessible::Button)
        return;
    const char* kind = nullptr;
    if (event->type() == QAccessible::ObjectCreated)
        kind = "came ";
    else if (event->type() == QAccessible::ObjectDestroyed)
        kind = "went ";
    else if (event->type() == QAccessible::NameChanged)
        kind = "named ";
    else if (event->type() == QAccessible::LocationChanged)
        kind = "moved ";
    if (kind)
        announced.push_back(kind + interface->text(QAccessible::Name).toStdString());
}

class StripAccessibleTest : public StripFixture {
  protected:
    void SetUp() override {
        StripFixture::SetUp();
        ASSERT_TRUE(pumpUntil([] { return QAccessible::isActive(); }));
        QAccessible::installUpdateHandler(note);
        stage.pixelsAPoint = strip().devicePixelRatioF();
        show(row({cell(1, 22, "A"), cell(2, 30, "B")}));
        announced.clear();
    }
    void TearDown() override { QAccessible::installUpdateHandler(nullptr); }
    QAccessibleInterface* root() { return QAccessible::queryAccessibleInterface(&strip()); }
    QAccessibleInterface* child(int index) { return root()->child(index); }
    static QStringList names(QAccessibleInterface* parent) {
        QStringList names;
        for (int i = 0; i < parent->childCount(); ++i)
            names << parent->child(i)->text(QAccessible::Name);
        return names;
    }
};

// What another process finds on the accessibility bus.
class Bus {
  public:
    struct Element {
        QString service;
        QString path;
    };
    Bus()
        : bus_(QDBusConnection::connectToBus(
              qEnvironmentVariable("ORRIVANE_TEST_ACCESSIBILITY_BUS"), "reader")) {}
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;
    ~Bus() { QDBusConnection::disconnectFromBus("reader"); }

    // The program under test answers from this very thread, so nothing here may block.
    QDBusMessage call(const Element& element, const char* interface, const char* method,
                      const QVariantList& arguments = {}) {
        auto message = QDBusMessage::createMethodCall(
            element.service, element.path, QLatin1String(interface), QLatin1String(method));
        message.setArguments(arguments);
        const auto pending = bus_.asyncCall(message);
        pumpUntil([&] { return pending.isFinished(); });
        return pending.reply();
    }
    std::vector<Element> children(const Element& element) {
        const auto reply = call(element, "org.a11y.atspi.Accessible", "GetChildren");
        std::vector<Element> found;
        if (reply.signature() != "a(so)")
            return found;
        const auto argument = reply.arguments().front().value<QDBusArgument>();
        argument.beginArray();
        while (!argument.atEnd()) {
            QString service;
            QDBusObjectPath path;
            argument.beginStructure();
            argument >> service >> path;
            argument.endStructure();
            found.push_back({service, path.path()});
        }
        argument.endArray();
        return found;
    }
    QString name(const Element& element) {
        const auto reply = call(element, "org.freedesktop.DBus.Properties", "Get",
                                {"org.a11y.atspi.Accessible", "Name"});
        return reply.arguments().value(0).value<QDBusVariant>().variant().toString();
    }
    uint role(const Element& element) {
        return call(element, "org.a11y.atspi.Accessible", "GetRole").arguments().value(0).toUInt();
    }
    // This program's own root, as the toolkit offers it.
    std::optional<Element> program() {
        const Element daemon{"org.freedesktop.DBus", "/org/freedesktop/DBus"};
        const auto names = call(daemon, "org.freedesktop.DBus", "ListNames");
        for (const auto& service : names.arguments().value(0).toStringList()) {
            const auto process =
                call(daemon, "org.freedesktop.DBus", "GetConnectionUnixProcessID", {service});
            if (service.startsWith(':') && service != bus_.baseService() &&
                process.arguments().value(0).toLongLong() == QCoreApplication::applicationPid())
                return Element{service, "/org/a11y/atspi/accessible/root"};
        }
        return std::nullopt;
    }
    std::optional<Element> child(const Element& parent, const QString& wanted) {
        for (const auto& each : children(parent))
            if (name(each) == wanted)
                return each;
        return std::nullopt;
    }

  private:
    QDBusConnection bus_;
};

} // namespace

TEST_F(StripAccessibleTest, anotherProcessFindsAndPressesTheButtons) {
    constexpr uint panelRole = 39;
    constexpr uint pushButtonRole = 43;
    Bus bus;
    const auto program = bus.program();
    ASSERT_TRUE(program);
    const auto panelElement = bus.child(*program, "Orrivane");
    ASSERT_TRUE(panelElement);
    EXPECT_EQ(bus.role(*panelElement), panelRole);
    EXPECT_EQ(bus.children(*panelElement).size(), 2U);
    const auto button = bus.child(*panelElement, "B");
    ASSERT_TRUE(button);
    EXPECT_EQ(bus.role(*button), pushButtonRole);
    bus.call(*button, "org.a11y.atspi.Action", "DoAction", {0});
    ASSERT_TRUE(pumpUntil([&] { return !clicks.empty(); }));
    EXPECT_EQ(clicks, Clicks{"left B"});
}

TEST_F(StripAccessibleTest, theStripIsAPanelOfButtons) {
    ASSERT_NE(root(), nullptr);
    EXPECT_EQ(root()->role(), QAccessible::Pane);
    EXPECT_EQ(root()->text(QAccessible::Name), "Orrivane");
    EXPECT_EQ(names(root()), (QStringList{"A", "B"}));
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(child(i)->isValid());
        EXPECT_EQ(child(i)->role(), QAccessible::Button);
        EXPECT_EQ(child(i)->parent(), root());
        EXPECT_EQ(root()->indexOfChild(child(i)), i);
        EXPECT_FALSE(child(i)->state().focusable);
        EXPECT_FALSE(child(i)->state().invisible);
    }
    EXPECT_EQ(root()->child(2), nullptr);
    EXPECT_EQ(root()->child(-1), nullptr);
}

TEST_F(StripAccessibleTest, aTooltipThatSaysMoreThanTheNameIsTheDescription) {
    auto view = row({cell(1, 22, "A"), cell(2, 30, "B")});
    std::get<HorizontalStack>(view.node).children[0].tooltip = "More";
    show(view);
    EXPECT_EQ(child(0)->text(QAccessible::Description), "More");
    EXPECT_EQ(child(1)->text(QAccessible::Description), "");
}

TEST_F(StripAccessibleTest, pressingIsClicking) {
    auto* actions = child(1)->actionInterface();
    ASSERT_NE(actions, nullptr);
    EXPECT_EQ(actions->actionNames(), (QStringList{QAccessibleActionInterface::pressAction(),
                                                   QAccessibleActionInterface::showMenuAction()}));
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(clicks.empty());
    pumpQueued();
    EXPECT_EQ(clicks, Clicks{"left B"});
    actions->doAction(QAccessibleActionInterface::showMenuAction());
    pumpQueued();
    EXPECT_EQ(clicks, (Clicks{"left B", "right B"}));
}

TEST_F(StripAccessibleTest, anUnknownActionDoesNothing) {
    child(0)->actionInterface()->doAction("Explode");
    pumpQueued();
    EXPECT_TRUE(clicks.empty());
}

// The toolkit counts in whole points of its own, whatever the pixels are.
TEST_F(StripAccessibleTest, extentsAreThoseOfTheCells) {
    const auto origin = strip().mapToGlobal(QPoint(0, 0));
    const auto expectNear = [](const QRect& rect, const QRect& expected) {
        EXPECT_EQ(rect.topLeft(), expected.topLeft());
        EXPECT_NEAR(rect.width(), expected.width(), 1);
        EXPECT_NEAR(rect.height(), expected.height(), 1);
    };
    expectNear(child(0)->rect(), QRect(origin, QSize(22, 37)));
    expectNear(child(1)->rect(), QRect(origin + QPoint(22, 0), QSize(30, 37)));
    EXPECT_EQ(root()->childAt(origin.x() + 25, origin.y() + 5), child(1));
    EXPECT_EQ(root()->childAt(origin.x() + 60, origin.y() + 5), nullptr);
}

TEST_F(StripAccessibleTest, cellsThatComeAndGoAreAnnounced) {
    ASSERT_EQ(names(root()).size(), 2);
    show(row({cell(2, 30, "B"), cell(3, 18, "C")}));
    EXPECT_EQ(announced, (std::vector<std::string>{"went A", "moved B", "came C"}));
    EXPECT_EQ(names(root()), (QStringList{"B", "C"}));
}

TEST_F(StripAccessibleTest, aNewNameIsAnnounced) {
    show(row({cell(1, 22, "A"), cell(2, 30, "Renamed")}));
    EXPECT_EQ(announced, std::vector<std::string>{"named Renamed"});
    EXPECT_EQ(child(1)->text(QAccessible::Name), "Renamed");
}

TEST_F(StripAccessibleTest, anEqualRowIsNotAnnounced) {
    auto* before = child(1);
    show(row({cell(1, 22, "A"), cell(2, 30, "B")}));
    EXPECT_TRUE(announced.empty());
    EXPECT_EQ(child(1), before);
}

TEST_F(StripAccessibleTest, aCellThatKeepsItsKeyKeepsItsElement) {
    auto* before = child(1);
    show(row({cell(2, 30, "B"), cell(1, 22, "A")}));
    EXPECT_EQ(child(0), before);
}

TEST_F(StripAccessibleTest, aHiddenStripHasInvisibleButtons) {
    panel.orderOut();
    EXPECT_TRUE(child(0)->state().invisible);
}

TEST_F(StripAccessibleTest, theStripMayEndWhileItIsListenedTo) {
    auto other = std::make_unique<QtTrayPanel>(stage);
    other->create({});
    other->setRoot(row({cell(1, 22, "A")}));
    other->setFrame({{600, 945}, {22, 37}});
    auto* element = QAccessible::queryAccessibleInterface(other->widget());
    ASSERT_NE(element->child(0), nullptr);
    const auto id = QAccessible::uniqueId(element->child(0));
    other.reset();
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}

} // namespace orrivane
