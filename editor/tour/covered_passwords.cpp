#include "editor/tour/covered_passwords.h"

#include "editor/renderers/control_renderer.h"
#include "host/dialogs/base_dlg.h"
#include "workbench/wire/secret_names.h"

namespace editor {

CoveredPasswords::CoveredPasswords(const DialogBody* body) {
  if (body == nullptr) return;
  for (const auto& control : body->dialog().Controls()) {
    if (!workbench::isSecretName(control->name())) continue;
    auto* const field = qobject_cast<QLineEdit*>(&body->renderer(control->id())->widget());
    if (field == nullptr) continue;
    fields_.emplace_back(field, field->echoMode());
    field->setEchoMode(QLineEdit::Password);
  }
}

CoveredPasswords::~CoveredPasswords() {
  for (const auto& [field, mode] : fields_) field->setEchoMode(mode);
}

}  // namespace editor
