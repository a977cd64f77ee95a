#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

/// A controller's reply whose section holds @p nodes lamps, as the controller lays it out: root
/// `reply`, `ZelLamp`, the section, a line a node.
std::string nodeTable(std::size_t nodes);
std::string nodePower(std::size_t nodes);
/// Nodes of both generations in turn.
std::string alarmThresholds(std::size_t nodes);
std::string intervalPrograms(std::size_t nodes);
/// The node list of a node update.
std::string nodeList(std::size_t nodes);

/// Node number @p index as the controller calls it, from 0.
std::string nodeId(std::size_t index);

/// One text a node, all different.
std::vector<std::string> references(std::size_t nodes);

}  // namespace bench
