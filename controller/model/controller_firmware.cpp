#include <algorithm>
#include <mutex>
#include <shared_mutex>

#include "controller/model/base64.h"
#include "controller/model/controller.h"
#include "controller/model/data_folder.h"
#include "controller/model/firmware.h"
#include "controller/model/names.h"
#include "controller/model/value_rules.h"
#include "controller/storage/random_text.h"

namespace lamp::controller {
namespace fs = std::filesystem;
using data_folder::kUnfinished;

namespace {

Objection partsOf(pugi::xml_node root, pugi::xml_node& element, pugi::xml_node& file) {
  if (std::string_view(root.name()) != names::kDeviceCfg) {
    return malformed("The root of the request is " + quoted(root.name()) +
                     "; it must be <deviceCfg>.");
  }
  element = root.child(names::kFirmwareCommand);
  file = root.child(names::kFirmwareFile);
  if (!element || !file) {
    return unacceptable("Firmware", "the request must hold <firmwareFile> and <E03>");
  }
  for (const pugi::xml_node child : root.children()) {
    if (child != element && child != file && child.type() == pugi::node_element) {
      return unacceptable("Firmware", "the element " + quoted(child.name()) +
                                          " is unexpected; send <firmwareFile> and <E03> once");
    }
  }
  if (!element.attribute(names::kActDate)) {
    return unacceptable("E03", "ActDate is missing; it must be 14 digits and S or W");
  }
  return std::nullopt;
}

}  // namespace

Reply Controller::takeFirmware(const Request& request) {
  pugi::xml_node element;
  pugi::xml_node file;
  if (const auto objection = partsOf(request.root(), element, file)) {
    return Reply::refusal(*objection);
  }
  FirmwareArrival arrival;
  arrival.write = SectionWrite{&firmwareWriter(), {}, clock_.now(), clock_.now()};
  std::string present;
  {
    const std::shared_lock lock(mutex_);
    if (const auto objection = activationOf(element, arrival.write.due)) {
      return Reply::refusal(*objection);
    }
    present =
        settings_.inForce().section(names::kGeneral).attribute(names::kFirmwareVersion).value();
  }
  const auto bytes = decodeBase64(file.text().get());
  if (!bytes) return Reply::refusal(unacceptable("firmwareFile", "the text is no base64"));
  const FirmwareImage image =
      inspectFirmware(*bytes, element.attribute(names::kFirmware).value(), present);
  if (!image.fault.empty()) {
    return Reply::refusal(
        unacceptable("firmwareFile", image.fault + "; choose a firmware file (*.tar)"));
  }
  arrival.name = image.fileName;
  if (const std::string fault = keepIncoming(*bytes, arrival.incoming); !fault.empty()) {
    return Reply::refusal({500, "The firmware could not be kept: " + fault + "."});
  }
  pugi::xml_document update;
  arrival.write.element = update.append_copy(element);
  putAttribute(arrival.write.element, names::kNewVersion, image.version.c_str());
  Reply reply = answerTo(arrival);
  if (reply.status != 200 && !arrival.incoming.empty()) {
    disk_->remove(dataFolder_ / data_folder::kFirmware / arrival.incoming);
  }
  return reply;
}

// Under a name of its own until the command is kept: another image of the same name may be there.
// A name that an earlier command had would let that command, when it is carried out again after a
// restart, take this image for its own.
std::string Controller::keepIncoming(std::string_view bytes, std::string& name) {
  if (dataFolder_.empty()) return "";
  const fs::path folder = dataFolder_ / data_folder::kFirmware;
  std::string fault = disk_->makeFolder(folder);
  if (!fault.empty()) return fault;
  name = "incoming-" + randomHex(2) + kUnfinished;
  {
    const std::unique_ptr<DiskFile> file = disk_->create(folder / name, fault);
    if (!file) return fault;
    fault = file->append(bytes);
    if (fault.empty()) fault = file->flush();
  }
  if (fault.empty()) fault = disk_->flushFolder(folder);
  if (!fault.empty()) disk_->remove(folder / name);
  return fault;
}

void Controller::apply(const FirmwareArrival& change) {
  if (!change.incoming.empty() && !dataFolder_.empty()) {
    arrivals_.push_back({change.incoming, change.name});
    noteFault(nameArrivals());
  }
  apply(change.write);
}

// A disk that can't rename just now is asked again. An image that is not there under its first name
// has got its own already: the change is being carried out again after a restart.
std::string Controller::nameArrivals() {
  const fs::path folder = dataFolder_ / data_folder::kFirmware;
  while (!arrivals_.empty()) {
    const auto& [incoming, name] = arrivals_.front();
    std::vector<std::string> files;
    const auto has = [&](const std::string& file) {
      return std::find(files.begin(), files.end(), file) != files.end();
    };
    std::string fault = disk_->list(folder, files);
    const bool arrived = has(incoming);
    if (fault.empty() && arrived) fault = disk_->rename(folder / incoming, folder / name);
    if (fault.empty() && (arrived || has(name))) fault = disk_->flushFolder(folder);
    if (!fault.empty()) return "a firmware can't get its name: " + fault;
    arrivals_.erase(arrivals_.begin());
  }
  return "";
}

std::string Controller::finishFiles() {
  const std::lock_guard lock(mutex_);
  return nameArrivals();
}

}  // namespace lamp::controller
