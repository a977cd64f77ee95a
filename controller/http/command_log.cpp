#include "controller/http/command_log.h"

#include <algorithm>
#include <array>

namespace lamp::controller {
namespace {

constexpr std::size_t kKept = 50;
constexpr std::size_t kLongest = 4000;
// A value to hide may begin behind the cut, so a little more is looked at.
constexpr std::size_t kLookedAt = 64 * 1024;

constexpr std::array kSecrets = {"FTPPwd", "mailUser", "mailPassword", "ftpPassword"};

// Where the value of an attribute begins behind its name, quote and all; npos where none does.
std::size_t valueAfter(const std::string& text, std::size_t at) {
  at = text.find_first_not_of(" \t\r\n", at);
  if (at == std::string::npos || text[at] != '=') return std::string::npos;
  at = text.find_first_not_of(" \t\r\n", at + 1);
  return at;
}

// Hides the value behind every place where the name stands, in documents (quoted) and in
// parameters (up to the next "&").
void hide(std::string& text, const std::string& name) {
  for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at)) {
    at += name.size();
    const std::size_t value = valueAfter(text, at);
    if (value == std::string::npos) continue;
    const bool isQuoted = text[value] == '"' || text[value] == '\'';
    const std::size_t begin = isQuoted ? value + 1 : value;
    const std::size_t end = std::min(text.find(isQuoted ? text[value] : '&', begin), text.size());
    text.replace(begin, end - begin, "***");
  }
}

void hideFirmware(std::string& text) {
  const std::string mark = "<firmwareFile>";
  const std::size_t at = text.find(mark);
  if (at == std::string::npos) return;
  const std::size_t begin = at + mark.size();
  const std::size_t end = std::min(text.find('<', begin), text.size());
  text.replace(begin, end - begin, "(" + std::to_string(end - begin) + " characters)");
}

}  // namespace

std::string masked(const std::string& text) {
  std::string shown = text;
  hideFirmware(shown);
  const bool cut = shown.size() > kLongest;
  shown = shown.substr(0, kLookedAt);
  for (const char* name : kSecrets) hide(shown, name);
  if (cut) shown = shown.substr(0, kLongest) + " ...";
  return shown;
}

void CommandLog::add(LoggedCommand entry) {
  entry.parameters = masked(entry.parameters);
  entry.request = masked(entry.request);
  entry.reply = masked(entry.reply);
  const std::lock_guard lock(mutex_);
  entry.number = ++count_;
  entries_.push_back(std::move(entry));
  if (entries_.size() > kKept) entries_.pop_front();
}

std::vector<LoggedCommand> CommandLog::after(std::uint64_t since) const {
  const std::lock_guard lock(mutex_);
  std::vector<LoggedCommand> found;
  for (const LoggedCommand& entry : entries_) {
    if (entry.number > since) found.push_back(entry);
  }
  return found;
}

}  // namespace lamp::controller
