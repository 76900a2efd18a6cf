// A process that offers an accessible tree, and says on its session bus where the bus for it is.
// Arguments: the address of the session bus, that of the accessibility bus, the tree's file. A line
// of the file is: path, parent's path, role, x, y, width, height, 1 for showing. The parent "-"
// makes an application.

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QFile>
#include <QHash>

#include <cstdio>

namespace {

struct Reference {
    QString service;
    QDBusObjectPath path;
};
struct Extents {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};
struct Node {
    QString parent;
    uint role = 0;
    Extents extents;
    bool showing = false;
};

constexpr unsigned stateShowing = 25;

QDBusArgument& operator<<(QDBusArgument& argument, const Reference& reference) {
    argument.beginStructure();
    argument << reference.service << reference.path;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& reference) {
    argument.beginStructure();
    argument >> reference.service >> reference.path;
    argument.endStructure();
    return argument;
}
QDBusArgument& operator<<(QDBusArgument& argument, const Extents& extents) {
    argument.beginStructure();
    argument << extents.x << extents.y << extents.width << extents.height;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, Extents& extents) {
    argument.beginStructure();
    argument >> extents.x >> extents.y >> extents.width >> extents.height;
    argument.endStructure();
    return argument;
}

class Tree : public QDBusVirtualObject {
  public:
    bool read(const QString& path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return false;
        for (const auto& line : QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)) {
            const auto words = line.split(' ', Qt::SkipEmptyParts);
            if (words.size() != 8)
                return false;
            nodes_[words[0]] = {
                words[1],
                words[2].toUInt(),
                {words[3].toInt(), words[4].toInt(), words[5].toInt(), words[6].toInt()},
                words[7] == "1"};
            order_ << words[0];
        }
        return true;
    }

    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const auto answer = reply(message, connection.baseService());
        if (!answer.isValid())
            return false;
        connection.send(message.createReply(answer));
        return true;
    }

  private:
    QVariant reply(const QDBusMessage& message, const QString& service) const {
        const auto node = nodes_.value(message.path());
        if (message.member() == "GetChildren")
            return children(message.path(), service);
        if (message.member() == "GetRole")
            return node.role;
        if (message.member() == "GetExtents")
            return QVariant::fromValue(node.extents);
        if (message.member() == "GetState")
            return QVariant::fromValue(QList<uint>{node.showing ? 1U << stateShowing : 0U, 0U});
        return {};
    }

    QVariant children(const QString& path, const QString& service) const {
        const bool registry = path == "/org/a11y/atspi/accessible/root";
        QList<Reference> references;
        for (const auto& name : order_)
            if (nodes_[name].parent == (registry ? QStringLiteral("-") : path))
                references.append({service, QDBusObjectPath(name)});
        return QVariant::fromValue(references);
    }

    QHash<QString, Node> nodes_;
    QStringList order_;
};

class Launcher : public QDBusVirtualObject {
  public:
    explicit Launcher(QString address)
        : address_(std::move(address)) {}

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() != "GetAddress")
            return false;
        return connection.send(message.createReply(address_));
    }

  private:
    QString address_;
};

} // namespace

Q_DECLARE_METATYPE(Reference)
Q_DECLARE_METATYPE(Extents)

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return 2;
    qDBusRegisterMetaType<Reference>();
    qDBusRegisterMetaType<QList<Reference>>();
    qDBusRegisterMetaType<Extents>();
    Tree tree;
    Launcher launcher(arguments[2]);
    auto session = QDBusConnection::connectToBus(arguments[1], "session");
    auto accessibility = QDBusConnection::connectToBus(arguments[2], "accessibility");
    const bool ready = tree.read(arguments[3]) &&
                       session.registerVirtualObject("/org/a11y/bus", &launcher) &&
                       session.registerService("org.a11y.Bus") &&
                       accessibility.registerVirtualObject("/", &tree, QDBusConnection::SubPath) &&
                       accessibility.registerService("org.a11y.atspi.Registry");
    if (!ready)
        return 1;
    std::puts("ready");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
