#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDeadlineTimer>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace orrivane {

/// The bus on which applications offer their accessible trees. Each operation ends with the
/// deadline it is given, even when the bus or an application on it hangs.
class AccessibilityBus {
  public:
    /// `session` is where the bus is asked for; absent: the user's session bus.
    explicit AccessibilityBus(std::optional<QDBusConnection> session);
    AccessibilityBus(const AccessibilityBus&) = delete;
    AccessibilityBus& operator=(const AccessibilityBus&) = delete;
    ~AccessibilityBus();

    /// Connects if need be. False: there is no such bus, or it did not answer in time. Never starts
    /// one: without a bus there is no application on it either.
    bool connect(const QDeadlineTimer& deadline);

    /// Sends all calls before it waits for the first reply. Replies in the order of the calls; an
    /// unanswered one is an error message.
    std::vector<QDBusMessage> call(const std::vector<QDBusMessage>& calls,
                                   const QDeadlineTimer& deadline);

    /// Whether somebody, the bus included, left a call unanswered since the last connect().
    [[nodiscard]] bool wasUnanswered() const { return unanswered_; }

  private:
    [[nodiscard]] QString address(const QDeadlineTimer& deadline);
    [[nodiscard]] QDBusConnection& session();
    void noteSilence(const QDBusMessage& reply);
    void disconnect();

    std::optional<QDBusConnection> session_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
    bool isAbsent_ = false; // nobody offers the bus; the watcher tells when somebody does
    QString name_;
    std::optional<QDBusConnection> bus_;
    bool unanswered_ = false;
};

} // namespace orrivane
