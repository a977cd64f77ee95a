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

// The beginning of a text, a firmware image in it as its length: images and replies of many
// megabytes are not copied for the few lines that are shown.
std::string beginningOf(std::string_view whole) {
  constexpr std::string_view kMark = "<firmwareFile>";
  const std::size_t at = whole.substr(0, kLookedAt).find(kMark);
  if (at == std::string_view::npos) return std::string(whole.substr(0, kLookedAt));
  const std::size_t begin = at + kMark.size();
  const std::size_t end = std::min(whole.find('<', begin), whole.size());
  std::string text(whole.substr(0, begin));
  text += "(" + std::to_string(end - begin) + " characters)";
  text += whole.substr(end, kLookedAt);
  return text;
}

}  // namespace

ShownText::ShownText(std::string_view whole) : text_(beginningOf(whole)) {
  const bool cut = text_.size() > kLongest;
  for (const char* name : kSecrets) hide(text_, name);
  if (cut) text_ = text_.substr(0, kLongest) + " ...";
}

void CommandLog::add(LoggedCommand entry) {
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
