#pragma once

#include <Orrivane/view/Actions.h>

#include <string>
#include <vector>

namespace orrivane {

enum class DialogButtonRole {
    standard,
    cancel, ///< also what Escape chooses
};

struct DialogButton {
    std::string title = {};
    DialogButtonRole role = DialogButtonRole::standard;
    ViewAction chosen = {};

    friend bool operator==(const DialogButton&, const DialogButton&) = default;
};

/// A question that lies over the screen while `isPresented`; it takes no room in the layout. The
/// user's answer is exactly one action: that of the chosen button, or `closed` where the dialog
/// went away in another way. After it the next value has `isPresented` false.
struct ConfirmationDialog {
    std::string title = {};
    std::string message = {};
    bool isPresented = false;
    std::vector<DialogButton> buttons = {}; ///< the first one is the default
    ViewAction closed = {};

    friend bool operator==(const ConfirmationDialog&, const ConfirmationDialog&) = default;
};

} // namespace orrivane
