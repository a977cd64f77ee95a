#include "workbench/wire/secret_names.h"

#include <algorithm>

namespace workbench {

bool isSecretName(std::string_view name) {
  return std::find(SecretNames.begin(), SecretNames.end(), name) != SecretNames.end();
}

bool isPasswordName(std::string_view name) {
  return isSecretName(name) && name != "mailUser";
}

}  // namespace workbench
