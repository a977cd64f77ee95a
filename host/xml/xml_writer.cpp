#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/text/utf.h"
#include "host/xml/xml_bytes.h"
#include "host/xml/xml_document.h"
#include "host/xml/xml_name_table.h"

namespace host::xml {
namespace {

using Node = XmlDocument::XmlNode;

enum class Place { text, attribute };

// What stands in the file for an ASCII character that can't stand for itself, else null.
const char* escaped(unsigned c, Place place) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '\r':
      return "&#13;";
    case '"':
      return place == Place::attribute ? "&quot;" : nullptr;
    case '\n':
      return place == Place::attribute ? "&#10;" : nullptr;
    case '\t':
      return place == Place::attribute ? "&#9;" : nullptr;
    default:
      return c < 0x20 ? "\xEF\xBF\xBD" : nullptr;
  }
}

// Marks the characters of an ASCII text that may not stand for themselves (see xml_bytes.h).
inline std::uint64_t suspicious(std::uint64_t word) {
  return marksBelow(word, 0x20) | marksOf(word, '&') | marksOf(word, '<') | marksOf(word, '>') |
         marksOf(word, '"');
}

inline bool isSuspicious(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == '&' || c == '<' || c == '>' || c == '"';
}

// Whether an ASCII text may stand as it is.
bool isPlain(std::string_view text) {
  std::uint64_t marks = 0;
  for (; text.size() >= WordBytes; text.remove_prefix(WordBytes))
    marks |= suspicious(loadWord(text.data()));
  return (marks & TopBits) == 0 && std::none_of(text.begin(), text.end(), isSuspicious);
}

// Copies an ASCII text of @p size bytes while none of it is suspicious; false when something is,
// with the target in any state. Texts are short: the last word overlaps the one before.
inline bool copyPlain(const char* from, std::size_t size, char* to) {
  if (size < WordBytes) {
    for (std::size_t i = 0; i < size; ++i) {
      if (isSuspicious(from[i])) return false;
      to[i] = from[i];
    }
    return true;
  }
  std::uint64_t marks = 0;
  for (std::size_t at = 0; at + WordBytes < size; at += WordBytes) {
    marks |= suspicious(loadWord(from + at));
    std::memcpy(to + at, from + at, WordBytes);
  }
  const std::size_t last = size - WordBytes;
  marks |= suspicious(loadWord(from + last));
  std::memcpy(to + last, from + last, WordBytes);
  return (marks & TopBits) == 0;
}

// Markup that is written again and again.
struct Markup {
  static constexpr std::size_t Short = 24;
  Markup() = default;
  explicit Markup(std::string markup) : text(std::move(markup)), size(text.size()) {
    std::copy_n(text.begin(), std::min(size, Short), bytes);
  }
  bool isLong() const { return size > Short; }

  std::string text;
  std::size_t size = 0;
  char bytes[Short] = {};
};

// Gathers what is written in blocks, which are joined once their size is known: a growing buffer
// would copy the document again and again. A text that is larger than all else goes straight to
// where the blocks are joined, so that it never lies here twice.
class Sink {
 public:
  Sink() { open(BlockBytes); }
  Sink(const Sink&) = delete;
  Sink& operator=(const Sink&) = delete;

  void put(char c) {
    makeRoom(1);
    *at_++ = c;
  }

  /// Writes what stands for an ASCII text.
  void put(std::string_view text, Place place) {
    if (text.size() >= LargeText) return putLarge(text, place);
    makeRoom(text.size());
    if (copyPlain(text.data(), text.size(), at_))
      at_ += text.size();
    else
      putEscaped(text, place);
  }

  /// Writes what is mostly the same number of bytes in as few steps as can be.
  void put(const Markup& markup) {
    if (markup.isLong()) return putMarkup(markup.text);
    makeRoom(Markup::Short);
    std::memcpy(at_, markup.bytes, Markup::Short);
    at_ += markup.size;
  }

  /// Writes markup as it stands.
  void putMarkup(std::string_view markup) {
    makeRoom(markup.size());
    std::memcpy(at_, markup.data(), markup.size());
    at_ += markup.size();
  }

  void putWide(std::u16string_view text, Place place) {
    std::string utf8;
    for (std::size_t at = 0; at < text.size();) {
      const char32_t c = nextCodePoint(text, at);
      const char* replacement = c < 0x80 ? escaped(c, place) : nullptr;
      if (replacement != nullptr)
        utf8 += replacement;
      else
        appendCodePoint(utf8, c == 0xFFFE || c == 0xFFFF ? char32_t(0xFFFD) : c);
    }
    putMarkup(utf8);
  }

  void fill(std::size_t count, char c) {
    makeRoom(count);
    std::memset(at_, c, count);
    at_ += count;
  }

  /// All that was written.
  std::string joined() {
    joinBlocks(0);
    return std::move(out_);
  }

 private:
  struct Block {
    std::unique_ptr<char[]> bytes;
    std::size_t used = 0;
  };

  void makeRoom(std::size_t size) {
    if (static_cast<std::size_t>(end_ - at_) >= size) return;
    close();
    open(std::max(size, BlockBytes));
  }
  void open(std::size_t size) {
    blocks_.push_back({std::make_unique_for_overwrite<char[]>(size), 0});
    at_ = blocks_.back().bytes.get();
    end_ = at_ + size;
  }
  void close() {
    Block& block = blocks_.back();
    block.used = static_cast<std::size_t>(at_ - block.bytes.get());
  }

  // Joins what was written so far and makes room for @p more bytes behind it.
  void joinBlocks(std::size_t more) {
    close();
    std::size_t size = out_.size() + more;
    for (const Block& block : blocks_) size += block.used;
    if (size > out_.capacity()) out_.reserve(size);
    for (Block& block : blocks_) {
      out_.append(block.bytes.get(), block.used);
      block.bytes.reset();
    }
    blocks_.clear();
  }

  void putLarge(std::string_view text, Place place) {
    // What follows a large text is short, as a rule, and finds its room too.
    joinBlocks(text.size() + BlockBytes);
    open(BlockBytes);
    if (isPlain(text))
      out_ += text;
    else
      putEscaped(text, place);
  }

  void putEscaped(std::string_view text, Place place) {
    std::size_t written = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
      if (!isSuspicious(text[at])) continue;
      const char* replacement = escaped(static_cast<unsigned char>(text[at]), place);
      if (replacement == nullptr) continue;
      putMarkup(text.substr(written, at - written));
      putMarkup(replacement);
      written = at + 1;
    }
    putMarkup(text.substr(written));
  }

  static constexpr std::size_t BlockBytes = 64 * 1024;
  static constexpr std::size_t LargeText = 1024 * 1024;
  std::string out_;
  std::vector<Block> blocks_;
  char* at_ = nullptr;
  const char* end_ = nullptr;
};

void writeValue(Sink& out, XmlText text, Place place) {
  if (text.isWide())
    out.putWide(text.wideView(), place);
  else
    out.put(text.narrowView(), place);
}

bool isBlank(XmlText text) {
  for (std::size_t i = 0; i < text.size(); ++i)
    if (text[i] != u' ' && text[i] != u'\t' && text[i] != u'\n' && text[i] != u'\r') return false;
  return true;
}

class Writer {
 public:
  explicit Writer(bool indented) : indented_(indented) {}

  std::string write(const Node& root) {
    out_.putMarkup("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    writeTree(root);
    if (indented_) out_.put('\n');
    return out_.joined();
  }

 private:
  void writeTree(const Node& root) {
    const Node* at = &root;
    for (;;) {
      open(*at);
      if (at->FirstChild() != nullptr) {
        at = at->FirstChild();
        ++depth_;
        continue;
      }
      while (at != &root && at->NextSibling() == nullptr) {
        at = at->Parent();
        --depth_;
        newLine(at->text().empty());
        close(*at);
      }
      if (at == &root) return;
      at = at->NextSibling();
    }
  }

  // Line breaks stand only where no text is: a reader drops them there.
  void newLine(bool allowed) {
    if (!indented_ || !allowed) return;
    out_.put('\n');
    out_.fill(std::min(depth_, MostIndented) * 2, ' ');
  }

  void open(const Node& node) {
    if (depth_ > 0) newLine(node.Parent()->text().empty());
    out_.put('<');
    out_.putMarkup(node.Tag());
    for (std::size_t i = 0; i < node.attributeCount(); ++i) {
      out_.put(beginning(node.attributeName(i)));
      writeValue(out_, node.attributeText(i), Place::attribute);
      out_.put('"');
    }
    if (node.text().empty() && node.FirstChild() == nullptr) {
      out_.putMarkup("/>");
      return;
    }
    out_.put('>');
    writeText(node);
    if (node.FirstChild() == nullptr) close(node);
  }

  // ' name="', made once a name as long as no other name takes its place.
  const Markup& beginning(XmlName name) {
    Beginning& beginning = beginnings_[name.id() % Beginnings];
    if (beginning.name != name.id())
      beginning = {name.id(), Markup(' ' + std::string(name.text()) + "=\"")};
    return beginning.markup;
  }

  // White space beside children would be dropped by a reader unless it begins with a reference.
  void writeText(const Node& node) {
    if (node.FirstChild() == nullptr || node.text().empty() || !isBlank(node.text()))
      return writeValue(out_, node.text(), Place::text);
    const std::string reference = "&#" + std::to_string(int(node.text()[0])) + ";";
    out_.putMarkup(reference);
    for (std::size_t i = 1; i < node.text().size(); ++i) {
      const auto c = static_cast<char>(node.text()[i]);
      out_.put(std::string_view(&c, 1), Place::text);
    }
  }

  void close(const Node& node) {
    out_.putMarkup("</");
    out_.putMarkup(node.Tag());
    out_.put('>');
  }

  struct Beginning {
    std::uint32_t name = NameTable::None;
    Markup markup;
  };
  static constexpr std::size_t Beginnings = 256;
  // Deeper, the indentation would be the larger part of the text.
  static constexpr std::size_t MostIndented = 12;

  Sink out_;
  std::vector<Beginning> beginnings_{Beginnings};
  const bool indented_;
  std::size_t depth_ = 0;
};

}  // namespace

// A function of this namespace, which the document's own does not see into.
static std::string writeDocument(const Node& root, bool indented) {
  return Writer(indented).write(root);
}

}  // namespace host::xml

std::string XmlDocument::ToString(Layout layout) const {
  if (root_ == nullptr) return {};
  return host::xml::writeDocument(*root_, layout == Layout::indented);
}
