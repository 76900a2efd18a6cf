#include "AccessibleProgram.h"

#include "WaitFor.h"

namespace orrivane::e2e {

AccessibleProgram::AccessibleProgram(const std::string& sessionBusAddress, pid_t program)
    : tree_(sessionBusAddress)
    , application_(
          waitForValue<AccessibleNode>("its tree", [&] { return tree_.application(program); })) {}

std::vector<AccessibleNode> AccessibleProgram::shown() {
    auto nodes = tree_.below(application_);
    std::erase_if(nodes,
                  [&](const auto& each) { return !tree_.has(each, AccessibleTree::showing); });
    return nodes;
}

std::vector<AccessibleNode> AccessibleProgram::ofRole(const std::string& role) {
    auto nodes = shown();
    std::erase_if(nodes, [&](const auto& each) { return tree_.roleName(each) != role; });
    return nodes;
}

std::optional<AccessibleNode> AccessibleProgram::find(const Control& control) {
    for (const auto& each : ofRole(control.first))
        if (tree_.name(each) == control.second)
            return each;
    return std::nullopt;
}

AccessibleNode AccessibleProgram::require(const Control& control) {
    return waitForValue<AccessibleNode>(control.second, [&] { return find(control); });
}

std::vector<AccessibleNode> AccessibleProgram::controls() {
    auto nodes = shown();
    std::erase_if(nodes, [&](const auto& each) {
        const auto role = tree_.roleName(each);
        return !tree_.has(each, AccessibleTree::focusable) || role == "frame" || role == "window";
    });
    return nodes;
}

std::vector<AccessibleNode> AccessibleProgram::enabledControls() {
    auto nodes = controls();
    std::erase_if(nodes,
                  [&](const auto& each) { return !tree_.has(each, AccessibleTree::enabled); });
    return nodes;
}

AccessibleProgram::Control AccessibleProgram::described(const AccessibleNode& node) {
    return {tree_.roleName(node), tree_.name(node)};
}

std::optional<AccessibleNode>
AccessibleProgram::focusedOf(const std::vector<AccessibleNode>& nodes) {
    std::vector<AccessibleNode> focused;
    for (const auto& each : nodes)
        if (tree_.has(each, AccessibleTree::focused))
            focused.push_back(each);
    return focused.size() == 1 ? std::optional(focused.front()) : std::nullopt;
}

} // namespace orrivane::e2e
