#pragma once

namespace orrivane {

/// What the platform's application object tells the program. Main thread only.
class ApplicationDelegate {
  public:
    virtual ~ApplicationDelegate() = default;

    /// The loop runs; called once, before anything else.
    virtual void applicationDidFinishLaunching() = 0;
    /// The user launched the program again while it runs. True: the platform may go on with what
    /// it does by itself.
    virtual bool applicationShouldHandleReopen(bool hasVisibleWindows) = 0;
};

} // namespace orrivane
