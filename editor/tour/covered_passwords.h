#pragma once

#include <QtWidgets/QLineEdit>
#include <utility>
#include <vector>

#include "editor/dialogs/dialog_body.h"

namespace editor {

/// As long as it lives, a dialog's fields with passwords show dots, those too that a page shows in
/// the clear: for pictures, which go further than a screen.
class CoveredPasswords {
 public:
  /// @p body must outlive this; null for no dialog.
  explicit CoveredPasswords(const DialogBody* body);
  CoveredPasswords(const CoveredPasswords&) = delete;
  CoveredPasswords& operator=(const CoveredPasswords&) = delete;
  ~CoveredPasswords();

 private:
  std::vector<std::pair<QLineEdit*, QLineEdit::EchoMode>> fields_;  // with the mode before
};

}  // namespace editor
