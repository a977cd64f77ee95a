#pragma once

#include <map>
#include <mutex>
#include <string>

#include "tests/workbench/tiny_server.h"

namespace support {

/// A controller in a few lines: it answers reads with the sections that a test gives it, and says
/// yes to writes, of which it takes what the test lets it.
class StreetController {
 public:
  StreetController();

  int port() const { return server_.port(); }
  /// What a section holds from now on, "<L01 .../>".
  void hold(const std::string& section, const std::string& xml);
  /// What the section holds once something was written to it.
  void holdAfterWrite(const std::string& section, const std::string& xml);
  /// The bodies of the writes that came in.
  std::vector<std::string> writes() const;

 private:
  std::string answer(const test::TinyRequest& request);

  mutable std::mutex mutex_;
  std::map<std::string, std::string> sections_;
  std::map<std::string, std::string> later_;
  std::vector<std::string> writes_;
  test::TinyServer server_;
};

}  // namespace support
