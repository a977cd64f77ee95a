#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <filesystem>
#include <functional>

#include "editor/dialogs/dialog_body.h"
#include "editor/front_end/qt_front_end.h"
#include "editor/history/page_subject.h"
#include "workbench/draft_store.h"
#include "workbench/page_snapshot.h"

namespace editor {

/// Keeps what was entered into an open page in a file, so that it survives the end of the program:
/// written in a pause of the typing, offered when the page is opened after a crash, dropped when
/// the page closes.
class DraftKeeper : public QObject {
 public:
  static constexpr int Pause = 300;     ///< milliseconds without a change, then it is written
  static constexpr int Longest = 3000;  ///< so long a change waits at most while typing goes on

  using Teller = std::function<void(const QString& text)>;

  /// @p page and @p frontEnd must outlive this. @p tell is called when a draft can't be kept or
  /// read, once for each reason.
  DraftKeeper(const std::filesystem::path& folder, const PageSubject& subject, DialogBody& page,
              QtFrontEnd& frontEnd, Teller tell);
  ~DraftKeeper() override;

 private:
  void note();
  void save();
  void offer();
  void tellProblem();

  DialogBody& page_;
  QtFrontEnd& frontEnd_;
  Teller tell_;
  std::string told_;
  workbench::DraftStore store_;
  workbench::PageSnapshot opened_;
  std::optional<workbench::Draft> found_;
  workbench::PageValues saved_;
  QTimer pause_;
  QElapsedTimer since_;  // the first change that is not written
};

}  // namespace editor
