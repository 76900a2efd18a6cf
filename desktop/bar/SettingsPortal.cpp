#include <desktop/bar/SettingsPortal.h>

#include <algorithm>

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QMap>

namespace orrivane::desktop {

namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String objectPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String settings("org.freedesktop.portal.Settings");
constexpr QLatin1String properties("org.freedesktop.DBus.Properties");
constexpr QLatin1String appearance("org.freedesktop.appearance");
constexpr QLatin1String colorScheme("color-scheme");

constexpr uint prefersDark = 1;
constexpr uint prefersLight = 2;
constexpr uint interfaceVersion = 2;

using Group = QMap<QString, QVariant>;
using Groups = QMap<QString, Group>;

QVariant wrapped(const QVariant& value) {
    return QVariant::fromValue(QDBusVariant(value));
}

// An asterisk at the end stands for everything that begins so; an empty name for everything.
bool covers(const QString& pattern, const QString& name) {
    if (pattern.endsWith(QLatin1Char('*')))
        return name.startsWith(pattern.chopped(1));
    return pattern.isEmpty() || pattern == name;
}

QDBusMessage unknownMethod(const QDBusMessage& message) {
    return message.createErrorReply(
        QDBusError::UnknownMethod,
        QStringLiteral("This portal has no %1 with such arguments").arg(message.member()));
}

} // namespace

SettingsPortal::SettingsPortal(bool dark)
    : scheme_(dark ? prefersDark : prefersLight)
    , session_(QString()) {
    qDBusRegisterMetaType<Groups>();
}

SettingsPortal::~SettingsPortal() {
    session_.unregisterService(service);
    session_.unregisterObject(objectPath);
}

bool SettingsPortal::offer(const QDBusConnection& session, QString& problem) {
    session_ = session;
    if (!session_.isConnected())
        return true;
    if (session_.registerVirtualObject(objectPath, this) && session_.registerService(service))
        return true;
    problem = QStringLiteral("another program is the desktop portal here; programs do not hear "
                             "whether the desktop is light or dark");
    return false;
}

QString SettingsPortal::introspect(const QString&) const {
    return QStringLiteral(R"(  <interface name="org.freedesktop.portal.Settings">
    <method name="Read">
      <arg type="s" name="namespace" direction="in"/>
      <arg type="s" name="key" direction="in"/>
      <arg type="v" name="value" direction="out"/>
    </method>
    <method name="ReadOne">
      <arg type="s" name="namespace" direction="in"/>
      <arg type="s" name="key" direction="in"/>
      <arg type="v" name="value" direction="out"/>
    </method>
    <method name="ReadAll">
      <arg type="as" name="namespaces" direction="in"/>
      <arg type="a{sa{sv}}" name="value" direction="out"/>
    </method>
    <signal name="SettingChanged">
      <arg type="s" name="namespace"/>
      <arg type="s" name="key"/>
      <arg type="v" name="value"/>
    </signal>
    <property name="version" type="u" access="read"/>
  </interface>
)");
}

bool SettingsPortal::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.path() != objectPath)
        return false;
    const auto interface = message.interface();
    if (interface == properties)
        return connection.send(propertyFor(message));
    return (interface.isEmpty() || interface == settings) && connection.send(answerTo(message));
}

QDBusMessage SettingsPortal::answerTo(const QDBusMessage& message) const {
    const auto method = message.member();
    const auto arguments = message.arguments();
    if (method == QLatin1String("ReadAll") && message.signature() == QLatin1String("as"))
        return message.createReply(settingsIn(arguments.at(0).toStringList()));
    const bool wrapsTwice = method == QLatin1String("Read");
    if ((!wrapsTwice && method != QLatin1String("ReadOne")) ||
        message.signature() != QLatin1String("ss"))
        return unknownMethod(message);
    if (arguments.at(0) != QVariant(appearance) || arguments.at(1) != QVariant(colorScheme))
        return message.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                                        QStringLiteral("The desktop has no such setting"));
    const auto value = wrapped(QVariant(scheme_));
    return message.createReply(wrapsTwice ? wrapped(value) : value);
}

QDBusMessage SettingsPortal::propertyFor(const QDBusMessage& message) const {
    const auto arguments = message.arguments();
    const QVariant version(interfaceVersion);
    if (arguments.isEmpty() || arguments.at(0) != QVariant(settings))
        return unknownMethod(message);
    if (message.member() == QLatin1String("GetAll"))
        return message.createReply(QVariant(Group{{QStringLiteral("version"), version}}));
    if (message.member() == QLatin1String("Get") && arguments.size() == 2 &&
        arguments.at(1) == QVariant(QStringLiteral("version")))
        return message.createReply(wrapped(version));
    return unknownMethod(message);
}

QVariant SettingsPortal::settingsIn(const QStringList& nameSpaces) const {
    Groups result;
    const bool wanted =
        nameSpaces.isEmpty() || std::ranges::any_of(nameSpaces, [](const QString& pattern) {
            return covers(pattern, appearance);
        });
    if (wanted)
        result.insert(appearance, Group{{colorScheme, QVariant(scheme_)}});
    return QVariant::fromValue(result);
}

} // namespace orrivane::desktop
