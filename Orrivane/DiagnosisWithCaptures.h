#pragma once

#include <Orrivane/Diagnosis.h>
#include <Orrivane/platform/ApplicationDelegate.h>
#include <Orrivane/platform/Platform.h>
#include <Orrivane/support/Task.h>

#include <functional>

namespace orrivane {

/// Runs a program whose one purpose is to add pictures to a diagnosis: they come by the loop.
class DiagnosisWithCaptures : public ApplicationDelegate {
  public:
    /// `done` is called once, before the program is told to end.
    DiagnosisWithCaptures(const Platform& platform, Diagnosis diagnosis,
                          std::function<void(const Diagnosis&)> done);

    void applicationDidFinishLaunching() override;
    bool applicationShouldHandleReopen(bool) override { return false; }

  private:
    Task<void> capture();

    Platform platform_;
    Diagnosis diagnosis_;
    std::function<void(const Diagnosis&)> done_;
};

} // namespace orrivane
