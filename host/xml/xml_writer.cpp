#include <array>

#include "host/text/utf.h"
#include "host/xml/xml_document.h"

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

constexpr auto Suspicious = [] {
  std::array<bool, 256> table{};
  for (std::size_t c = 0; c < 0x20; ++c) table[c] = true;
  table['&'] = table['<'] = table['>'] = table['"'] = true;
  return table;
}();

// Gathers what is written in a block, so that the small pieces of a document cost no call each.
class Sink {
 public:
  explicit Sink(std::string& out) : out_(out) {}
  Sink(const Sink&) = delete;
  Sink& operator=(const Sink&) = delete;

  void put(char c) {
    if (at_ == end()) flush();
    *at_++ = c;
  }

  /// Writes what stands for an ASCII text. Texts are short: they are copied while they are looked
  /// through.
  void put(std::string_view text, Place place = Place::text) {
    if (!hasRoom(text.size())) return putEscaped(text, place);
    char* to = at_;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (Suspicious[static_cast<unsigned char>(text[i])]) {
        at_ = to;
        return putEscaped(text.substr(i), place);
      }
      *to++ = text[i];
    }
    at_ = to;
  }
  /// Writes markup, which is short, as it stands.
  void putMarkup(std::string_view markup) {
    if (!hasRoom(markup.size())) flush();
    for (const char c : markup) *at_++ = c;
  }
  void fill(std::size_t count, char c) {
    for (; count > 0; --count) put(c);
  }
  void flush() {
    out_.append(block_, static_cast<std::size_t>(at_ - block_));
    at_ = block_;
  }
  /// The text itself, for what does not pass through the block.
  std::string& text() {
    flush();
    return out_;
  }

 private:
  const char* end() const { return block_ + sizeof block_; }
  bool hasRoom(std::size_t size) const { return static_cast<std::size_t>(end() - at_) >= size; }

  void putEscaped(std::string_view text, Place place) {
    flush();
    makeRoom(text.size());
    std::size_t written = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
      const auto c = static_cast<unsigned char>(text[at]);
      if (!Suspicious[c]) continue;
      const char* replacement = escaped(c, place);
      if (replacement == nullptr) continue;
      out_ += text.substr(written, at - written);
      out_ += replacement;
      written = at + 1;
    }
    out_ += text.substr(written);
  }

  // Makes room for a text that is most of its document, and for what little follows it: the buffer
  // would otherwise be doubled, and copied, for the text's own end tag.
  void makeRoom(std::size_t size) {
    constexpr std::size_t Large = 1024 * 1024;
    constexpr std::size_t Following = 4096;
    if (size >= Large && size >= out_.size()) out_.reserve(out_.size() + size + Following);
  }

  std::string& out_;
  char block_[8192];
  char* at_ = block_;
};

void writeWide(std::string& out, std::u16string_view text, Place place) {
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = nextCodePoint(text, at);
    const char* replacement = c < 0x80 ? escaped(c, place) : nullptr;
    if (replacement != nullptr)
      out += replacement;
    else
      appendCodePoint(out, c == 0xFFFE || c == 0xFFFF ? char32_t(0xFFFD) : c);
  }
}

void writeValue(Sink& out, XmlText text, Place place) {
  if (text.isWide())
    writeWide(out.text(), text.wideView(), place);
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
  Writer(std::string& out, bool indented) : out_(out), indented_(indented) {}

  void write(const Node& root) {
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
      if (at == &root) return out_.flush();
      at = at->NextSibling();
    }
  }

 private:
  // Line breaks stand only where no text is: a reader drops them there.
  void newLine(bool allowed) {
    if (!indented_ || !allowed) return;
    out_.put('\n');
    out_.fill(depth_ * 2, ' ');
  }

  void open(const Node& node) {
    if (depth_ > 0) newLine(node.Parent()->text().empty());
    out_.put('<');
    out_.put(node.Tag());
    for (std::size_t i = 0; i < node.attributeCount(); ++i) {
      out_.put(' ');
      out_.put(node.attributeName(i).text());
      out_.putMarkup("=\"");
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

  // White space beside children would be dropped by a reader unless it begins with a reference.
  void writeText(const Node& node) {
    if (node.FirstChild() == nullptr || node.text().empty() || !isBlank(node.text()))
      return writeValue(out_, node.text(), Place::text);
    const std::string reference = "&#" + std::to_string(int(node.text()[0])) + ";";
    out_.putMarkup(reference);
    for (std::size_t i = 1; i < node.text().size(); ++i) {
      const auto c = static_cast<char>(node.text()[i]);
      out_.put(std::string_view(&c, 1));
    }
  }

  void close(const Node& node) {
    out_.putMarkup("</");
    out_.put(node.Tag());
    out_.put('>');
  }

  Sink out_;
  const bool indented_;
  std::size_t depth_ = 0;
};

}  // namespace

static void writeDocument(std::string& out, const Node& root, bool indented) {
  out += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  Writer(out, indented).write(root);
  if (indented) out += '\n';
}

}  // namespace host::xml

std::string XmlDocument::ToString(Layout layout) const {
  std::string out;
  if (root_ != nullptr) host::xml::writeDocument(out, *root_, layout == Layout::indented);
  return out;
}
