#include "host/resources/texts.h"

#include <unordered_map>

#include "host/xml/xml_document.h"

namespace host {
namespace {

constexpr std::string_view NumbersLanguage = "numbers";
constexpr std::string_view PlaceholderLanguage = "en";

using Catalogue = std::unordered_map<int, XCBasicString>;

Catalogue& catalogue() {
  static Catalogue texts;
  return texts;
}

XCBasicString numberText(int id, const XCBasicString& placeholders) {
  XCBasicString text = XCBasicString::Format(u"[%d]", id);
  if (!placeholders.IsEmpty()) text += u"(" + placeholders.str() + u")";
  return text;
}

}  // namespace

bool loadTexts(const std::filesystem::path& folder, std::string_view language, std::string& cause) {
  const bool numbers = language == NumbersLanguage;
  if (language.empty() || language.find_first_of("/\\.") != std::string_view::npos) {
    cause = "\"" + std::string(language) + "\" is not a language";
    return false;
  }
  const auto file = folder / (std::string(numbers ? PlaceholderLanguage : language) + ".xml");
  XmlDocument document;
  XmlError error;
  if (!document.Load(file, &error)) {
    cause = "the texts of the language \"" + std::string(language) + "\" (" + file.string() +
            ") can't be read: " + error.text();
    return false;
  }
  static const XmlName Id("id");
  static const XmlName Arguments("args");
  Catalogue texts;
  for (const XmlDocument::XmlNode& text : document.Root()->Children()) {
    const int id = text.attribute(Id).toInt();
    texts[id] = numbers ? numberText(id, text.getAttribute(Arguments)) : text.Text();
  }
  catalogue() = std::move(texts);
  return true;
}

}  // namespace host

XCBasicString XCLoadString(int id) {
  const auto found = host::catalogue().find(id);
  return found == host::catalogue().end() ? host::numberText(id, {}) : found->second;
}

XCBasicString XCLoadString(host::TextId id) {
  return XCLoadString(static_cast<int>(id));
}
