#pragma once

#include <QtWidgets/QDialog>

#include "editor/dialogs/dialog_body.h"

class QEventLoop;
class QScrollArea;

namespace editor {

/// A dialog as a window of its own. It is as large as its content where the screen allows it, and
/// scrolls where it does not; OK and Cancel stay in sight.
class DialogWindow : public QDialog {
 public:
  DialogWindow(XCBaseDlg& dialog, QWidget* parent);
  ~DialogWindow() override;

  DialogBody& body() const { return *body_; }

  /// Shows the window and works on its events until the dialog has ended.
  void run();

  void done(int result) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void followDialog();
  void fit(bool grow);
  host::Control* controlWithFocus() const;

  XCBaseDlg& dialog_;
  QScrollArea* scroll_;
  std::unique_ptr<DialogBody> body_;
  QEventLoop* loop_ = nullptr;
};

}  // namespace editor
