#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "controller/delivery/delivery_settings.h"
#include "controller/model/change.h"
#include "controller/model/change_log.h"
#include "controller/model/controller_clock.h"
#include "controller/model/fair_mutex.h"
#include "controller/model/lamp_street.h"
#include "controller/model/live_view.h"
#include "controller/model/port_switch.h"
#include "controller/model/reply.h"
#include "controller/model/request.h"
#include "controller/model/section_reader.h"
#include "controller/model/settings.h"
#include "controller/model/street_generator.h"
#include "controller/model/task_schedule.h"
#include "controller/storage/disk.h"

namespace lamp::controller {

/// The lamp controller: its settings, its clock and what each command does to them. Safe to use
/// from several threads; each command is carried out whole or not at all. Every change of the state
/// is kept in the change log before it takes effect.
class Controller {
 public:
  /// `id` is the identifier, 1 to 16 characters; the clock must outlive the controller.
  Controller(std::string id, ControllerClock& clock);

  /// Makes a new street, before the controller is used by others.
  void buildStreet(const StreetPlan& plan);
  /// The sections, while no other thread uses the controller.
  const Settings& settings() const { return settings_; }

  /// Folder for firmware and reports; without one they are not kept. The disk must outlive the
  /// controller.
  void setDataFolder(std::filesystem::path folder, Disk& disk = machineDisk());
  /// Removes what was being written into the data folder when a program was killed. Not while
  /// commands are carried out.
  std::string tidyDataFolder();
  /// Does to files what commands that are kept have yet to do to them, where the disk failed them.
  /// Answers what went wrong, or an empty text: those commands must not be forgotten then.
  std::string finishFiles();
  /// Where changes are kept from now on; null: nowhere. It must outlive its use, and is set while
  /// no other thread uses the controller.
  void setChangeLog(ChangeLog* log) { log_ = log; }
  /// Lets the day types of a calendar go before the programs of the lamps.
  void followCalendar(DayCalendar calendar);
  const std::string& id() const { return id_; }

  /// Carries out one command. Unknown numbers and bad documents are refused.
  Reply perform(int command, std::string body);

  /// Brings into force what has become due, lets the lamps burn on, and runs the tasks whose time
  /// has come; their reports go into the data folder. True when the state changed.
  bool advance();
  /// What went wrong of late in what is done without a command (`advance` tries it again); empty
  /// when nothing did. Asked once, it is forgotten.
  std::string takeFault();
  /// Keeps what the lamps have used so far, where they have used anything since the last time.
  /// Answers what went wrong, or an empty text.
  std::string keepUsage();

  /// Sets the state of an input, 1 to 8. Answers what went wrong, or an empty text.
  std::string setInputState(int number, bool active);
  /// Makes a lamp faulty or good. Answers what is wrong, or an empty text.
  std::string setLampCondition(const std::string& nodeId, LampCondition condition);

  /// Prints the whole state as a document behind what `text` holds already.
  void printState(std::string& text) const;
  /// Takes a state that `printState` made, the identifier with it. Returns what is wrong with it,
  /// or an empty text; the controller is of no use after a fault.
  std::string loadState(std::string_view text);
  /// Carries out changes that were kept, in order; they are not kept again. Returns what is wrong
  /// with them, or an empty text; the controller is of no use after a fault.
  std::string replay(std::string_view records);

  /// What the controller's wall clock shows, for people.
  std::string date() const;
  /// Sets the wall clock. Answers what went wrong, or an empty text.
  std::string setDate(CivilTime civil);

  /// What can be seen of the street now, and what it is laid out like.
  LiveView view();
  /// One lamp; none where no node has the identity.
  std::optional<LampView> lampView(const std::string& nodeId);
  StreetPlanView planView();

  /// What is in force about sending reports and about the time server.
  DeliverySettings deliverySettings() const;

  /// One line for people: identifier, date, nodes, pending writes. Waits for nobody, like `date`.
  std::string statusLine() const;

 private:
  using Handler = Reply (Controller::*)(const Request&);
  static Handler handlerOf(int command);

  Reply readSettings(const Request& request);
  Reply readLiveSection(pugi::xml_node section);
  Reply writeSettings(const Request& request);
  Reply setClock(const Request& request);
  Reply identify(const Request& request);
  Reply moveAddress(const Request& request);
  Reply takeFirmware(const Request& request);
  Reply readNodeFile(const Request& request);

  // Keeps a change and carries it out, both or neither; called without the lock.
  std::string commit(const Change& change);
  std::string commit(const Change& change, const std::function<void()>& apply);
  std::string commitClock(Moment moment);
  Reply answerTo(const Change& change);
  std::string bringIntoForce();
  std::string followClock();
  std::string replayOne(pugi::xml_node record);

  // These and all below are called with the lock: `apply` with that of a writer.
  void apply(const SectionWrite& change);
  void apply(const FirmwareArrival& change);
  void apply(const ClockSetting& change);
  void apply(const Activation& change);
  void apply(const InputSwitch& change);
  void apply(const TaskRuns& change);
  void apply(const UsageCount& change);
  void apply(const LampTouch& change);
  void activate(Moment now);
  void noteStale(const SectionWrite& change);
  void noteStale(std::string_view nodeId);
  void noteClock(const ClockSetting& change);
  void noteFault(std::string fault);

  ZoneRule zone() const;
  void noteSummary();
  ReplyHead head() const;
  void settle(Moment now);
  void showLiveValues(pugi::xml_document& reply, const char* section);
  std::string nameArrivals();
  std::string reportOf(const DueReport& report, std::string_view format);
  UsageCount usage() const;
  std::string loadUsage(pugi::xml_node root);
  Objection activationOf(pugi::xml_node element, Moment& due) const;

  // Called without the lock.
  std::string runTasks();
  std::string keepReport(const DueReport& report);
  std::string keepIncoming(std::string_view bytes, std::string& name);

  std::string id_;
  ControllerClock& clock_;
  Disk* disk_ = nullptr;
  std::filesystem::path dataFolder_;
  ChangeLog* log_ = nullptr;
  mutable FairMutex mutex_;
  Settings settings_;
  LampStreet street_;
  std::uint64_t version_ = 1;
  // What is asked for without waiting for anybody who reads or writes.
  std::atomic<ZoneRule> shownZone_{};
  std::atomic<std::size_t> shownNodes_ = 0;
  std::atomic<std::size_t> shownPending_ = 0;
  // What may have changed in force since the lamps were read.
  enum class Stale { Nothing, SomeNodes, Everything };
  Stale stale_ = Stale::Everything;
  std::vector<std::size_t> staleNodes_;
  std::chrono::seconds keptOffset_{0};
  double keptLitSeconds_ = 0;                                  // of all lamps
  std::vector<std::pair<std::string, std::string>> arrivals_;  // firmware to be renamed: from, to
  std::string fault_;
};

}  // namespace lamp::controller
