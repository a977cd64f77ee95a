#include "tests/support/temp_folder.h"

#include <stdlib.h>

#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace support {

TempFolder::TempFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "lamp-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder: " + name);
  path_ = name;
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TempFolder::write(std::string_view name, std::string_view content) const {
  const std::filesystem::path file = path_ / name;
  std::ofstream out(file, std::ios::binary);
  out << content;
  if (!out.flush()) throw std::runtime_error("can't write " + file.string());
  return file;
}

std::string TempFolder::read(std::string_view name) const {
  std::ifstream in(path_ / name, std::ios::binary);
  if (!in) throw std::runtime_error("can't read " + (path_ / name).string());
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

std::string TempFolder::listing() const {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(path_))
    names.insert(entry.path().filename().string());
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

}  // namespace support
