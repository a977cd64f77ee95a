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
  std::array<bool, 128> table{};
  for (std::size_t c = 0; c < 0x20; ++c) table[c] = true;
  table['&'] = table['<'] = table['>'] = table['"'] = true;
  return table;
}();

// Makes room for a text that is most of its document, and for what little follows it: the buffer
// would otherwise be doubled, and copied, for the text's own end tag.
void makeRoom(std::string& out, std::size_t size) {
  constexpr std::size_t Large = 1024 * 1024;
  constexpr std::size_t Following = 4096;
  if (size < Large || size < out.size()) return;
  out.reserve(out.size() + size + Following);
}

void writeNarrow(std::string& out, std::string_view text, Place place) {
  makeRoom(out, text.size());
  std::size_t written = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const auto c = static_cast<unsigned char>(text[at]);
    if (!Suspicious[c]) continue;
    const char* replacement = escaped(c, place);
    if (replacement == nullptr) continue;
    out += text.substr(written, at - written);
    out += replacement;
    written = at + 1;
  }
  out += text.substr(written);
}

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

void writeValue(std::string& out, XmlText text, Place place) {
  if (text.isWide())
    writeWide(out, text.wideView(), place);
  else
    writeNarrow(out, text.narrowView(), place);
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
      if (at == &root) return;
      at = at->NextSibling();
    }
  }

 private:
  // Line breaks stand only where no text is: a reader drops them there.
  void newLine(bool allowed) {
    if (!indented_ || !allowed) return;
    out_ += '\n';
    out_.append(depth_ * 2, ' ');
  }

  void open(const Node& node) {
    if (depth_ > 0) newLine(node.Parent()->text().empty());
    out_ += '<';
    out_ += node.Tag();
    for (std::size_t i = 0; i < node.attributeCount(); ++i) {
      out_ += ' ';
      out_ += node.attributeName(i).text();
      out_ += "=\"";
      writeValue(out_, node.attributeText(i), Place::attribute);
      out_ += '"';
    }
    if (node.text().empty() && node.FirstChild() == nullptr) {
      out_ += "/>";
      return;
    }
    out_ += '>';
    writeText(node);
    if (node.FirstChild() == nullptr) close(node);
  }

  // White space beside children would be dropped by a reader unless it begins with a reference.
  void writeText(const Node& node) {
    if (node.FirstChild() == nullptr || node.text().empty() || !isBlank(node.text()))
      return writeValue(out_, node.text(), Place::text);
    out_ += "&#" + std::to_string(int(node.text()[0])) + ";";
    for (std::size_t i = 1; i < node.text().size(); ++i) {
      const auto c = static_cast<char>(node.text()[i]);
      writeNarrow(out_, {&c, 1}, Place::text);
    }
  }

  void close(const Node& node) {
    out_ += "</";
    out_ += node.Tag();
    out_ += '>';
  }

  std::string& out_;
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
