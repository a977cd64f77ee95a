#include "bench/page_window.h"

#include <QtCore/QTimer>
#include <QtWidgets/QLineEdit>

#include "editor/dialogs/dialog_window.h"
#include "editor/renderers/list_renderer.h"
#include "editor/renderers/list_view.h"
#include "host/services/drivers.h"
#include "pages/node_table_page.h"

namespace bench {
namespace {

constexpr std::size_t Reference = 1;

class PageWindow : public TableWindow {
 public:
  explicit PageWindow(editor::DialogWindow& window)
      : list_(dynamic_cast<editor::ListRenderer&>(renderer(window, "nodes"))),
        reference_(dynamic_cast<QLineEdit&>(*renderer(window, "reference").focusWidget())) {}

  QTableView& view() override { return list_.view(); }
  // As the keyboard does it.
  void type(const QString& text) override {
    reference_.setText(text);
    emit reference_.textEdited(text);
  }
  void sort() override { list_.view().onHeader(Reference); }
  void filter(const QString& text) override { list_.filterLine()->setText(text); }

 private:
  static editor::ControlRenderer& renderer(editor::DialogWindow& window, const char* name) {
    const host::Control* control = window.body().dialog().FindControl(name);
    return *window.body().renderer(control->id());
  }

  editor::ListRenderer& list_;
  QLineEdit& reference_;
};

XCDriverDeviceZelLampManager& driver() {
  static XCDriverDeviceZelLampManager made{XCBasicString(u"ZELLAMPMANAGER"), XCBasicString(u"{D1}"),
                                           XCBasicString(u"Main street"), XCBasicString(u"")};
  return made;
}

}  // namespace

PageOpener::PageOpener(Headless& headless) : headless_(headless) {
  host::Services services = host::services();
  services.frontEndService = &frontEnd_;
  host::installServices(services);
}

void PageOpener::open(const std::string& xml, const AtWindow& then) {
  headless_.answer(xml);
  QTimer::singleShot(0, [&] {
    PageWindow window(*frontEnd_.topWindow());
    then(window);
    frontEnd_.topWindow()->body().dialog().EndDialog(IDCANCEL);
  });
  CDlgE04CfgZelLampManager(&driver(), nullptr).DoModal();
}

}  // namespace bench
