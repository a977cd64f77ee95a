#include <mutex>
#include <shared_mutex>
#include <string>

#include "controller/model/controller.h"
#include "controller/model/kept_text.h"
#include "controller/model/text_writer.h"

namespace lamp::controller {
namespace {

constexpr const char* kRoot = "lampController";
constexpr const char* kFormat = "format";
constexpr const char* kFormatNumber = "3";
// The same document without a journal, and with every section as it is shown.
constexpr const char* kOldFormats[] = {"1", "2"};
constexpr const char* kId = "id";
constexpr const char* kOffset = "clockOffset";

}  // namespace

void Controller::printState(std::string& text) const {
  const std::shared_lock lock(mutex_);
  TextWriter writer(std::move(text));
  // The identifier holds letters, digits and a few signs that need no escape.
  writer.text += std::string("<") + kRoot + " " + kFormat + "=\"" + kFormatNumber + "\" " + kId +
                 "=\"" + id_ + "\" " + kOffset + "=\"" + std::to_string(clock_.offset().count()) +
                 "\">\n";
  settings_.print(writer);
  writer.text += printChange(usage());
  writer.text += std::string("</") + kRoot + ">\n";
  text = std::move(writer.text);
}

// What the lamps have used is kept as the change that brings it back.
std::string Controller::loadUsage(pugi::xml_node root) {
  street_.rebuild(settings_.inForce());
  const pugi::xml_node usage = root.last_child();
  Change change;
  std::string fault = readChange(usage, change);
  if (fault.empty()) std::visit([this](const auto& each) { apply(each); }, change);
  return fault;
}

std::string Controller::loadState(std::string_view text) {
  pugi::xml_document document;
  const pugi::xml_parse_result result =
      document.load_buffer(text.data(), text.size(), kKeptText, pugi::encoding_utf8);
  if (!result) return "byte " + std::to_string(result.offset) + ": " + result.description();
  const pugi::xml_node root = document.child(kRoot);
  if (!root) return std::string("its root is not <") + kRoot + ">";
  const std::string_view format = root.attribute(kFormat).value();
  if (format != kFormatNumber && format != kOldFormats[0] && format != kOldFormats[1]) {
    return "it was written by another version of this program";
  }
  const std::lock_guard lock(mutex_);
  id_ = root.attribute(kId).value();
  if (id_.empty()) return "the identifier of the controller is missing";
  keptOffset_ = std::chrono::seconds{root.attribute(kOffset).as_llong()};
  clock_.setOffset(keptOffset_);
  std::string fault = settings_.load(root);
  if (fault.empty()) fault = loadUsage(root);
  stale_ = Stale::Everything;
  noteSummary();
  return fault;
}

}  // namespace lamp::controller
