#pragma once

#include <tests/macos/fakes/Values.h>

#include <functional>
#include <map>
#include <memory>

namespace orrivane::fakes {

/// Writes a value with a reference of its own, or none, and gives the code of the read.
using Answer = std::function<AXError(CFTypeRef* value)>;

struct Node {
    pid_t process = 0;
    std::map<std::string, Answer> attributes;
    std::map<std::string, std::function<AXError()>> actions;
};
using NodePointer = std::shared_ptr<Node>;

/// Processes and what they answer. Time is virtual: a call to a process that hangs lets the timeout
/// of its handle pass.
struct AccessibilityServer {
    struct Process {
        NodePointer application;
        bool hangs = false;
    };

    std::map<pid_t, Process> processes;
    bool isTrusted = true;
    bool makesElements = true; ///< else null, for lack of memory
    AXError timeoutAnswer = kAXErrorSuccess;
    double now = 0; ///< seconds
    float processWideTimeout = systemTimeout;

    static constexpr float systemTimeout = 6; // seconds

    static AccessibilityServer& shared();
    /// The application element of a new process.
    NodePointer launch(pid_t process);
    NodePointer makeNode(pid_t process) const;
};

[[nodiscard]] Answer gives(Any value);
/// A code; nothing is written.
[[nodiscard]] Answer fails(AXError error);
/// Success, and yet no value.
[[nodiscard]] Answer givesNull();
/// A code together with a value of the caller's, which nobody may take over.
[[nodiscard]] Answer failsWriting(AXError error, CFTypeRef value);
/// New handles on every read, as the system makes them.
[[nodiscard]] Answer givesElement(const NodePointer& node);
[[nodiscard]] Answer givesElements(std::vector<NodePointer> nodes);
[[nodiscard]] Any elementHandle(const NodePointer& node);

} // namespace orrivane::fakes
