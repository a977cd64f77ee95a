#include "tests/support/texts.h"

#include <stdexcept>
#include <string>

#include "host/resources/texts.h"

namespace support {

std::filesystem::path textsFolder() {
  return LAMP_TEXTS_FOLDER;
}

void texts() {
  std::string cause;
  if (!host::loadTexts(textsFolder(), "numbers", cause)) throw std::runtime_error(cause);
}

}  // namespace support
