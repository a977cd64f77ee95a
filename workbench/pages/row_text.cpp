#include "workbench/pages/row_text.h"

#define PCRE2_CODE_UNIT_WIDTH 16
#include <pcre2.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace workbench {
namespace {

constexpr std::chrono::seconds LongestReplacement{1};
// Steps of one match: as many as a processor of today takes in a part of that second.
constexpr std::uint32_t MostSteps = 1'000'000;
// So that no row's number leaves 64 bits.
constexpr std::size_t MostDigits = 15;
constexpr std::size_t MostDigitsOfStep = 9;

bool isDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

/// A number of a pattern, and the text before it.
struct Counter {
  std::u16string before;
  std::int64_t start = 0;
  std::int64_t step = 1;
  std::size_t width = 0;
};

std::optional<std::int64_t> numberIn(std::u16string_view text, std::size_t most) {
  const bool negative = text.starts_with(u'-');
  if (negative) text.remove_prefix(1);
  if (text.empty() || text.size() > most || !std::all_of(text.begin(), text.end(), isDigit))
    return std::nullopt;
  std::int64_t number = 0;
  for (const char16_t c : text) number = number * 10 + (c - u'0');
  return negative ? -number : number;
}

std::optional<Counter> counterIn(std::u16string_view inner) {
  const std::size_t colon = inner.find(u':');
  const std::u16string_view start = inner.substr(0, colon);
  const auto first = start.starts_with(u'-') ? std::nullopt : numberIn(start, MostDigits);
  const auto step = colon == std::u16string_view::npos
                        ? std::optional<std::int64_t>(1)
                        : numberIn(inner.substr(colon + 1), MostDigitsOfStep);
  if (!first || !step) return std::nullopt;
  return Counter{{}, *first, *step, start.starts_with(u'0') ? start.size() : 0};
}

std::vector<Counter> countersOf(std::u16string_view pattern, std::u16string& rest) {
  std::vector<Counter> counters;
  while (!pattern.empty()) {
    const std::size_t end = pattern.find(u'}');
    if (pattern[0] == u'{' && end != std::u16string_view::npos)
      if (auto counter = counterIn(pattern.substr(1, end - 1))) {
        counter->before = std::move(rest);
        rest.clear();
        counters.push_back(*std::move(counter));
        pattern.remove_prefix(end + 1);
        continue;
      }
    rest += pattern[0];
    pattern.remove_prefix(1);
  }
  return counters;
}

/// The groups of one match: from and to of each, both npos where it took no part.
using Groups = std::vector<std::pair<std::size_t, std::size_t>>;

class Expression {
 public:
  explicit Expression(std::u16string_view text) {
    constexpr std::uint32_t Options = PCRE2_UTF | PCRE2_MATCH_INVALID_UTF | PCRE2_ALT_BSUX |
                                      PCRE2_DOLLAR_ENDONLY | PCRE2_ALLOW_EMPTY_CLASS |
                                      PCRE2_MATCH_UNSET_BACKREF;
    int error = 0;
    PCRE2_SIZE at = 0;
    code_.reset(pcre2_compile(reinterpret_cast<PCRE2_SPTR16>(text.data()), text.size(), Options,
                              &error, &at, nullptr));
    if (code_ == nullptr) {
      refused_ = "the expression is malformed at character " + std::to_string(at + 1);
      return;
    }
    match_.reset(pcre2_match_data_create_from_pattern(code_.get(), nullptr));
    context_.reset(pcre2_match_context_create(nullptr));
    pcre2_set_match_limit(context_.get(), MostSteps);
  }

  /// Why it can't be used, or what ended the last search; empty when nothing did.
  const std::string& refused() const { return refused_; }

  std::optional<Groups> search(const std::u16string& text, std::size_t from) {
    const int found = pcre2_match(code_.get(), reinterpret_cast<PCRE2_SPTR16>(text.data()),
                                  text.size(), from, 0, match_.get(), context_.get());
    if (found == PCRE2_ERROR_NOMATCH) return std::nullopt;
    if (found < 0) {
      refused_ = "the expression takes too long";
      return std::nullopt;
    }
    const PCRE2_SIZE* ends = pcre2_get_ovector_pointer(match_.get());
    Groups groups;
    for (std::size_t i = 0; i < pcre2_get_ovector_count(match_.get()); ++i)
      groups.emplace_back(ends[2 * i], ends[2 * i + 1]);
    return groups;
  }

 private:
  template <class Type, void (*Free)(Type*)>
  struct Freeing {
    void operator()(Type* owned) const { Free(owned); }
  };
  std::unique_ptr<pcre2_code, Freeing<pcre2_code, pcre2_code_free>> code_;
  std::unique_ptr<pcre2_match_data, Freeing<pcre2_match_data, pcre2_match_data_free>> match_;
  std::unique_ptr<pcre2_match_context, Freeing<pcre2_match_context, pcre2_match_context_free>>
      context_;
  std::string refused_;
};

// The group that "$1" or "$12" names: two digits where there is such a group.
std::size_t groupNamed(std::u16string_view with, std::size_t& at, std::size_t groups) {
  std::size_t number = static_cast<std::size_t>(with[at] - u'0');
  if (at + 1 < with.size() && isDigit(with[at + 1])) {
    const std::size_t two = number * 10 + static_cast<std::size_t>(with[at + 1] - u'0');
    if (two >= 1 && two < groups) {
      ++at;
      return two;
    }
  }
  return number >= 1 && number < groups ? number : 0;
}

void appendReplacement(std::u16string& out, std::u16string_view with, const std::u16string& text,
                       const Groups& groups) {
  const auto group = [&](std::size_t number) {
    const auto [from, to] = groups[number];
    if (from != PCRE2_UNSET) out.append(text, from, to - from);
  };
  for (std::size_t at = 0; at < with.size(); ++at) {
    if (with[at] != u'$' || at + 1 == with.size()) {
      out += with[at];
      continue;
    }
    const char16_t next = with[at + 1];
    if (next == u'$' || next == u'&') {
      ++at;
      next == u'$' ? void(out += u'$') : group(0);
    } else if (isDigit(next)) {
      std::size_t digit = at + 1;
      if (const std::size_t number = groupNamed(with, digit, groups.size()); number > 0) {
        group(number);
        at = digit;
      } else {
        out += u'$';
      }
    } else {
      out += u'$';
    }
  }
}

bool isPair(const std::u16string& text, std::size_t at) {
  return text[at] >= 0xD800 && text[at] < 0xDC00 && at + 1 < text.size();
}

std::u16string replacedIn(Expression& expression, const std::u16string& text,
                          std::u16string_view with) {
  std::u16string out;
  std::size_t done = 0;
  std::size_t from = 0;
  while (from <= text.size()) {
    const auto groups = expression.search(text, from);
    if (!groups) break;
    const auto [begin, end] = groups->front();
    out.append(text, done, begin - done);
    appendReplacement(out, with, text, *groups);
    done = end;
    from = end;
    if (begin < end) continue;
    // Nothing was matched: on behind the next character.
    if (from == text.size()) break;
    from += isPair(text, from) ? 2U : 1U;
  }
  return out.append(text, std::min(done, text.size()));
}

}  // namespace

RowTexts numberedTexts(std::u16string_view pattern, std::size_t count) {
  std::u16string behind;
  const std::vector<Counter> counters = countersOf(pattern, behind);
  RowTexts made;
  for (std::size_t i = 0; i < count; ++i) {
    std::u16string text;
    for (const Counter& counter : counters) {
      const std::int64_t number = counter.start + counter.step * static_cast<std::int64_t>(i);
      if (number < 0) return {{}, "the numbers would go below zero"};
      const std::u16string digits = host::decimal(number).str();
      text += counter.before;
      text.append(counter.width > digits.size() ? counter.width - digits.size() : 0, u'0');
      text += digits;
    }
    text += behind;
    made.texts.push_back(std::u16string_view(text));
  }
  return made;
}

RowTexts replacedTexts(const std::vector<XCBasicString>& texts, std::u16string_view find,
                       std::u16string_view with) {
  if (find.empty()) return {{}, "there is nothing to find"};
  RowTexts made;
  for (const XCBasicString& text : texts) {
    std::u16string out;
    std::u16string_view rest = text;
    for (std::size_t at = rest.find(find); at != std::u16string_view::npos; at = rest.find(find)) {
      out.append(rest.substr(0, at)).append(with);
      rest.remove_prefix(at + find.size());
    }
    out.append(rest);
    made.texts.push_back(std::u16string_view(out));
  }
  return made;
}

RowTexts replacedByExpression(const std::vector<XCBasicString>& texts, std::u16string_view find,
                              std::u16string_view with) {
  if (find.empty()) return {{}, "there is nothing to find"};
  Expression expression(find);
  RowTexts made;
  const auto end = std::chrono::steady_clock::now() + LongestReplacement;
  for (const XCBasicString& text : texts) {
    if (!expression.refused().empty()) return {{}, expression.refused()};
    if (std::chrono::steady_clock::now() > end) return {{}, "the expression takes too long"};
    const std::u16string replaced = replacedIn(expression, text.str(), with);
    made.texts.push_back(std::u16string_view(replaced));
  }
  if (!expression.refused().empty()) return {{}, expression.refused()};
  return made;
}

}  // namespace workbench
