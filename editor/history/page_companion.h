#pragma once

#include <QtCore/QObject>
#include <functional>

#include "editor/history/draft_keeper.h"
#include "editor/history/page_subject.h"
#include "workbench/send_journal.h"

class QPushButton;

namespace editor {

class DialogWindow;

/// What the editor adds to the window of a settings page as long as it is open: the button that
/// opens the history of the page's section, and word of what the page sent when it closes.
class PageCompanion : public QObject {
 public:
  /// All must outlive this. @p journal is null where nothing is put on record.
  PageCompanion(DialogWindow& window, PageSubject subject, const workbench::SendJournal* journal,
                const workbench::ExchangeRecord& record);
  ~PageCompanion() override;

  /// Keeps what is entered in @p folder from now on. @p tell is called with a text when it can't.
  void keepDraft(const std::filesystem::path& folder, QtFrontEnd& frontEnd,
                 DraftKeeper::Teller tell);

  const PageSubject& subject() const { return subject_; }
  /// Null for a window without a row of buttons at its foot.
  QPushButton* historyButton() const { return history_; }

  /// Called at the end of a page that sent its section and was accepted, with the parameters that
  /// lead to its controller and the number of the exchange.
  std::function<void(const PageSubject&, const XCBasicString& parameters, std::size_t exchange)>
      onSent;

 private:
  void addHistory();

  DialogWindow& window_;
  PageSubject subject_;
  const workbench::SendJournal* journal_;
  const workbench::ExchangeRecord& record_;
  const std::size_t before_;  // exchanges when the page opened
  QPushButton* history_ = nullptr;
  std::unique_ptr<DraftKeeper> draft_;
};

}  // namespace editor
