#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// A controller's reply with a node table of @p nodes nodes, indented as controllers send it.
std::string nodeTable(std::size_t nodes);

/// What is typed into the reference of each node, one text a node.
std::vector<std::string> references(std::size_t nodes);

}  // namespace bench
