#include "workbench/wire/secret_pattern.h"

#include <algorithm>
#include <utility>

namespace workbench {

SecretPattern::SecretPattern(std::string_view secret)
    : last_(States{1} << (std::min(secret.size(), MostBytes) - 1)) {
  for (std::size_t i = 0; i < std::min(secret.size(), MostBytes); ++i)
    accepts_[static_cast<unsigned char>(secret[i])] |= States{1} << i;
}

// Calls visit(position, states) wherever a part of the secret has come; false ends the walk. The
// bit that is shifted in at a place is one more secret that begins there.
template <class Visit>
void SecretPattern::walk(std::string_view text, Begin begin, Visit visit) const {
  std::array<States, Window> ahead{};  // states at this position and at those that escapes reach
  std::size_t furthest = 0;            // no states are held behind it
  const auto reach = [&](std::size_t position, States states) {
    ahead[position % Window] |= states;
    if (states != 0) furthest = std::max(furthest, position);
  };
  for (std::size_t at = 0; at <= text.size(); ++at) {
    const States states = std::exchange(ahead[at % Window], 0);
    if (states != 0 && !visit(at, states)) return;
    const bool begins = begin == Begin::anywhere || at == 0;
    if (at == text.size() || (!begins && at > furthest)) return;
    const auto accepted = [&](std::string_view bytes) {
      States now = states;
      bool first = begins;
      for (const char byte : bytes) {
        const States started =
            std::exchange(first, false) ? accepts_[static_cast<unsigned char>(byte)] & 1 : 0;
        now = step(now, byte) | started;
      }
      return now;
    };
    reach(at + 1, accepted(text.substr(at, 1)));
    if (!beginsEscape(text[at])) continue;
    if (const Escape escape = escapeAt(text, at); escape.size != 0)
      reach(at + escape.size, accepted(escape.meaning()));
  }
}

// The way back from @p end, where @p states hold, to where the secret begins, or to @p floor, the
// end of the one before, where it begins in that one.
std::size_t SecretPattern::beginningOf(std::string_view text, std::size_t end, States states,
                                       std::size_t floor) const {
  std::array<States, Window> behind{};
  behind[end % Window] = states;
  std::size_t lowest = end;  // no states are held in front of it
  std::size_t begins = end;
  const auto goBack = [&](States from, std::size_t to, std::string_view bytes) {
    bool begun = false;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
      from &= accepts_[static_cast<unsigned char>(*byte)];
      begun = (from & 1) != 0;
      from >>= 1;
    }
    if (begun) begins = std::min(begins, to);
    behind[to % Window] |= from;
    if (from != 0) lowest = std::min(lowest, to);
  };
  for (std::size_t at = end; at > floor && at >= lowest; --at) {
    const States now = std::exchange(behind[at % Window], 0);
    if (now == 0) continue;
    goBack(now, at - 1, text.substr(at - 1, 1));
    const std::size_t first = at - std::min(at - floor, Escape::MostBytes);
    for (std::size_t from = first; from < at; ++from) {
      if (!beginsEscape(text[from])) continue;
      const Escape escape = escapeAt(text, from);
      if (escape.size == at - from) goBack(now, from, escape.meaning());
    }
  }
  return floor > 0 && behind[floor % Window] != 0 ? floor : begins;
}

bool SecretPattern::isIn(std::string_view text) const {
  bool found = false;
  walk(text, Begin::anywhere, [&](std::size_t, States states) {
    found = (states & last_) != 0;
    return !found;
  });
  return found;
}

void SecretPattern::find(std::string_view text, std::vector<TextSpan>& found) const {
  std::size_t floor = 0;
  walk(text, Begin::anywhere, [&](std::size_t at, States states) {
    if ((states & last_) == 0) return true;
    found.push_back({beginningOf(text, at, last_, floor), at});
    floor = at;
    return true;
  });
}

std::size_t SecretPattern::endOfOneAt(std::string_view text, std::size_t at) const {
  std::size_t end = 0;
  walk(text.substr(at), Begin::atStart, [&](std::size_t position, States states) {
    if ((states & last_) != 0) end = position;
    return true;
  });
  return at + end;
}

std::size_t SecretPattern::beginningAtEnd(std::string_view text) const {
  const std::size_t skipped = text.size() - std::min(text.size(), MostBytes * Escape::MostBytes);
  const std::string_view rest = text.substr(skipped);
  std::size_t begins = rest.size();
  walk(rest, Begin::anywhere, [&](std::size_t at, States states) {
    // An escape may have been cut in its midst.
    const bool atEnd =
        at == rest.size() || (at + Escape::MostBytes > rest.size() && beginsEscape(rest[at]));
    // A whole one is no beginning.
    const States begun = at == rest.size() ? states & ~last_ : states;
    if (atEnd && begun != 0) begins = std::min(begins, beginningOf(rest, at, begun, 0));
    return true;
  });
  return skipped + begins;
}

}  // namespace workbench
