#pragma once

#include "PixelRect.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace orrivane::e2e {

/// One object of an application's accessible tree.
struct AccessibleNode {
    QString service;
    QString path;

    bool operator==(const AccessibleNode&) const = default;
};

/// The accessible trees of a session's applications, as a screen reader sees them: over D-Bus, from
/// another process. A call to what is gone yields an empty value. Needs a QCoreApplication.
class AccessibleTree {
  public:
    // Numbers of the accessibility protocol.
    enum State : unsigned {
        checked = 4,
        enabled = 8,
        focusable = 11,
        focused = 12,
        showing = 25,
        visible = 30,
    };

    /// Throws std::runtime_error when the session has no accessibility bus.
    explicit AccessibleTree(const std::string& sessionBusAddress);
    ~AccessibleTree();
    AccessibleTree(const AccessibleTree&) = delete;
    AccessibleTree& operator=(const AccessibleTree&) = delete;

    std::optional<AccessibleNode> application(pid_t process);
    /// The node and all below it, parents first, in the order of the tree.
    std::vector<AccessibleNode> below(const AccessibleNode& node);
    std::vector<AccessibleNode> children(const AccessibleNode& node);

    std::string name(const AccessibleNode& node);
    std::string description(const AccessibleNode& node);
    std::string roleName(const AccessibleNode& node);
    bool has(const AccessibleNode& node, State state);
    /// On the root window.
    PixelRect extents(const AccessibleNode& node);

    std::vector<std::string> actions(const AccessibleNode& node);
    /// False: there is no such action, or it was refused.
    bool perform(const AccessibleNode& node, const std::string& action);
    bool grabFocus(const AccessibleNode& node);

    /// "CurrentValue", "MinimumValue" or "MaximumValue".
    std::optional<double> value(const AccessibleNode& node, const std::string& which);
    void setValue(const AccessibleNode& node, double value);

  private:
    QDBusMessage call(const AccessibleNode& node, const char* interface, const char* method,
                      const QVariantList& arguments = {});
    std::optional<QVariant> property(const AccessibleNode& node, const char* interface,
                                     const char* name);
    void addBelow(const AccessibleNode& node, std::vector<AccessibleNode>& nodes);

    QDBusConnection bus_;
};

} // namespace orrivane::e2e
