#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "workbench/send_journal.h"
#include "workbench/wire/exchange_record.h"

namespace workbench {

/// Puts on record what a program sends to controllers: every command that is no read, with who sent
/// it, what it was and what was answered. A journal that can't be written is told once and keeps
/// nobody from sending.
class SendLog {
 public:
  using Now = std::function<std::chrono::system_clock::time_point()>;

  /// A document longer than this is kept as its size and digest.
  static constexpr std::size_t LongestDocument = 16U * 1024 * 1024;

  /// @p record must outlive this. @p program names the program in the entries.
  SendLog(SendJournal journal, ExchangeRecord& record, std::string program,
          Now now = &std::chrono::system_clock::now);
  SendLog(const SendLog&) = delete;
  SendLog& operator=(const SendLog&) = delete;
  ~SendLog();

  const SendJournal& journal() const { return journal_; }

  /// Called with every entry, written or not; and once with the reason when one can't be written,
  /// which goes to standard error where nobody listens.
  std::function<void(const JournalEntry&)> onEntry;
  std::function<void(const std::string&)> onProblem;

 private:
  void note(const host::ExchangeRequest& request, const ExchangeEntry& entry);
  JournalEntry made(const host::ExchangeRequest& request, const ExchangeEntry& entry) const;
  std::string lastReadOf(const std::string& section, const ExchangeEntry& before) const;
  enum class Outcome { lost, kept };
  void tell(Outcome outcome, const std::string& problem);

  SendJournal journal_;
  ExchangeRecord& record_;
  std::string program_;
  Now now_;
  std::string who_;
  bool toldOfLoss_ = false;
  bool toldOfProblem_ = false;
};

/// A moment in UTC as the journal writes it, "2025-03-15T10:00:00.000Z".
std::string momentText(std::chrono::system_clock::time_point moment);

}  // namespace workbench
