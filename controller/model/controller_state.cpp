#include <string>

#include "controller/model/controller.h"
#include "controller/model/names.h"
#include "controller/model/request.h"
#include "controller/xml/well_formed.h"

namespace lamp::controller {
namespace {

constexpr const char* kRoot = "lampController";
constexpr const char* kFormat = "format";
constexpr const char* kFormatNumber = "1";
constexpr const char* kId = "id";
constexpr const char* kOffset = "clockOffset";
// Documents in the state stand a few levels below its root.
constexpr std::size_t kStateDepth = kDepthLimit + 8;

constexpr const char* kUsage = "usage";
constexpr const char* kLitSeconds = "s";
constexpr const char* kWattSeconds = "ws";

struct TextWriter final : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
};

}  // namespace

std::string Controller::printState(std::uint64_t& version) const {
  const std::lock_guard lock(mutex_);
  version = version_;
  TextWriter writer;
  // The identifier holds letters, digits and a few signs that need no escape.
  writer.text = std::string("<") + kRoot + " " + kFormat + "=\"" + kFormatNumber + "\" " + kId +
                "=\"" + id_ + "\" " + kOffset + "=\"" + std::to_string(clock_.offset().count()) +
                "\">\n";
  settings_.print(writer);
  printUsage(writer);
  writer.text += std::string("</") + kRoot + ">\n";
  return std::move(writer.text);
}

void Controller::printUsage(pugi::xml_writer& out) const {
  pugi::xml_document document;
  pugi::xml_node list = document.append_child(kUsage);
  const std::vector<NodeRows>& nodes = settings_.inForce().nodes();
  for (std::size_t i = 0; i < street_.lamps().size() && i < nodes.size(); ++i) {
    const Lamp& lamp = street_.lamps()[i];
    if (lamp.litSeconds <= 0) continue;
    pugi::xml_node row = list.append_child(names::kNode);
    row.append_attribute(names::kNodeId).set_value(nodes[i].id.c_str());
    row.append_attribute(kLitSeconds).set_value(lamp.litSeconds);
    row.append_attribute(kWattSeconds).set_value(lamp.wattSeconds);
  }
  list.print(out, "", pugi::format_indent);
}

void Controller::loadUsage(pugi::xml_node list) {
  const SectionStore& store = settings_.inForce();
  street_.rebuild(store);
  streetVersion_ = version_;
  for (const pugi::xml_node row : list.children(names::kNode)) {
    const NodeRows* rows = store.find(row.attribute(names::kNodeId).value());
    if (rows == nullptr) continue;
    street_.restoreUsage(static_cast<std::size_t>(rows - store.nodes().data()),
                         row.attribute(kLitSeconds).as_double(),
                         row.attribute(kWattSeconds).as_double());
  }
}

std::string Controller::loadState(std::string_view text) {
  if (const auto fault = findXmlFault(text, kStateDepth)) {
    return "line " + std::to_string(fault->line) + ", column " + std::to_string(fault->column) +
           ": " + fault->text;
  }
  pugi::xml_document document;
  document.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
  const pugi::xml_node root = document.child(kRoot);
  if (!root) return std::string("its root is not <") + kRoot + ">";
  if (std::string_view(root.attribute(kFormat).value()) != kFormatNumber) {
    return "it was written by another version of this program";
  }
  const std::lock_guard lock(mutex_);
  id_ = root.attribute(kId).value();
  if (id_.empty()) return "the identifier of the controller is missing";
  clock_.setOffset(std::chrono::seconds{root.attribute(kOffset).as_llong()});
  const std::string fault = settings_.load(root);
  if (fault.empty()) loadUsage(root.child(kUsage));
  return fault;
}

}  // namespace lamp::controller
