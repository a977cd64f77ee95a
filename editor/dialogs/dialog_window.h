#pragma once

#include <QtWidgets/QDialog>

#include "editor/dialogs/dialog_body.h"

class QEventLoop;
class QScrollArea;

namespace editor {

/// A dialog as a window of its own. It is as large as its content where the screen allows it, and
/// scrolls where it does not; OK and Cancel stay in sight. Where the dialog's template wants it, it
/// gets no smaller than it was when it opened.
class DialogWindow : public QDialog {
 public:
  DialogWindow(XCBaseDlg& dialog, QWidget* parent);
  ~DialogWindow() override;

  DialogBody& body() const { return *body_; }

  /// Shows the window and works on its events until the dialog has ended.
  void run();

  /// Adds a button of the editor's own between the dialog's buttons. False, and nothing taken,
  /// where the dialog has no such row.
  bool addToFoot(QWidget* button);

  void done(int result) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void followDialog();
  void fit(bool grow);
  bool openingSizeIsLeast() const;
  host::Control* controlWithFocus() const;

  XCBaseDlg& dialog_;
  QScrollArea* scroll_;
  std::unique_ptr<DialogBody> body_;
  QEventLoop* loop_ = nullptr;
  /// Below this nobody makes the window smaller; empty where only the content decides.
  QSize leastSize_;
};

}  // namespace editor
