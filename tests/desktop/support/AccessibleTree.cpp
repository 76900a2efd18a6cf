#include "AccessibleTree.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>
#include <stdexcept>

namespace orrivane::e2e {

namespace {

constexpr int patience = 5000; // milliseconds for one answer

constexpr auto accessible = "org.a11y.atspi.Accessible";
constexpr auto action = "org.a11y.atspi.Action";
constexpr auto component = "org.a11y.atspi.Component";
constexpr auto valueInterface = "org.a11y.atspi.Value";
constexpr auto properties = "org.freedesktop.DBus.Properties";

const QString sessionName = QStringLiteral("accessible tree: session");
const QString busName = QStringLiteral("accessible tree");

bool answers(const QDBusMessage& reply, const char* signature) {
    return reply.type() == QDBusMessage::ReplyMessage &&
           reply.signature() == QLatin1String(signature);
}

QDBusConnection accessibilityBus(const std::string& sessionBusAddress) {
    auto session =
        QDBusConnection::connectToBus(QString::fromStdString(sessionBusAddress), sessionName);
    const auto reply = session.call(QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"),
                                                                   QStringLiteral("/org/a11y/bus"),
                                                                   QStringLiteral("org.a11y.Bus"),
                                                                   QStringLiteral("GetAddress")),
                                    QDBus::Block, patience);
    if (!answers(reply, "s"))
        throw std::runtime_error("no accessibility bus: " + reply.errorMessage().toStdString());
    return QDBusConnection::connectToBus(reply.arguments().front().toString(), busName);
}

} // namespace

AccessibleTree::AccessibleTree(const std::string& sessionBusAddress)
    : bus_(accessibilityBus(sessionBusAddress)) {
    if (!bus_.isConnected())
        throw std::runtime_error("the accessibility bus cannot be reached");
}

AccessibleTree::~AccessibleTree() {
    QDBusConnection::disconnectFromBus(busName);
    QDBusConnection::disconnectFromBus(sessionName);
}

QDBusMessage AccessibleTree::call(const AccessibleNode& node, const char* interface,
                                  const char* method, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(node.service, node.path, QLatin1String(interface),
                                                  QLatin1String(method));
    message.setArguments(arguments);
    return bus_.call(message, QDBus::Block, patience);
}

std::optional<QVariant> AccessibleTree::property(const AccessibleNode& node, const char* interface,
                                                 const char* name) {
    const auto reply =
        call(node, properties, "Get", {QString::fromLatin1(interface), QString::fromLatin1(name)});
    if (!answers(reply, "v"))
        return std::nullopt;
    return reply.arguments().front().value<QDBusVariant>().variant();
}

std::optional<AccessibleNode> AccessibleTree::application(pid_t process) {
    const AccessibleNode registry{QStringLiteral("org.a11y.atspi.Registry"),
                                  QStringLiteral("/org/a11y/atspi/accessible/root")};
    const AccessibleNode bus{QStringLiteral("org.freedesktop.DBus"),
                             QStringLiteral("/org/freedesktop/DBus")};
    for (const auto& each : children(registry)) {
        const auto reply =
            call(bus, "org.freedesktop.DBus", "GetConnectionUnixProcessID", {each.service});
        if (answers(reply, "u") &&
            static_cast<pid_t>(reply.arguments().front().toUInt()) == process)
            return each;
    }
    return std::nullopt;
}

std::vector<AccessibleNode> AccessibleTree::children(const AccessibleNode& node) {
    std::vector<AccessibleNode> result;
    const auto reply = call(node, accessible, "GetChildren");
    if (!answers(reply, "a(so)"))
        return result;
    const auto argument = reply.arguments().front().value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        QString service;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> service >> path;
        argument.endStructure();
        result.push_back({service, path.path()});
    }
    argument.endArray();
    return result;
}

void AccessibleTree::addBelow(const AccessibleNode& node, std::vector<AccessibleNode>& nodes) {
    nodes.push_back(node);
    for (const auto& child : children(node))
        addBelow(child, nodes);
}

std::vector<AccessibleNode> AccessibleTree::below(const AccessibleNode& node) {
    std::vector<AccessibleNode> result;
    addBelow(node, result);
    return result;
}

std::string AccessibleTree::name(const AccessibleNode& node) {
    return property(node, accessible, "Name").value_or(QVariant()).toString().toStdString();
}

std::string AccessibleTree::description(const AccessibleNode& node) {
    return property(node, accessible, "Description").value_or(QVariant()).toString().toStdString();
}

std::string AccessibleTree::roleName(const AccessibleNode& node) {
    const auto reply = call(node, accessible, "GetRoleName");
    return answers(reply, "s") ? reply.arguments().front().toString().toStdString() : "";
}

bool AccessibleTree::has(const AccessibleNode& node, State state) {
    const auto reply = call(node, accessible, "GetState");
    if (!answers(reply, "au"))
        return false;
    QList<uint> words;
    reply.arguments().front().value<QDBusArgument>() >> words;
    constexpr unsigned bits = 32;
    const auto word = static_cast<qsizetype>(state / bits);
    return word < words.size() && ((words[word] >> (state % bits)) & 1U) != 0;
}

PixelRect AccessibleTree::extents(const AccessibleNode& node) {
    constexpr uint onTheRoot = 0;
    const auto reply = call(node, component, "GetExtents", {onTheRoot});
    PixelRect rect;
    if (!answers(reply, "(iiii)"))
        return rect;
    const auto argument = reply.arguments().front().value<QDBusArgument>();
    argument.beginStructure();
    argument >> rect.x >> rect.y >> rect.width >> rect.height;
    argument.endStructure();
    return rect;
}

std::vector<std::string> AccessibleTree::actions(const AccessibleNode& node) {
    std::vector<std::string> result;
    const int count = property(node, action, "NActions").value_or(QVariant(0)).toInt();
    for (int i = 0; i < count; ++i) {
        const auto reply = call(node, action, "GetName", {i});
        result.push_back(answers(reply, "s") ? reply.arguments().front().toString().toStdString()
                                             : "");
    }
    return result;
}

bool AccessibleTree::perform(const AccessibleNode& node, const std::string& wanted) {
    const auto all = actions(node);
    const auto found = std::ranges::find(all, wanted);
    if (found == all.end())
        return false;
    const auto reply = call(node, action, "DoAction", {static_cast<int>(found - all.begin())});
    return answers(reply, "b") && reply.arguments().front().toBool();
}

bool AccessibleTree::grabFocus(const AccessibleNode& node) {
    const auto reply = call(node, component, "GrabFocus");
    return answers(reply, "b") && reply.arguments().front().toBool();
}

std::optional<double> AccessibleTree::value(const AccessibleNode& node, const std::string& which) {
    const auto told = property(node, valueInterface, which.c_str());
    return told ? std::optional(told->toDouble()) : std::nullopt;
}

void AccessibleTree::setValue(const AccessibleNode& node, double value) {
    call(node, properties, "Set",
         {QString::fromLatin1(valueInterface), QStringLiteral("CurrentValue"),
          QVariant::fromValue(QDBusVariant(value))});
}

} // namespace orrivane::e2e
