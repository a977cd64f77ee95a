#include "editor/window/document_text.h"

#include "host/xml/xml_document.h"
#include "workbench/page_values.h"

namespace editor {
namespace {

// A person reads the beginning of a document; a table of many thousand nodes would stop the window.
constexpr std::size_t MostCharacters = 400'000;

QString cutText(std::string text, bool cut = false) {
  cut = cut || text.size() > MostCharacters;
  if (text.size() > MostCharacters) text.resize(MostCharacters);
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())) +
         (cut ? QStringLiteral("\n…\n") : QString());
}

// Many attributes in the first element's line are read one below the other.
QString unfolded(QString text) {
  constexpr qsizetype LongestLine = 60;
  const qsizetype end = text.indexOf('\n');
  QString line = text.left(end);
  if (line.size() <= LongestLine) return text;
  // Quotes inside of a value are written as entities.
  line.replace("\" ", "\"\n  ");
  line.replace(line.indexOf(' '), 1, "\n  ");
  return end < 0 ? line : line + text.mid(end);
}

}  // namespace

QString documentText(const std::string& xml) {
  if (xml.empty()) return {};
  XmlDocument document;
  return cutText(document.Parse(xml) ? document.ToString(XmlDocument::Layout::indented) : xml);
}

QString documentText(const workbench::KeptDocument& document) {
  bool cut = false;
  std::string text = document.beginning(MostCharacters, cut);
  return cutText(std::move(text), cut);
}

QString sectionText(const std::string& xml, const std::string& section) {
  XmlDocument document;
  const XmlDocument::XmlNode* element = nullptr;
  if (document.Parse(xml)) element = workbench::sectionElement(document, section);
  if (element == nullptr) return documentText(xml);
  XmlDocument alone;
  alone.Create(element->TagName()) = *element;
  std::string text = alone.ToString(XmlDocument::Layout::indented);
  return unfolded(cutText(text.substr(text.find('\n') + 1)));
}

}  // namespace editor
