#pragma once

#include <Orrivane/view/View.h>

#include <vector>

namespace orrivane {

struct NodeExample {
    View view;
    double leastHeight = 0; ///< points
};

/// An example of every kind of node.
std::vector<NodeExample> everyKind();

} // namespace orrivane
