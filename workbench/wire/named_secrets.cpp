#include "workbench/wire/named_secrets.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "workbench/wire/secret_names.h"

namespace workbench {
namespace {

constexpr auto None = std::string_view::npos;

// The next place of a word at or behind positions that only grow: the text is gone through once.
class Ahead {
 public:
  Ahead(std::string_view text, std::string_view word) : text_(text), word_(word) {}

  std::string_view word() const { return word_; }
  std::size_t from(std::size_t at) {
    if (!isSought_ || (next_ != None && next_ < at)) next_ = search(at);
    isSought_ = true;
    return next_;
  }

 private:
  // The C library's search is the fastest at hand, and linear.
  std::size_t search(std::size_t at) const {
    if (at >= text_.size()) return None;
    const void* place = ::memmem(text_.data() + at, text_.size() - at, word_.data(), word_.size());
    return place == nullptr
               ? None
               : static_cast<std::size_t>(static_cast<const char*>(place) - text_.data());
  }

  std::string_view text_;
  std::string_view word_;
  std::size_t next_ = None;
  bool isSought_ = false;
};

bool isWordCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isBlank(char c) {
  return static_cast<unsigned char>(c) <= ' ';
}

class Search {
 public:
  Search(std::string_view text, const std::vector<SecretPattern>& known,
         std::vector<TextSpan>& found)
      : text_(text), known_(known), found_(found) {}

  void run() {
    for (const std::string_view name : SecretNames) {
      Ahead names(text_, name);
      restart();
      for (std::size_t at = names.from(0); at != None; at = names.from(at)) {
        const std::size_t behind = at + name.size();
        const bool whole = (at == 0 || !isWordCharacter(text_[at - 1])) &&
                           (behind == text_.size() || !isWordCharacter(text_[behind]));
        const TextSpan value = whole ? valueOf(at, behind) : TextSpan{behind, behind};
        if (value.from < value.to) found_.push_back(value);
        at = std::max(behind, value.to);
      }
    }
  }

 private:
  // Quotes and angles as they stand, and as XML, HTML and JSON write them.
  void restart() {
    quotes_.clear();
    for (const char* word : {"\"", "'", "\\\"", "&quot;", "&#34;", "&apos;", "&#39;"})
      quotes_.emplace_back(text_, word);
    for (auto& [open, close] : angles_) {
      open = Ahead(text_, open.word());
      close = Ahead(text_, close.word());
    }
  }

  bool standsAt(std::size_t at, std::string_view word) const {
    return text_.substr(std::min(at, text_.size())).starts_with(word);
  }
  std::size_t behindBlanks(std::size_t at) const {
    while (at < text_.size() && isBlank(text_[at])) ++at;
    return at;
  }
  // The quote that stands at a place, none where another thing does.
  Ahead* quoteAt(std::size_t at) {
    for (Ahead& quote : quotes_)
      if (standsAt(at, quote.word())) return &quote;
    return nullptr;
  }

  TextSpan valueOf(std::size_t at, std::size_t behind) {
    for (auto& [open, close] : angles_)
      if (at >= open.word().size() && standsAt(at - open.word().size(), open.word()))
        return contentBehind(behind, open, close);
    if (const Ahead* quote = quoteAt(behind)) behind += quote->word().size();
    behind = behindBlanks(behind);
    for (const std::string_view equals : {"=", "%3D", "%3d"})
      if (standsAt(behind, equals)) return valueBehind(behind + equals.size(), true);
    if (standsAt(behind, ":")) return valueBehind(behind + 1, false);
    return {behind, behind};
  }

  // Between the tags of an element.
  TextSpan contentBehind(std::size_t behind, Ahead& open, Ahead& close) const {
    const std::size_t tag = close.from(behind);
    if (tag == None || text_[tag - 1] == '/') return {behind, behind};
    const std::size_t from = tag + close.word().size();
    const std::size_t to = open.from(from);
    return {from, to == None ? from : to};
  }

  // What follows a colon without a quote may be a sentence: only what is known counts.
  TextSpan valueBehind(std::size_t at, bool anything) {
    const std::size_t from = behindBlanks(at);
    if (Ahead* quote = quoteAt(from)) {
      const std::size_t inside = from + quote->word().size();
      if (const std::size_t end = quote->from(inside); end != None) return {inside, end};
      return {inside, endOfWord(inside)};
    }
    std::size_t to = anything && from == at ? endOfWord(at) : from;
    for (const SecretPattern& secret : known_) to = std::max(to, secret.endOfOneAt(text_, from));
    return {from, to};
  }

  std::size_t endOfWord(std::size_t at) const {
    constexpr std::string_view Delimiters = "&\"'<>;,()[]{}\\";
    while (at < text_.size() && !isBlank(text_[at]) && !standsAt(at, "%26") &&
           Delimiters.find(text_[at]) == None)
      ++at;
    return at;
  }

  std::string_view text_;
  const std::vector<SecretPattern>& known_;
  std::vector<TextSpan>& found_;
  std::vector<Ahead> quotes_;
  std::array<std::pair<Ahead, Ahead>, 2> angles_{
      std::pair{Ahead(text_, "<"), Ahead(text_, ">")},
      std::pair{Ahead(text_, "&lt;"), Ahead(text_, "&gt;")}};
};

}  // namespace

void findNamedSecrets(std::string_view text, const std::vector<SecretPattern>& known,
                      std::vector<TextSpan>& found) {
  Search(text, known, found).run();
}

}  // namespace workbench
