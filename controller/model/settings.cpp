#include "controller/model/settings.h"

#include <algorithm>

#include "controller/model/names.h"
#include "controller/model/port_switch.h"
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

// Whether there is more in it than its dates.
bool saysAnything(pugi::xml_node element) {
  const auto attributes = element.attributes();
  return element.first_child() ||
         std::any_of(attributes.begin(), attributes.end(), [](pugi::xml_attribute attribute) {
           const std::string_view name = attribute.name();
           return name != names::kActDate && name != names::kFh;
         });
}

const SectionWriter* writerOf(std::string_view section) {
  return section == names::kFirmwareCommand ? &firmwareWriter() : findWriter(section);
}

}  // namespace

ShownSections& Settings::shownToChange(bool onlyWhatWaits) {
  if (!shown_) shown_ = std::make_unique<ShownSections>(inForce_);
  shown_->changeOnlyWhatWaits(onlyWhatWaits);
  return *shown_;
}

void Settings::switchInput(int number, bool active) {
  setInput(inForce_, number, active);
  if (shown_) setInput(shownToChange(true), number, active);
}

void Settings::write(const SectionWriter& writer, pugi::xml_node element, Moment due, Moment now) {
  keepDifferences(writer, element, shown());
  if (writer.timing == WriteTiming::AtOnce || due <= now) {
    writer.apply(element, inForce_, now);
    if (shown_) writer.apply(element, shownToChange(true), now);
  } else if (writer.differs == nullptr || saysAnything(element)) {
    write(writer, element, due);
  }
}

void Settings::write(const SectionWriter& writer, pugi::xml_node element, Moment due) {
  if (writer.timing == WriteTiming::Dated) writer.apply(element, shownToChange(false), due);
  PendingWrite pending{&writer, due, std::make_unique<pugi::xml_document>()};
  pending.document->append_copy(element);
  pending_.push_back(std::move(pending));
}

bool Settings::isDue(Moment now) const {
  return std::any_of(pending_.begin(), pending_.end(),
                     [&](const PendingWrite& write) { return write.due <= now; });
}

bool Settings::advance(Moment now) {
  std::vector<std::size_t> due;
  for (std::size_t i = 0; i < pending_.size(); ++i) {
    if (pending_[i].due <= now) due.push_back(i);
  }
  if (due.empty()) return false;
  std::stable_sort(due.begin(), due.end(), [this](std::size_t a, std::size_t b) {
    return pending_[a].due < pending_[b].due;
  });
  std::vector<bool> done(pending_.size());
  for (const std::size_t position : due) bringIntoForce(position, done);
  std::size_t position = 0;
  std::erase_if(pending_, [&](const PendingWrite&) { return done[position++]; });
  const bool waits = std::any_of(pending_.begin(), pending_.end(), [](const PendingWrite& write) {
    return write.writer->timing == WriteTiming::Dated;
  });
  if (!waits) shown_.reset();
  return true;
}

// What is shown is what was sent last, of that which is in force and that which waits.
void Settings::bringIntoForce(std::size_t position, std::vector<bool>& done) {
  const PendingWrite& write = pending_[position];
  const pugi::xml_node element = write.document->document_element();
  done[position] = true;
  write.writer->apply(element, inForce_, write.due);
  if (!shown_ || write.writer->timing != WriteTiming::Dated) return;
  std::vector<const PendingWrite*> later;
  for (std::size_t i = position + 1; i < pending_.size(); ++i) {
    if (!done[i] && pending_[i].writer == write.writer) later.push_back(&pending_[i]);
  }
  if (write.writer->differs != nullptr) {
    for (const PendingWrite* other : later)
      takeLaterValues(element, other->document->document_element());
    later.clear();
  }
  write.writer->apply(element, shownToChange(true), write.due);
  for (const PendingWrite* other : later)
    write.writer->apply(other->document->document_element(), *shown_, other->due);
}

void Settings::print(pugi::xml_writer& out) const {
  printStore(out, kInForce, inForce_);
  if (shown_) {
    printText(out, std::string("<") + kShown + ">\n");
    shown_->root().print(out, "", pugi::format_raw);
    printText(out, std::string("</") + kShown + ">\n");
  }
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
  const pugi::xml_node shown = parent.child(kShown).first_child();
  // Before, all sections were kept as they were shown, and writes with every row.
  const bool whole = shown && std::string_view(shown.name()) == names::kGeneral;
  if (shown && !whole) {
    if (std::string fault = shownToChange(false).load(shown); !fault.empty()) return fault;
  }
  return loadPending(parent.child(kPending), whole);
}

std::string Settings::loadPending(pugi::xml_node list, bool whole) {
  for (const pugi::xml_node entry : list.children(kWrite)) {
    const pugi::xml_node element = entry.first_child();
    const SectionWriter* writer = writerOf(element.name());
    if (writer == nullptr) return "a pending write has no section that can be written";
    if (auto objection = writer->judge(element, inForce_)) return objection->text;
    const Moment due{std::chrono::seconds{entry.attribute(kDue).as_llong()}};
    if (whole) {
      write(*writer, element, due, Moment::min());
      continue;
    }
    PendingWrite pending{writer, due, std::make_unique<pugi::xml_document>()};
    pending.document->append_copy(element);
    pending_.push_back(std::move(pending));
  }
  return "";
}

}  // namespace lamp::controller
