#include <linux/qt/GlobalMenuExtents.h>

#include <linux/support/MonotonicClock.h>

#include <QDBusArgument>
#include <QDBusObjectPath>

#include <algorithm>
#include <array>
#include <chrono>

namespace orrivane {

namespace {

constexpr std::chrono::milliseconds longestQuestion{300};
constexpr double silenceAfterFailure = 5; // seconds
constexpr int deepestLevel = 8;
constexpr std::size_t mostNodes = 400;

constexpr auto accessible = "org.a11y.atspi.Accessible";
constexpr auto component = "org.a11y.atspi.Component";
constexpr uint screenCoordinates = 0;

// Numbers of the accessibility protocol.
constexpr uint roleList = 31;
constexpr uint roleMenuBar = 34;
constexpr uint roleTable = 55;
constexpr uint roleText = 61;
constexpr uint roleTree = 65;
constexpr uint roleTreeTable = 66;
constexpr unsigned stateShowing = 25;

// Wide, and never with a menu bar inside.
bool isContent(uint role) {
    constexpr std::array content{roleList, roleTable, roleText, roleTree, roleTreeTable};
    return std::ranges::find(content, role) != content.end();
}

bool answers(const QDBusMessage& reply, const char* signature) {
    return reply.type() == QDBusMessage::ReplyMessage &&
           reply.signature() == QLatin1String(signature);
}

PixelRect extents(const QDBusMessage& reply) {
    PixelRect rect;
    if (!answers(reply, "(iiii)"))
        return rect;
    const auto argument = reply.arguments().front().value<QDBusArgument>();
    argument.beginStructure();
    argument >> rect.x >> rect.y >> rect.width >> rect.height;
    argument.endStructure();
    return rect;
}

bool isShowing(const QDBusMessage& reply) {
    if (!answers(reply, "au"))
        return false;
    QList<uint> words;
    reply.arguments().front().value<QDBusArgument>() >> words;
    return !words.isEmpty() && ((words.front() >> stateShowing) & 1) != 0;
}

bool liesIn(const PixelRect& rect, const PixelRect& band) {
    return !rect.isEmpty() && rect.y >= band.y && rect.bottom() <= band.bottom() &&
           rect.intersects(band);
}

} // namespace

GlobalMenuExtents::GlobalMenuExtents(std::optional<QDBusConnection> session,
                                     std::function<double()> clock)
    : bus_(std::move(session))
    , clock_(clock ? std::move(clock) : monotonicNow) {}

std::optional<int> GlobalMenuExtents::rightEdge(pid_t process, PixelRect band) {
    if (clock_() < silentUntil_)
        return std::nullopt;
    deadline_ = QDeadlineTimer(longestQuestion);
    const auto edge = search(process, band);
    if (!edge && (bus_.wasUnanswered() || deadline_.hasExpired()))
        silentUntil_ = clock_() + silenceAfterFailure;
    return edge;
}

std::optional<int> GlobalMenuExtents::search(pid_t process, const PixelRect& band) {
    if (!bus_.connect(deadline_))
        return std::nullopt;
    auto level = applications(process);
    std::size_t seen = 0;
    for (int depth = 0; depth < deepestLevel && !level.empty(); ++depth) {
        seen += level.size();
        if (seen > mostNodes || deadline_.hasExpired())
            break;
        for (const auto& bar : takeMenuBars(level))
            if (const auto edge = lastMenu(bar, band))
                return edge;
    }
    return std::nullopt;
}

std::vector<GlobalMenuExtents::Node> GlobalMenuExtents::applications(pid_t process) {
    const Node registry{QStringLiteral("org.a11y.atspi.Registry"),
                        QStringLiteral("/org/a11y/atspi/accessible/root")};
    auto all = nodes(ask({message(registry, accessible, "GetChildren")}).front());
    // A name on the bus belongs to one connection for ever, so what is known stays true.
    std::map<QString, uint> known;
    std::vector<QDBusMessage> questions;
    for (const auto& application : all) {
        if (const auto found = processes_.find(application.service); found != processes_.end())
            known.insert(*found);
        else
            questions.push_back(message({QStringLiteral("org.freedesktop.DBus"),
                                         QStringLiteral("/org/freedesktop/DBus")},
                                        "org.freedesktop.DBus", "GetConnectionUnixProcessID")
                                << application.service);
    }
    const auto replies = ask(questions);
    for (std::size_t i = 0; i < replies.size(); ++i)
        if (answers(replies[i], "u"))
            known[questions[i].arguments().front().toString()] =
                replies[i].arguments().front().toUInt();
    processes_ = std::move(known);
    std::erase_if(all, [&](const Node& application) {
        const auto found = processes_.find(application.service);
        return found == processes_.end() || static_cast<pid_t>(found->second) != process;
    });
    return all;
}

std::vector<GlobalMenuExtents::MenuBar> GlobalMenuExtents::takeMenuBars(std::vector<Node>& level) {
    std::vector<QDBusMessage> questions;
    for (const auto& node : level) {
        questions.push_back(message(node, accessible, "GetRole"));
        questions.push_back(message(node, accessible, "GetChildren"));
    }
    const auto replies = ask(questions);
    std::vector<MenuBar> bars;
    std::vector<Node> below;
    for (std::size_t i = 0; i < level.size(); ++i) {
        const auto& role = replies[2 * i];
        if (!answers(role, "u"))
            continue;
        const uint number = role.arguments().front().toUInt();
        auto children = nodes(replies[2 * i + 1]);
        if (number == roleMenuBar)
            bars.push_back({level[i], std::move(children)});
        else if (!isContent(number))
            std::ranges::move(children, std::back_inserter(below));
    }
    level = std::move(below);
    return bars;
}

std::optional<int> GlobalMenuExtents::lastMenu(const MenuBar& bar, const PixelRect& band) {
    std::vector<QDBusMessage> questions{message(bar.node, component, "GetExtents")
                                        << screenCoordinates};
    for (const auto& menu : bar.children) {
        questions.push_back(message(menu, component, "GetExtents") << screenCoordinates);
        questions.push_back(message(menu, accessible, "GetState"));
    }
    const auto replies = ask(questions);
    if (!liesIn(extents(replies.front()), band))
        return std::nullopt;
    std::optional<int> edge;
    for (std::size_t i = 1; i + 1 < replies.size(); i += 2) {
        const auto rect = extents(replies[i]);
        if (!rect.isEmpty() && isShowing(replies[i + 1]))
            edge = std::max(edge.value_or(rect.right()), rect.right());
    }
    return edge;
}

std::vector<QDBusMessage> GlobalMenuExtents::ask(const std::vector<QDBusMessage>& calls) {
    return bus_.call(calls, deadline_);
}

QDBusMessage GlobalMenuExtents::message(const Node& node, const char* interface,
                                        const char* method) {
    auto call = QDBusMessage::createMethodCall(node.service, node.path, QLatin1String(interface),
                                               QLatin1String(method));
    call.setAutoStartService(false);
    return call;
}

std::vector<GlobalMenuExtents::Node> GlobalMenuExtents::nodes(const QDBusMessage& reply) {
    std::vector<Node> result;
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
        if (result.size() < mostNodes)
            result.push_back({service, path.path()});
    }
    argument.endArray();
    return result;
}

} // namespace orrivane
