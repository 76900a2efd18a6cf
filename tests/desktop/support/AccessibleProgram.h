#pragma once

#include "AccessibleTree.h"

#include <string>
#include <utility>
#include <vector>

namespace orrivane::e2e {

/// What shows of one program, read and worked by another process as assistive programs do.
class AccessibleProgram {
  public:
    /// Role and name of a control.
    using Control = std::pair<std::string, std::string>;

    /// Waits for the program's tree; throws std::runtime_error when it does not come.
    AccessibleProgram(const std::string& sessionBusAddress, pid_t program);

    AccessibleTree& tree() { return tree_; }

    /// In the order of the tree.
    std::vector<AccessibleNode> shown();
    std::vector<AccessibleNode> ofRole(const std::string& role);
    std::optional<AccessibleNode> find(const Control& control);
    /// The same, waited for.
    AccessibleNode require(const Control& control);
    /// What can have the keyboard, also while it is disabled.
    std::vector<AccessibleNode> controls();
    /// What the user can work now.
    std::vector<AccessibleNode> enabledControls();
    Control described(const AccessibleNode& node);
    /// The one of `nodes` that has the keyboard, if it is exactly one.
    std::optional<AccessibleNode> focusedOf(const std::vector<AccessibleNode>& nodes);

  private:
    AccessibleTree tree_;
    AccessibleNode application_;
};

} // namespace orrivane::e2e
