#include <macos/appkit/SingleInstance.h>

#include <macos/appkit/MainThread.h>

#include <cstring>
#include <unistd.h>
#include <utility>

namespace orrivane {

namespace {

const CFStringRef portName = CFSTR("Orrivane.instance");
constexpr CFTimeInterval patience = 1; // seconds for each direction

CFDataRef identity() {
    const std::int32_t process = getpid();
    UInt8 bytes[sizeof process];
    std::memcpy(bytes, &process, sizeof process);
    return CFDataCreate(nullptr, bytes, sizeof bytes);
}

std::int32_t identityFrom(CFDataRef data) {
    std::int32_t process = 0;
    if (data != nullptr && CFDataGetLength(data) == sizeof process)
        std::memcpy(&process, CFDataGetBytePtr(data), sizeof process);
    return process;
}

} // namespace

SingleInstance::~SingleInstance() {
    if (port_)
        CFMessagePortInvalidate(port_.get());
}

bool SingleInstance::claim(std::function<void(InstanceCommand)> commanded) {
    if (port_)
        return true;
    if (other())
        return false;
    // A name is given once: this fails if another one was faster.
    CFMessagePortContext context{0, this, nullptr, nullptr, nullptr};
    port_ = CFRef<CFMessagePortRef>::adopting(
        CFMessagePortCreateLocal(nullptr, portName, receive, &context, nullptr));
    if (!port_)
        return !other(); // for whatever other reason, the program can do without
    commanded_ = std::make_shared<std::function<void(InstanceCommand)>>(std::move(commanded));
    const auto source = CFRef<CFRunLoopSourceRef>::adopting(
        CFMessagePortCreateRunLoopSource(nullptr, port_.get(), 0));
    CFRunLoopAddSource(CFRunLoopGetMain(), source.get(), kCFRunLoopCommonModes);
    return true;
}

bool SingleInstance::tell(InstanceCommand command) {
    const auto port = other();
    return port && CFMessagePortSendRequest(port.get(), static_cast<SInt32>(command), nullptr,
                                            patience, 0, nullptr, nullptr) == kCFMessagePortSuccess;
}

std::optional<std::int32_t> SingleInstance::runningElsewhere() {
    const auto port = other();
    if (!port)
        return std::nullopt;
    CFDataRef reply = nullptr;
    CFMessagePortSendRequest(port.get(), static_cast<SInt32>(InstanceCommand::identify), nullptr,
                             patience, patience, kCFRunLoopDefaultMode, &reply);
    const auto owned = CFRef<CFDataRef>::adopting(reply);
    return identityFrom(owned.get());
}

CFRef<CFMessagePortRef> SingleInstance::other() const {
    if (port_)
        return {};
    return CFRef<CFMessagePortRef>::adopting(CFMessagePortCreateRemote(nullptr, portName));
}

CFDataRef SingleInstance::receive(CFMessagePortRef, SInt32 message, CFDataRef, void* self) {
    const auto command = static_cast<InstanceCommand>(message);
    if (command == InstanceCommand::open || command == InstanceCommand::quit) {
        onMainThread(
            [command, weak = std::weak_ptr(static_cast<SingleInstance*>(self)->commanded_)] {
                if (const auto commanded = weak.lock())
                    (*commanded)(command);
            });
    }
    return identity();
}

} // namespace orrivane
