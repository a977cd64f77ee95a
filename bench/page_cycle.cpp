// One cycle of a page for counting instructions: the node table of 10,000 nodes read, a reference
// typed for all of them, and sent. count_instructions.py runs it.

#include <cstdio>

#include "bench/documents.h"
#include "bench/headless.h"
#include "host/services/drivers.h"
#include "pages/node_table_page.h"

namespace {

constexpr std::size_t Nodes = 10000;

void atPage(XCBaseDlg& page) {
  bench::selectAll(page, "nodes");
  bench::type(page, "reference", u"Lamp");
  bench::click(page, "ok");
}

}  // namespace

/// What is counted, by its name.
extern "C" [[gnu::noinline]] void countedCycle(XCDriver* driver) {
  CDlgE04CfgZelLampManager(driver, nullptr).DoModal();
}

int main() {
  bench::Headless headless;
  headless.answer(bench::nodeTable(Nodes));
  headless.atDialogs(atPage);
  XCDriverDeviceZelLampManager driver{XCBasicString(u"ZELLAMPMANAGER"), XCBasicString(u"{D1}"),
                                      XCBasicString(u"Main street"), XCBasicString(u"")};
  countedCycle(&driver);
  std::printf("%zu\n", headless.written());
  return headless.written() > 0 ? 0 : 1;
}
