#pragma once

namespace orrivane {

class MainLoop;
class Network;

/// What the module with the network library offers, by name, to the program that loads it.
struct NetworkModule {
    static constexpr const char* versionName = "orrivane_network_version";
    static constexpr const char* makeName = "orrivane_network_make";

    /// The version of the program that it was built with, which alone may use it.
    using Version = const char*();
    /// The caller owns what it gets; the loop outlives that.
    using Make = Network*(MainLoop&);
};

} // namespace orrivane
