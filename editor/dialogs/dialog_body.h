#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <functional>
#include <memory>
#include <vector>

#include "editor/renderers/control_renderer.h"
#include "host/dialogs/base_dlg.h"

class QWidget;

namespace editor {

class SidePane;

/// The widgets of one dialog: its controls in their arrangement, kept equal to the model. Changes
/// of the model are noted and shown together, once control is back in the event loop.
class DialogBody : public QObject {
 public:
  /// The widgets become children of @p owner. With @p separateFoot the row of OK and Cancel stands
  /// in a widget of its own.
  DialogBody(XCBaseDlg& dialog, QWidget& owner, bool separateFoot);
  ~DialogBody() override;

  XCBaseDlg& dialog() const { return dialog_; }
  QWidget& content() const { return *content_; }
  /// None when the dialog has no such row or it was not asked for.
  QWidget* foot() const { return foot_; }
  ControlRenderer* renderer(int id) const;
  /// What the editor shows beside controls, null for most dialogs.
  SidePane* sidePane() const { return pane_; }

  /// Something differs from what is shown: refresh() follows.
  void noteChange();
  void refresh();
  /// Called with every noteChange(), often within a gesture.
  std::function<void()> onNoted;
  /// Called at the end of every refresh.
  std::function<void()> onRefreshed;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void arrange(bool separateFoot);
  void nameForReaders();
  void orderTabs();
  void showFocus();

  XCBaseDlg& dialog_;
  std::vector<std::unique_ptr<ControlRenderer>> renderers_;
  QWidget* content_;
  QWidget* foot_ = nullptr;
  SidePane* pane_ = nullptr;
  host::Control* shownFocus_ = nullptr;
  bool refreshQueued_ = false;
};

}  // namespace editor
