#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include "host/ui/control.h"
#include "host/ui/user_input.h"

class QWidget;

namespace editor {

/// Draws one control of a dialog with Qt widgets and brings the user's gestures to it. The control
/// is the truth: a gesture goes through UserInput, then the widget shows what became of it.
class ControlRenderer : public QObject {
 public:
  static constexpr unsigned Everything = ~0U;

  ControlRenderer(XCBaseDlg& dialog, host::Control& control);

  host::Control& control() const { return control_; }

  /// The widget that the arrangement places. It belongs to its Qt parent.
  virtual QWidget& widget() = 0;
  /// The widget that takes the keyboard, none for a control that never does.
  virtual QWidget* focusWidget() { return nullptr; }
  /// The widgets that the Tab key visits, in order.
  virtual QList<QWidget*> tabStops();
  /// Whether the widget makes use of room beyond its natural height.
  virtual bool expandsVertically() const { return false; }

  /// Shows what differs: bits of host::Change.
  void sync(unsigned changes);
  /// Shows the control only when it has a place in the arrangement.
  void setArranged(bool arranged);

 protected:
  virtual void show(unsigned changes) = 0;
  /// What the widget shows by itself after a gesture, whether or not the control took it.
  virtual unsigned gestureChanges() const { return static_cast<unsigned>(host::Change::state); }

  static bool has(unsigned changes, host::Change change) {
    return (changes & static_cast<unsigned>(change)) != 0;
  }
  XCBaseDlg& dialog() const { return dialog_; }
  bool isSyncing() const { return syncing_; }

  /// Runs a gesture, which may open dialogs and take its time, and shows what became of it. Does
  /// nothing while the widget is being synchronised: its signals are then no gestures.
  template <class Gesture>
  void perform(Gesture gesture) {
    if (syncing_) return;
    const QPointer<QObject> alive(this);
    host::UserInput input(dialog_);
    gesture(input);
    if (alive) sync(control_.takeChanges() | gestureChanges());
  }

 private:
  XCBaseDlg& dialog_;
  host::Control& control_;
  bool syncing_ = false;
  bool arranged_ = true;
};

}  // namespace editor
