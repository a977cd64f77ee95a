#include "bench/node_table.h"

namespace bench {

std::string nodeTable(std::size_t nodes) {
  std::string xml =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<reply>\n  <ZelLamp>\n"
      "    <L04 Fh=\"20250315100000\">\n";
  for (std::size_t i = 0; i < nodes; ++i) {
    const std::string number = std::to_string(100000 + i);
    xml += "      <Node nodeId=\"0013A200" + number + "\" Reference=\"Street " + number +
           "\" latitude=\"41." + number + "\" longitude=\"2." + number + "\"/>\n";
  }
  return xml + "    </L04>\n  </ZelLamp>\n</reply>\n";
}

std::vector<std::string> references(std::size_t nodes) {
  std::vector<std::string> texts;
  texts.reserve(nodes);
  for (std::size_t i = 0; i < nodes; ++i) texts.push_back("Lamp " + std::to_string(i));
  return texts;
}

}  // namespace bench
