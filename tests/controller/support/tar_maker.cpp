#include "tests/controller/support/tar_maker.h"

#include <cstdio>

namespace lamp::controller::test {
namespace {

std::string headerOf(const std::string& name, std::size_t size) {
  std::string header(512, '\0');
  header.replace(0, name.size(), name);
  char field[16];
  std::snprintf(field, sizeof field, "%011zo", size);
  header.replace(124, 11, field);
  header.replace(148, 8, "        ");
  header[156] = '0';
  header.replace(257, 5, "ustar");
  header.replace(263, 2, "00");
  unsigned sum = 0;
  for (const char c : header) sum += static_cast<unsigned char>(c);
  std::snprintf(field, sizeof field, "%06o", sum);
  header.replace(148, 6, field);
  header[154] = '\0';
  return header;
}

}  // namespace

std::string makeTar(const std::vector<std::pair<std::string, std::string>>& members) {
  std::string archive;
  for (const auto& [name, bytes] : members) {
    archive += headerOf(name, bytes.size()) + bytes;
    archive.resize((archive.size() + 511) / 512 * 512, '\0');
  }
  return archive + std::string(1024, '\0');
}

std::string encodeBase64(const std::string& bytes) {
  static constexpr char kLetters[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    unsigned group = 0;
    for (std::size_t k = 0; k < 3; ++k) {
      group = group << 8U | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      text += i + k <= bytes.size() ? kLetters[(group >> (18U - 6U * k)) & 63U] : '=';
    }
  }
  return text;
}

}  // namespace lamp::controller::test
