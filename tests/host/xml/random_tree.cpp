#include "tests/host/xml/random_tree.h"

#include <vector>

#include "host/text/utf.h"

namespace random_tree {
namespace {

int below(Engine& engine, int count) {
  return static_cast<int>(engine() % static_cast<unsigned>(count));
}

char32_t character(Engine& engine) {
  constexpr char32_t Telling[] = U"<>&\"'\t\n\r ]=/%?;#\u0085\u2028\uFFFD\U0001F4A1\u00F1\u20AC";
  switch (below(engine, 4)) {
    case 0:
      return Telling[below(engine, int(std::size(Telling)) - 1)];
    case 1: {
      const auto c = static_cast<char32_t>(engine() % 0x110000);
      const bool allowed = c >= 0x20 && (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF;
      return allowed ? c : U'x';
    }
    default:
      return char32_t('a' + below(engine, 26));
  }
}

host::XmlName name(Engine& engine) {
  constexpr const char* Names[] = {"a", "b", "nodeId", "Node", "L04", "\u00F1", "x-1", "_", "n:s"};
  return Names[below(engine, int(std::size(Names)))];
}

}  // namespace

std::u16string text(Engine& engine, int longest) {
  std::u16string out;
  for (int i = below(engine, longest + 1); i > 0; --i)
    host::appendCodePoint(out, character(engine));
  return out;
}

XmlDocument make(Engine& engine, int elements) {
  XmlDocument document(name(engine));
  std::vector<std::pair<XmlDocument::XmlNode*, int>> nodes = {{document.Root(), 1}};
  for (int i = 1; i < elements; ++i) {
    const auto [parent, depth] = nodes[std::size_t(below(engine, int(nodes.size())))];
    XmlDocument::XmlNode& child = parent->NewChild(name(engine));
    for (int a = below(engine, 5); a > 0; --a) child.setAttribute(name(engine), text(engine, 12));
    if (below(engine, 3) == 0) child.SetText(text(engine, 20));
    if (depth < 60) nodes.emplace_back(&child, depth + 1);
  }
  return document;
}

}  // namespace random_tree
