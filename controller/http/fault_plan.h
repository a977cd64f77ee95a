#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace lamp::controller {

/// The ways in which the controller can be made to misbehave.
enum class FaultKind {
  NoAnswer,
  Delay,
  CloseMidReply,
  TruncatedXml,
  Garbage,
  WrongSection,
  NoSection,
  Empty,
  Refuse,
  RefuseEverySecondWrite,
  ApplyLoseReply,
  RestartMidCommand,
  ClockJump,
  Oversize,
  Deep,
  Dtd
};

/// One fault on order: "NAME[:ARGUMENT][@COMMAND][#COUNT]".
struct Fault {
  FaultKind kind = FaultKind::Delay;
  std::string text;      ///< as it was written
  std::string argument;  ///< may be empty
  long number = 0;       ///< the argument as seconds, bytes or depth
  int command = -1;      ///< only this command; -1 every one
  int remaining = -1;    ///< how many commands are still to suffer; -1 no end
};

/// A kind of fault for people to choose from.
struct FaultDescription {
  std::string name;
  std::string
      argument;        ///< what stands behind the colon: "seconds", "text", ...; empty for nothing
  long usual = 0;      ///< the argument where none is given
  std::string effect;  ///< what the client sees
};

/// Every kind of fault.
std::vector<FaultDescription> describeFaults();

/// Reads a fault. Returns what is wrong with it, with the faults that there are, or an empty text.
std::string parseFault(const std::string& text, Fault& fault);

/// The faults that are on order. Safe to use from several threads.
class FaultPlan {
 public:
  void add(Fault fault);
  void clear();
  /// As they were written, for people.
  std::vector<std::string> list() const;

  /// The faults that this command suffers; counts them down. `isWrite` tells whether the command
  /// changes the controller.
  std::vector<Fault> take(int command, bool isWrite);

 private:
  mutable std::mutex mutex_;
  std::vector<Fault> faults_;
  unsigned writes_ = 0;
};

/// The first fault of a kind, or null.
const Fault* findFault(const std::vector<Fault>& faults, FaultKind kind);

}  // namespace lamp::controller
