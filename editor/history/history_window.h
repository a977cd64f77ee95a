#pragma once

#include <QtWidgets/QDialog>

#include "editor/dialogs/dialog_body.h"
#include "editor/history/history_view.h"
#include "editor/history/page_subject.h"

class QLabel;
class QPushButton;

namespace editor {

/// The sends of a page's section in front of the page: former values go from here into the page, as
/// if they were typed there. Nothing is sent.
class HistoryWindow : public QDialog {
 public:
  /// @p page and @p journal must outlive this; @p parent is the page's window.
  HistoryWindow(const workbench::SendJournal& journal, const PageSubject& subject, DialogBody& page,
                QWidget* parent);

  HistoryView& view() const { return *view_; }
  QPushButton& formerButton() const { return *former_; }
  QPushButton& sentButton() const { return *sent_; }
  QString outcome() const;

 private:
  void put(const std::string& xml, const std::string& section);
  void followChoice();

  PageSubject subject_;
  DialogBody& page_;
  HistoryView* view_;
  QLabel* outcome_;
  QPushButton* former_;
  QPushButton* sent_;
};

}  // namespace editor
