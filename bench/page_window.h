#pragma once

#include <string>

#include "bench/headless.h"
#include "bench/table_window.h"
#include "editor/front_end/qt_front_end.h"

namespace bench {

/// Opens the node table page in the editor's windows.
class PageOpener {
 public:
  /// Puts the editor's front end in the place of the headless user.
  explicit PageOpener(Headless& headless);

  /// Opens the page over a reply, hands it to @p then, and closes it.
  void open(const std::string& xml, const AtWindow& then);

 private:
  Headless& headless_;
  editor::QtFrontEnd frontEnd_;
};

}  // namespace bench
