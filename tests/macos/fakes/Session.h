#pragma once

namespace orrivane::fakes {

/// One test's time with the faked system: fresh at its begin; at its end every object must have
/// been released as often as it was retained, and nothing called wrongly, or the test fails.
class Session {
  public:
    Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

  private:
    static void forgetEverything();
};

} // namespace orrivane::fakes
