#include "controller/model/change.h"

#include "controller/model/names.h"
#include "controller/model/text_writer.h"

namespace lamp::controller {
namespace {

// One element for each kind of change, and their attributes.
constexpr const char* kWrite = "write";
constexpr const char* kFirmware = "firmware";
constexpr const char* kClock = "clock";
constexpr const char* kActivation = "activation";
constexpr const char* kInput = "input";
constexpr const char* kTasks = "tasks";
constexpr const char* kUsage = "usage";
constexpr const char* kLamp = "lamp";

constexpr const char* kNow = "now";
constexpr const char* kDue = "due";
constexpr const char* kOffset = "offset";
constexpr const char* kNumber = "number";
constexpr const char* kActive = "active";
constexpr const char* kLast = "last";
constexpr const char* kIncoming = "incoming";
constexpr const char* kName = "name";
constexpr const char* kLitSeconds = "s";
constexpr const char* kWattSeconds = "ws";
constexpr const char* kCondition = "condition";
constexpr const char* kSince = "since";

template <class Time>
long long secondsOf(Time time) {
  return static_cast<long long>(time.time_since_epoch().count());
}

Moment momentIn(pugi::xml_node record, const char* name) {
  return Moment{std::chrono::seconds{record.attribute(name).as_llong()}};
}

// Puts the frame of a change around what `fill` adds to it.
class Printer {
 public:
  explicit Printer(const char* kind) : record_(document_.append_child(kind)) {}

  template <class Value>
  Printer& add(const char* name, const Value& value) {
    record_.append_attribute(name).set_value(value);
    return *this;
  }
  pugi::xml_node record() const { return record_; }

  std::string text() const {
    TextWriter writer;
    record_.print(writer, "", pugi::format_raw);
    writer.text += '\n';
    return std::move(writer.text);
  }

  // The element is printed in its place, not copied: it may be a section of many megabytes.
  std::string textAround(pugi::xml_node element) const {
    std::string frame = text();
    frame.replace(frame.rfind("/>"), std::string::npos, ">");
    TextWriter writer{std::move(frame)};
    element.print(writer, "", pugi::format_raw);
    writer.text += std::string("</") + record_.name() + ">\n";
    return std::move(writer.text);
  }

 private:
  pugi::xml_document document_;
  pugi::xml_node record_;
};

std::string print(const SectionWrite& change) {
  return Printer(kWrite)
      .add(kNow, secondsOf(change.now))
      .add(kDue, secondsOf(change.due))
      .textAround(change.element);
}

std::string print(const FirmwareArrival& change) {
  return Printer(kFirmware)
      .add(kNow, secondsOf(change.write.now))
      .add(kDue, secondsOf(change.write.due))
      .add(kIncoming, change.incoming.c_str())
      .add(kName, change.name.c_str())
      .textAround(change.write.element);
}

std::string print(const ClockSetting& change) {
  return Printer(kClock)
      .add(kOffset, static_cast<long long>(change.offset.count()))
      .add(kNow, secondsOf(change.now))
      .text();
}

std::string print(const Activation& change) {
  return Printer(kActivation).add(kNow, secondsOf(change.now)).text();
}

std::string print(const InputSwitch& change) {
  return Printer(kInput).add(kNumber, change.number).add(kActive, change.active ? 1 : 0).text();
}

std::string print(const TaskRuns& change) {
  const Printer printer(kTasks);
  for (const TaskProgress& task : change.tasks) {
    pugi::xml_node row = printer.record().append_child(names::kTask);
    row.append_attribute(names::kTaskNumber).set_value(task.task.c_str());
    row.append_attribute(kLast).set_value(secondsOf(task.last));
  }
  return printer.text();
}

void putHealth(const LampHealth& health, pugi::xml_node row) {
  row.append_attribute(kCondition).set_value(textOf(health.condition));
  row.append_attribute(kSince).set_value(secondsOf(health.since));
}

std::string print(const UsageCount& change) {
  const Printer printer(kUsage);
  for (const LampUsage& lamp : change.lamps) {
    pugi::xml_node row = printer.record().append_child(names::kNode);
    row.append_attribute(names::kNodeId).set_value(lamp.nodeId.c_str());
    row.append_attribute(kLitSeconds).set_value(lamp.litSeconds);
    row.append_attribute(kWattSeconds).set_value(lamp.wattSeconds);
    if (lamp.health.condition != LampCondition::AsBuilt) putHealth(lamp.health, row);
  }
  return printer.text();
}

std::string print(const LampTouch& change) {
  const Printer printer(kLamp);
  printer.record().append_attribute(names::kNodeId).set_value(change.nodeId.c_str());
  putHealth(change.health, printer.record());
  return printer.text();
}

std::string readHealth(pugi::xml_node row, LampHealth& health) {
  const char* text = row.attribute(kCondition).value();
  health.since = momentIn(row, kSince);
  return readCondition(text, health.condition) ? "" : std::string("there is no condition ") + text;
}

SectionWrite readWrite(pugi::xml_node record, const SectionWriter* writer) {
  return SectionWrite{writer, record.first_child(), momentIn(record, kDue), momentIn(record, kNow)};
}

std::string readSectionWrite(pugi::xml_node record, Change& change) {
  const SectionWriter* writer = findWriter(record.first_child().name());
  if (writer == nullptr) {
    return std::string("there is no section \"") + record.first_child().name() +
           "\" that can be written";
  }
  change = readWrite(record, writer);
  return "";
}

std::string readFirmware(pugi::xml_node record, Change& change) {
  if (std::string_view(record.first_child().name()) != names::kFirmwareCommand) {
    return "a firmware without its section";
  }
  change = FirmwareArrival{readWrite(record, &firmwareWriter()),
                           record.attribute(kIncoming).value(), record.attribute(kName).value()};
  return "";
}

std::string readClock(pugi::xml_node record, Change& change) {
  change = ClockSetting{std::chrono::seconds{record.attribute(kOffset).as_llong()},
                        momentIn(record, kNow)};
  return "";
}

std::string readActivation(pugi::xml_node record, Change& change) {
  change = Activation{momentIn(record, kNow)};
  return "";
}

std::string readInput(pugi::xml_node record, Change& change) {
  change = InputSwitch{record.attribute(kNumber).as_int(), record.attribute(kActive).as_int() == 1};
  return "";
}

std::string readTasks(pugi::xml_node record, Change& change) {
  TaskRuns runs;
  for (const pugi::xml_node row : record.children()) {
    runs.tasks.push_back(
        TaskProgress{row.attribute(names::kTaskNumber).value(),
                     CivilTime{std::chrono::seconds{row.attribute(kLast).as_llong()}}});
  }
  change = std::move(runs);
  return "";
}

std::string readUsage(pugi::xml_node record, Change& change) {
  UsageCount usage;
  for (const pugi::xml_node row : record.children()) {
    LampUsage lamp{row.attribute(names::kNodeId).value(),
                   row.attribute(kLitSeconds).as_double(),
                   row.attribute(kWattSeconds).as_double(),
                   {}};
    if (std::string fault = readHealth(row, lamp.health); !fault.empty()) return fault;
    usage.lamps.push_back(std::move(lamp));
  }
  change = std::move(usage);
  return "";
}

std::string readLamp(pugi::xml_node record, Change& change) {
  LampTouch touch{record.attribute(names::kNodeId).value(), {}};
  std::string fault = readHealth(record, touch.health);
  change = std::move(touch);
  return fault;
}

struct Reader {
  const char* kind;
  std::string (*read)(pugi::xml_node record, Change& change);
};

constexpr Reader kReaders[] = {
    {kWrite, readSectionWrite},    {kFirmware, readFirmware}, {kClock, readClock},
    {kActivation, readActivation}, {kInput, readInput},       {kTasks, readTasks},
    {kUsage, readUsage},           {kLamp, readLamp},
};

}  // namespace

std::string printChange(const Change& change) {
  return std::visit([](const auto& each) { return print(each); }, change);
}

std::string readChange(pugi::xml_node record, Change& change) {
  const std::string_view kind = record.name();
  for (const Reader& reader : kReaders) {
    if (kind == reader.kind) return reader.read(record, change);
  }
  return "a change of the kind \"" + std::string(kind) +
         "\" is not known; it was made by a newer version of this program";
}

}  // namespace lamp::controller
