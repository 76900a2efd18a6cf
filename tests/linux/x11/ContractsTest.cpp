#include "support/ContractWorld.h"

#include <tests/support/contracts/AccessibilityContract.h>
#include <tests/support/contracts/ScreenCaptureContract.h>
#include <tests/support/contracts/ScreensContract.h>
#include <tests/support/contracts/WindowListContract.h>
#include <tests/support/contracts/WorkspaceContract.h>

// The real bodies under the suites that the scripted ones pass as well.

namespace orrivane {

INSTANTIATE_TYPED_TEST_SUITE_P(X11, AccessibilityContract, x11::ContractWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, ScreenCaptureContract, x11::ContractWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, ScreensContract, x11::ContractWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, WindowListContract, x11::ContractWorld);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, WorkspaceContract, x11::ContractWorld);

} // namespace orrivane
