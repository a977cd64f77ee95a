#include "controller/xml/well_formed.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <vector>

namespace lamp::controller {
namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// Every byte outside ASCII counts as a letter: which of them XML allows in names makes no
// difference to a controller, whose names are all ASCII.
bool startsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' ||
         static_cast<unsigned char>(c) >= 0x80U;
}
bool continuesName(char c) {
  return startsName(c) || isDigit(c) || c == '-' || c == '.';
}

bool isXmlCharacter(std::uint32_t code) {
  return code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code <= 0xD7FF) ||
         (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

// A printable character of ASCII.
bool isPlain(char c) {
  return c >= 0x20 && c < 0x7F;
}

// Length of the UTF-8 sequence that begins at `at`, 0 when it is none or no XML character.
std::size_t sequenceLength(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned lead = byte(at);
  if (lead < 0x80U) return isXmlCharacter(lead) ? 1 : 0;
  const std::size_t length = lead >= 0xF0U ? 4 : lead >= 0xE0U ? 3 : 2;
  if (lead < 0xC2U || lead > 0xF4U || at + length > text.size()) return 0;
  std::uint32_t code = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xC0U) != 0x80U) return 0;
    code = (code << 6U) | (byte(at + i) & 0x3FU);
  }
  constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  return code >= kSmallest[length] && isXmlCharacter(code) ? length : 0;
}

class XmlScanner {
 public:
  XmlScanner(std::string_view body, std::size_t depthLimit)
      : body_(body), depthLimit_(depthLimit) {}

  std::optional<XmlFault> run() {
    if (body_.substr(0, 3) == "\xEF\xBB\xBF") position_ = 3;
    if (!checkCharacters()) return fault_;
    documentStart_ = position_;
    while (position_ < body_.size()) {
      if (!scanNext()) return fault_;
    }
    if (!open_.empty()) {
      fail("the element <" + std::string(open_.back()) + "> is not closed");
    } else if (!rootSeen_) {
      fail("there is no element in the document");
    }
    return fault_;
  }

 private:
  bool fail(std::string text) {
    const std::string_view before = body_.substr(0, std::min(position_, body_.size()));
    const std::size_t lastBreak = before.rfind('\n');
    XmlFault fault;
    fault.line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    fault.column = 1 + before.size() - (lastBreak == std::string_view::npos ? 0 : lastBreak + 1);
    fault.text = std::move(text);
    fault_ = std::move(fault);
    return false;
  }

  bool checkCharacters() {
    const std::size_t start = position_;
    while (position_ < body_.size()) {
      // Nearly everything is plain.
      if (isPlain(body_[position_])) {
        ++position_;
        continue;
      }
      const std::size_t length = sequenceLength(body_, position_);
      if (length == 0) return fail("a byte that is no UTF-8 text or no character of XML");
      position_ += length;
    }
    position_ = start;
    return true;
  }

  bool at(std::string_view text) const { return body_.substr(position_, text.size()) == text; }

  void skipBlanks() {
    while (position_ < body_.size() && isBlank(body_[position_])) ++position_;
  }

  bool scanNext() {
    if (body_[position_] != '<') return scanText();
    if (at("<!--")) return scanComment();
    if (at("<![CDATA[")) return scanCdata();
    if (at("<!")) return fail("a document type declaration is not accepted; send without it");
    if (at("<?")) return scanInstruction();
    return at("</") ? scanClosingTag() : scanOpeningTag();
  }

  bool scanText() {
    while (position_ < body_.size() && body_[position_] != '<') {
      if (open_.empty()) {
        if (!isBlank(body_[position_])) return fail("text outside the root element");
        ++position_;
      } else if (body_[position_] == '&') {
        if (!scanReference()) return false;
      } else if (body_[position_] == ']' && at("]]>")) {
        return fail("\"]]>\" is not allowed in text");
      } else {
        ++position_;
      }
    }
    return true;
  }

  bool scanUntil(std::size_t from, std::string_view end, const char* missing) {
    const std::size_t found = body_.find(end, from);
    if (found == std::string_view::npos) return fail(missing);
    position_ = found + end.size();
    return true;
  }

  bool scanComment() {
    const std::size_t dashes = body_.find("--", position_ + 4);
    if (dashes != std::string_view::npos && body_.substr(dashes, 3) != "-->") {
      return fail("\"--\" is not allowed inside a comment");
    }
    return scanUntil(position_ + 4, "-->", "a comment is not closed");
  }

  bool scanCdata() {
    if (open_.empty()) return fail("text outside the root element");
    return scanUntil(position_ + 9, "]]>", "a CDATA section is not closed");
  }

  bool scanInstruction() {
    const std::size_t start = position_;
    position_ += 2;
    const std::string_view target = scanName();
    if (target.empty()) return fail("a processing instruction has no name");
    if (!scanUntil(position_, "?>", "a processing instruction is not closed")) return false;
    if (target != "xml") return true;
    if (start != documentStart_) {
      position_ = start;
      return fail("the XML declaration may only stand at the very beginning");
    }
    return checkEncoding(body_.substr(start, position_ - start));
  }

  bool checkEncoding(std::string_view declaration) {
    const std::size_t found = declaration.find("encoding");
    if (found == std::string_view::npos) return true;
    std::string value(declaration.substr(found + 8));
    std::transform(value.begin(), value.end(), value.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    const bool utf8 =
        value.find("utf-8") != std::string::npos || value.find("us-ascii") != std::string::npos;
    return utf8 || fail("the document must be encoded in UTF-8");
  }

  std::string_view scanName() {
    const std::size_t start = position_;
    if (position_ < body_.size() && startsName(body_[position_])) {
      while (position_ < body_.size() && continuesName(body_[position_])) ++position_;
    }
    return body_.substr(start, position_ - start);
  }

  bool scanOpeningTag() {
    if (open_.empty() && rootSeen_) return fail("a second root element");
    ++position_;
    const std::string_view name = scanName();
    if (name.empty()) return fail("\"<\" is not followed by the name of an element");
    attributes_.clear();
    while (true) {
      const std::size_t before = position_;
      skipBlanks();
      if (position_ >= body_.size()) return fail("a tag is not closed");
      if (at("/>") || at(">")) break;
      if (position_ == before) return fail("a blank is missing before an attribute");
      if (!scanAttribute()) return false;
    }
    if (open_.size() + 1 > depthLimit_) {
      return fail("elements are nested deeper than " + std::to_string(depthLimit_));
    }
    rootSeen_ = true;
    if (at("/>")) {
      position_ += 2;
    } else {
      ++position_;
      open_.push_back(name);
    }
    return true;
  }

  bool scanAttribute() {
    const std::string_view name = scanName();
    if (name.empty()) return fail("the name of an attribute is expected here");
    if (!attributes_.insert(name).second) {
      return fail("the attribute \"" + std::string(name) + "\" stands twice");
    }
    skipBlanks();
    if (!at("=")) return fail("the attribute \"" + std::string(name) + "\" has no value");
    ++position_;
    skipBlanks();
    if (!at("\"") && !at("'")) return fail("the value of an attribute must stand in quotes");
    const char quote = body_[position_++];
    while (position_ < body_.size() && body_[position_] != quote) {
      if (body_[position_] == '<') return fail("\"<\" is not allowed in an attribute");
      if (body_[position_] == '&') {
        if (!scanReference()) return false;
      } else {
        ++position_;
      }
    }
    if (position_ >= body_.size()) return fail("the value of an attribute is not closed");
    ++position_;
    return true;
  }

  bool scanReference() {
    const std::size_t start = position_;
    const std::size_t end = body_.substr(0, std::min(body_.size(), start + 12)).find(';', start);
    if (end == std::string_view::npos) return fail("\"&\" must be written as \"&amp;\"");
    const std::string_view name = body_.substr(start + 1, end - start - 1);
    const bool known = name == "amp" || name == "lt" || name == "gt" || name == "quot" ||
                       name == "apos" || isCharacterReference(name);
    if (!known) return fail("the entity \"&" + std::string(name) + ";\" is not known");
    position_ = end + 1;
    return true;
  }

  static bool isCharacterReference(std::string_view name) {
    if (name.size() < 2 || name[0] != '#') return false;
    const bool hexadecimal = name[1] == 'x';
    const std::string_view digits = name.substr(hexadecimal ? 2 : 1);
    if (digits.empty() || digits.size() > 8) return false;
    std::uint64_t code = 0;
    for (const char c : digits) {
      const bool letter = (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
      if (!isDigit(c) && !(hexadecimal && letter)) return false;
      const int value = isDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10;
      code = code * (hexadecimal ? 16U : 10U) + static_cast<std::uint64_t>(value);
    }
    return code <= 0x10FFFF && isXmlCharacter(static_cast<std::uint32_t>(code));
  }

  bool scanClosingTag() {
    const std::size_t start = position_;
    position_ += 2;
    const std::string_view name = scanName();
    skipBlanks();
    if (!at(">")) return fail("a closing tag is not closed");
    if (open_.empty() || open_.back() != name) {
      position_ = start;
      return fail(open_.empty() ? "a closing tag without its element"
                                : "</" + std::string(name) + "> where </" +
                                      std::string(open_.back()) + "> is expected");
    }
    open_.pop_back();
    ++position_;
    return true;
  }

  std::string_view body_;
  std::size_t depthLimit_;
  std::size_t position_ = 0;
  std::size_t documentStart_ = 0;
  bool rootSeen_ = false;
  std::vector<std::string_view> open_;
  std::unordered_set<std::string_view> attributes_;
  std::optional<XmlFault> fault_;
};

}  // namespace

std::optional<XmlFault> findXmlFault(std::string_view body, std::size_t depthLimit) {
  return XmlScanner(body, depthLimit).run();
}

}  // namespace lamp::controller
