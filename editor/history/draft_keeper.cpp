#include "editor/history/draft_keeper.h"

#include "editor/history/history_model.h"
#include "editor/history/put_report_text.h"
#include "editor/qt_text.h"
#include "workbench/send_log.h"

namespace editor {

DraftKeeper::DraftKeeper(const std::filesystem::path& folder, const PageSubject& subject,
                         DialogBody& page, QtFrontEnd& frontEnd, Teller tell)
    : page_(page),
      frontEnd_(frontEnd),
      tell_(std::move(tell)),
      store_(folder, subject.device.id, subject.written),
      opened_(page.dialog()),
      found_(store_.load()) {
  tellProblem();
  if (!store_.isHeld()) return;
  pause_.setSingleShot(true);
  connect(&pause_, &QTimer::timeout, this, [this] { save(); });
  page_.onNoted = [this] { note(); };
  // In front of the page, which is shown first.
  if (found_) QTimer::singleShot(0, this, [this] { offer(); });
}

DraftKeeper::~DraftKeeper() {
  page_.onNoted = nullptr;
  store_.drop();
}

void DraftKeeper::tellProblem() {
  if (store_.problem().empty() || store_.problem() == told_) return;
  told_ = store_.problem();
  tell_(caption(host::TextId::DraftFault, XCBasicString::FromUtf8(told_)));
}

void DraftKeeper::note() {
  if (!pause_.isActive() || !since_.isValid()) since_.start();
  if (!pause_.isActive() || since_.elapsed() < Longest - Pause) pause_.start(Pause);
}

void DraftKeeper::save() {
  since_.invalidate();
  if (page_.dialog().HasEnded()) return;
  workbench::PageValues values = opened_.changed(page_.dialog());
  if (values == saved_) return;
  if (values.empty())
    store_.drop();
  else if (!store_.save({workbench::momentText(std::chrono::system_clock::now()), values}))
    return tellProblem();
  saved_ = std::move(values);
}

void DraftKeeper::offer() {
  if (page_.dialog().HasEnded()) return;
  const QString when = HistoryModel::momentOf(found_->when);
  const host::MessageAnswer answer = frontEnd_.ask(
      {&page_.dialog(),
       XCBasicString::Format(XCLoadString(host::TextId::DraftOffer), XCBasicString(hostText(when))),
       host::MessageButtons::yesNo, host::MessageIcon::question});
  if (answer != host::MessageAnswer::yes) return;
  const workbench::PutReport report = workbench::putValues(page_.dialog(), found_->values);
  page_.noteChange();
  // The controller may have changed since; what is lost is told.
  if (!report.refused.empty())
    frontEnd_.ask({&page_.dialog(), XCBasicString(hostText(putReportText(report))),
                   host::MessageButtons::ok, host::MessageIcon::warning});
}

}  // namespace editor
