#include "controller/model/settings.h"

#include <algorithm>

#include "controller/model/names.h"
#include "controller/model/value_rules.h"

namespace lamp::controller {
namespace {

constexpr const char* kInForce = "inForce";
constexpr const char* kShown = "shown";
constexpr const char* kPending = "pending";
constexpr const char* kWrite = "write";
constexpr const char* kDue = "due";

void printText(pugi::xml_writer& out, const std::string& text) {
  out.write(text.data(), text.size());
}

void printStore(pugi::xml_writer& out, const char* name, const SectionStore& store) {
  printText(out, std::string("<") + name + ">\n");
  for (const pugi::xml_node section : store.root().children()) {
    section.print(out, "", pugi::format_indent);
  }
  printText(out, std::string("</") + name + ">\n");
}

const SectionWriter* writerOf(std::string_view section) {
  return section == names::kFirmwareCommand ? &firmwareWriter() : findWriter(section);
}

}  // namespace

void Settings::write(const SectionWriter& writer, pugi::xml_node element, Moment due, Moment now) {
  if (writer.timing == WriteTiming::AtOnce || due <= now) {
    writer.apply(element, inForce_, now);
    if (shown_) writer.apply(element, *shown_, now);
    return;
  }
  if (writer.timing == WriteTiming::Dated) {
    if (!shown_) shown_ = std::make_unique<SectionStore>(inForce_);
    writer.apply(element, *shown_, due);
  }
  PendingWrite pending{&writer, due, std::make_unique<pugi::xml_document>()};
  pending.document->append_copy(element);
  pending_.push_back(std::move(pending));
}

bool Settings::isDue(Moment now) const {
  return std::any_of(pending_.begin(), pending_.end(),
                     [&](const PendingWrite& write) { return write.due <= now; });
}

bool Settings::advance(Moment now) {
  const auto later = std::stable_partition(
      pending_.begin(), pending_.end(), [&](const PendingWrite& write) { return write.due > now; });
  if (later == pending_.end()) return false;
  std::stable_sort(later, pending_.end(),
                   [](const PendingWrite& a, const PendingWrite& b) { return a.due < b.due; });
  for (auto write = later; write != pending_.end(); ++write) {
    write->writer->apply(write->document->document_element(), inForce_, write->due);
  }
  pending_.erase(later, pending_.end());
  rebuildShown();
  return true;
}

void Settings::rebuildShown() {
  shown_.reset();
  for (const PendingWrite& write : pending_) {
    if (write.writer->timing != WriteTiming::Dated) continue;
    if (!shown_) shown_ = std::make_unique<SectionStore>(inForce_);
    write.writer->apply(write.document->document_element(), *shown_, write.due);
  }
}

void Settings::print(pugi::xml_writer& out) const {
  printStore(out, kInForce, inForce_);
  if (shown_) printStore(out, kShown, *shown_);
  printText(out, std::string("<") + kPending + ">\n");
  for (const PendingWrite& write : pending_) {
    printText(out, std::string("<") + kWrite + " " + kDue + "=\"" +
                       std::to_string(write.due.time_since_epoch().count()) + "\">\n");
    write.document->document_element().print(out, "", pugi::format_indent);
    printText(out, std::string("</") + kWrite + ">\n");
  }
  printText(out, std::string("</") + kPending + ">\n");
}

std::string Settings::load(pugi::xml_node parent) {
  pending_.clear();
  shown_.reset();
  const pugi::xml_node inForce = parent.child(kInForce);
  if (!inForce) return "the sections are missing";
  if (std::string fault = inForce_.load(inForce); !fault.empty()) return fault;
  if (const pugi::xml_node shown = parent.child(kShown)) {
    shown_ = std::make_unique<SectionStore>();
    if (std::string fault = shown_->load(shown); !fault.empty()) return fault;
  }
  return loadPending(parent.child(kPending));
}

std::string Settings::loadPending(pugi::xml_node list) {
  for (const pugi::xml_node entry : list.children(kWrite)) {
    const pugi::xml_node element = entry.first_child();
    const SectionWriter* writer = writerOf(element.name());
    if (writer == nullptr) return "a pending write has no section that can be written";
    if (auto objection = writer->judge(element, inForce_)) return objection->text;
    PendingWrite pending{writer, Moment{std::chrono::seconds{entry.attribute(kDue).as_llong()}},
                         std::make_unique<pugi::xml_document>()};
    pending.document->append_copy(element);
    pending_.push_back(std::move(pending));
  }
  return "";
}

}  // namespace lamp::controller
