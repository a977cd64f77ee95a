#include "editor/history/page_subject.h"

namespace editor {
namespace {

// Pages are named after the section that they send: "CDlgE04CfgZelLampManager".
constexpr std::string_view Beginning = "CDlgE";
constexpr std::size_t Digits = 2;

// Group schedules are read and sent under other numbers where the controller reports its inputs.
constexpr std::string_view Schedules = "06";
constexpr std::string_view ClockSchedules = "17";

}  // namespace

std::optional<PageSubject> subjectOf(const XCBaseDlg& dialog,
                                     const workbench::ExchangeRecord& record) {
  const std::string_view name = dialog.ClassName();
  if (!name.starts_with(Beginning) || record.entries().empty()) return std::nullopt;
  std::string number(name.substr(Beginning.size(), Digits));
  const workbench::ExchangeEntry& last = record.entries().back();
  std::string read = last.kind == host::CommandKind::get && last.ok ? last.section : std::string();
  if (read.starts_with('L')) read.erase(0, 1);
  if (number == Schedules && read == ClockSchedules) number = read;
  PageSubject subject{.device = workbench::deviceOf(last.uri), .written = "E" + number, .read = {}};
  if (read == number) subject.read = "L" + number;
  return subject;
}

}  // namespace editor
