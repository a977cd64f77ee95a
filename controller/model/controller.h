#pragma once

#include <filesystem>
#include <mutex>
#include <string>
#include <string_view>

#include "controller/delivery/delivery_settings.h"
#include "controller/model/controller_clock.h"
#include "controller/model/lamp_street.h"
#include "controller/model/live_view.h"
#include "controller/model/port_switch.h"
#include "controller/model/reply.h"
#include "controller/model/request.h"
#include "controller/model/section_reader.h"
#include "controller/model/settings.h"
#include "controller/model/task_schedule.h"

namespace lamp::controller {

/// The lamp controller: its settings, its clock and what each command does to them. Safe to use
/// from several threads; each command is carried out whole or not at all.
class Controller {
 public:
  /// `id` is the identifier, 1 to 16 characters; the clock must outlive the controller.
  Controller(std::string id, ControllerClock& clock);

  /// The sections, for building a street before the controller is used by others.
  Settings& settings() { return settings_; }

  /// Folder for firmware and reports; without one they are not kept.
  void setDataFolder(std::filesystem::path folder) { dataFolder_ = std::move(folder); }
  /// Lets the day types of a calendar go before the programs of the lamps.
  void followCalendar(DayCalendar calendar);
  const std::string& id() const { return id_; }

  /// Carries out one command. Unknown numbers and bad documents are refused.
  Reply perform(int command, std::string_view body);

  /// Brings into force what has become due, lets the lamps burn on, and runs the tasks whose time
  /// has come; their reports go into the data folder. True when the state changed.
  bool advance();
  /// What went wrong with the last reports; empty when nothing did.
  std::string reportFault() const;

  /// Sets the state of an input, 1 to 8. False for another number.
  bool setInputState(int number, bool active);

  /// Counts the changes, so that whoever saves knows what has been saved.
  std::uint64_t version() const;
  /// The whole state as a document, and the version that it shows.
  std::string printState(std::uint64_t& version) const;
  /// Takes a state that `printState` made, the identifier with it. Returns what is wrong with it,
  /// or an empty text; the controller is of no use after a fault.
  std::string loadState(std::string_view text);

  /// What the controller's wall clock shows, for people.
  std::string date() const;
  /// Sets the wall clock.
  void setDate(CivilTime civil);

  /// What can be seen of the street now, and what it is laid out like.
  LiveView view();
  StreetPlanView planView();

  /// What is in force about sending reports and about the time server.
  DeliverySettings deliverySettings() const;

  /// One line for people: identifier, date, nodes, pending writes.
  std::string statusLine() const;

 private:
  using Handler = Reply (Controller::*)(const Request&);
  static Handler handlerOf(int command);

  Reply readSettings(const Request& request);
  Reply writeSettings(const Request& request);
  Reply setClock(const Request& request);
  Reply identify(const Request& request);
  Reply moveAddress(const Request& request);
  Reply takeFirmware(const Request& request);
  Reply readNodeFile(const Request& request);

  ZoneRule zone() const;
  ReplyHead head() const;
  void settle(Moment now);
  void showLiveValues(pugi::xml_document& reply, const char* section);
  std::string keepReports(const std::vector<DueReport>& due);
  std::string reportOf(const DueReport& report, std::string_view format);
  void printUsage(pugi::xml_writer& out) const;
  void loadUsage(pugi::xml_node list);
  Objection activationOf(pugi::xml_node element, Moment& due) const;
  Objection firmwareOf(const Request& request, pugi::xml_node& element, pugi::xml_node& file) const;
  std::string keepFirmware(const std::string& name, std::string_view bytes) const;

  std::string id_;
  ControllerClock& clock_;
  std::filesystem::path dataFolder_;
  mutable std::mutex mutex_;
  Settings settings_;
  LampStreet street_;
  std::uint64_t version_ = 1;
  std::uint64_t streetVersion_ = 0;  // the version that the lamps were built from
  std::string reportFault_;
};

}  // namespace lamp::controller
