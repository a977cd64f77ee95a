#pragma once

#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <QtWidgets/QWidget>

#include "editor/dialogs/dialog_body.h"
#include "editor/front_end/qt_front_end.h"
#include "editor/front_end/widget_wnd.h"
#include "tests/host/support/sample_dialog.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/settings_fake.h"

namespace support {

/// The sample dialog shown in a window by the Qt front end, with mouse and keys to use it.
class EditorRig : public testing::Test {
 protected:
  using Id = sample::Id;

  EditorRig();
  ~EditorRig() override;

  /// Shows the dialog as a child of the window.
  void open();
  /// Works on what is queued.
  static void settle();

  template <class Widget>
  Widget& widget(int id) {
    return dynamic_cast<Widget&>(*renderer(id).focusWidget());
  }
  template <class Renderer>
  Renderer& rendererAs(int id) {
    return dynamic_cast<Renderer&>(renderer(id));
  }
  editor::ControlRenderer& renderer(int id);

  /// Rows "0", "1" ... with an attribute "k" and one "even" with "yes" or "no".
  void fillRows(host::ListControl& list, std::size_t count);

  support::FixedClock clock_;
  support::SettingsFake settings_;
  editor::QtFrontEnd frontEnd_;
  sample::Module module_;
  QWidget window_;
  editor::WidgetWnd wnd_;
  XmlDocument rows_;
  sample::Dialog dialog_;
};

}  // namespace support
