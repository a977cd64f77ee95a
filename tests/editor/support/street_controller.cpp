#include "tests/editor/support/street_controller.h"

namespace support {

StreetController::StreetController()
    : server_([this](const test::TinyRequest& request, const test::TinyServer::Connection& to) {
        to.send(test::TinyServer::reply(answer(request)));
      }) {}

void StreetController::hold(const std::string& section, const std::string& xml) {
  const std::lock_guard lock(mutex_);
  sections_[section] = xml;
}

void StreetController::holdAfterWrite(const std::string& section, const std::string& xml) {
  const std::lock_guard lock(mutex_);
  later_[section] = xml;
}

std::vector<std::string> StreetController::writes() const {
  const std::lock_guard lock(mutex_);
  return writes_;
}

std::string StreetController::answer(const test::TinyRequest& request) {
  const std::lock_guard lock(mutex_);
  if (request.line.find("/command/2?") != std::string::npos) {
    writes_.push_back(request.body);
    for (const auto& [section, xml] : later_) sections_[section] = xml;
    return "<ok/>";
  }
  std::string found;
  for (const auto& [section, xml] : sections_)
    if (request.body.find("<" + section) != std::string::npos) found = xml;
  return "<main><ZelLamp Id=\"LM\">" + found + "</ZelLamp></main>";
}

}  // namespace support
