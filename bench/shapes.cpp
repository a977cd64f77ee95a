#include "bench/shapes.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>
#include <vector>

namespace bench {
namespace {

// As many as an element and a document may have.
constexpr std::size_t MostAttributes = 4000;
constexpr std::size_t MostNames = 4000;
constexpr std::size_t Levels = 60;

// Appends pieces, which are told their number, until there is enough.
std::string filled(std::size_t bytes, const std::function<std::string(std::size_t)>& piece) {
  std::string content;
  content.reserve(bytes + 64);
  for (std::size_t i = 0; content.size() < bytes; ++i) content += piece(i);
  return content;
}

template <const char* Piece>
std::string repeated(std::size_t bytes) {
  return filled(bytes, [](std::size_t) { return std::string(Piece); });
}

std::string number(std::size_t i) {
  return std::to_string(1000000 + i);
}

std::string nameOf(std::size_t i) {
  return "n" + std::to_string(1000 + i % MostNames);
}

std::string rows(std::size_t bytes) {
  return filled(bytes, [](std::size_t i) {
    return "<Node nodeId=\"0013A200" + number(i) + "\" Reference=\"Street " + number(i) +
           "\" latitude=\"41." + number(i) + "\" longitude=\"2." + number(i) + "\"/>\n";
  });
}

// Texts broken at every level of a deep element.
std::string nestedPieces(std::size_t bytes) {
  std::string content;
  for (std::size_t i = 0; i < Levels; ++i)
    content += filled(bytes / Levels / 2, [](std::size_t) { return "a<b/>"; }) + "<c>";
  for (std::size_t i = 0; i < Levels; ++i)
    content += "</c>" + filled(bytes / Levels / 2, [](std::size_t) { return "d<e/>"; });
  return content;
}

std::string deep(std::size_t bytes) {
  std::string tower;
  for (std::size_t i = 0; i < Levels; ++i) tower += "<a>";
  for (std::size_t i = 0; i < Levels; ++i) tower += "</a>";
  return filled(bytes, [&](std::size_t) { return tower; });
}

// Where a line break is written for every element, its indentation is the larger part.
std::string wideBelowDeep(std::size_t bytes) {
  std::string content;
  for (std::size_t i = 0; i < Levels; ++i) content += "<a>";
  content += filled(bytes, [](std::size_t) { return "<b/>"; });
  for (std::size_t i = 0; i < Levels; ++i) content += "</a>";
  return content;
}

enum class Order { same, reversedInTurn, reversedInTurnOtherwise, shuffled };

// Elements with as many attributes as there may be, or as the size allows.
std::string manyAttributes(std::size_t bytes, Order order) {
  std::vector<std::size_t> places(std::min(MostAttributes, bytes / 32));
  std::iota(places.begin(), places.end(), std::size_t(0));
  std::mt19937 engine(1);
  return filled(bytes, [&](std::size_t i) {
    std::vector<std::size_t> turned = places;
    if (order == Order::shuffled) std::shuffle(turned.begin(), turned.end(), engine);
    if ((order == Order::reversedInTurn && i % 2 == 1) ||
        (order == Order::reversedInTurnOtherwise && i % 2 == 0))
      std::reverse(turned.begin(), turned.end());
    std::string element = "<a";
    for (const std::size_t place : turned) element += " " + nameOf(place) + "=\"\"";
    return element + "/>";
  });
}

std::string alikeAttributes(std::size_t bytes) {
  return manyAttributes(bytes, Order::same);
}
std::string reversedAttributes(std::size_t bytes) {
  return manyAttributes(bytes, Order::reversedInTurn);
}
std::string reversedOtherwise(std::size_t bytes) {
  return manyAttributes(bytes, Order::reversedInTurnOtherwise);
}
std::string shuffledAttributes(std::size_t bytes) {
  return manyAttributes(bytes, Order::shuffled);
}

std::string manyTags(std::size_t bytes) {
  return filled(bytes, [](std::size_t i) { return "<" + nameOf(i * 1237) + "/>"; });
}

std::string manyNames(std::size_t bytes) {
  return filled(bytes, [](std::size_t i) {
    return "<a " + nameOf(i * 1237) + "=\"\" " + nameOf(i * 1237 + 1) + "=\"\" " +
           nameOf(i * 1237 + 2) + "=\"\"/>";
  });
}

std::string longNames(std::size_t bytes) {
  const std::string name(250, 'n');
  return filled(bytes, [&](std::size_t i) { return "<" + name + std::to_string(i % 100) + "/>"; });
}

std::string longText(std::size_t bytes) {
  return "<a>" + std::string(bytes, 'x') + "</a>";
}
std::string longValue(std::size_t bytes) {
  return "<a b=\"" + std::string(bytes, 'x') + "\"/>";
}
std::string lineEnds(std::size_t bytes) {
  return "<a>" + std::string(bytes, '\n') + "</a>";
}
std::string longComment(std::size_t bytes) {
  return "<!--" + std::string(bytes, 'x') + "-->";
}

// Groups with an id, as paths look for them.
std::string keys(std::size_t bytes) {
  return filled(bytes, [](std::size_t i) { return "<group><id>" + number(i) + "</id></group>"; });
}

constexpr char PiecesByElements[] = "a<b/>";
constexpr char PiecesByComments[] = "a<!---->";
constexpr char PiecesByCharacterData[] = "a<![CDATA[b]]>";
constexpr char PiecesByInstructions[] = "a<?b?>";
constexpr char WidePieces[] = "\xC3\xA9<b/>";
constexpr char EmptyElements[] = "<a/>";
constexpr char Pairs[] = "<a></a>";
constexpr char Instructions[] = "<?a?>";
constexpr char References[] = "&#65;&amp;";
constexpr char ValuesWithReferences[] = "<a b=\"&lt;&#10;\"/>";
constexpr char WideValues[] = "<a b=\"\xC3\xA9\">\xE2\x82\xAC</a>\n";
constexpr char ShortTexts[] = "<a>b</a>";

constexpr Shape Shapes[] = {
    {"rows", rows},
    {"piecesByElements", repeated<PiecesByElements>},
    {"piecesByComments", repeated<PiecesByComments>},
    {"piecesByCharacterData", repeated<PiecesByCharacterData>},
    {"piecesByInstructions", repeated<PiecesByInstructions>},
    {"widePieces", repeated<WidePieces>},
    {"nestedPieces", nestedPieces},
    {"emptyElements", repeated<EmptyElements>},
    {"pairs", repeated<Pairs>},
    {"shortTexts", repeated<ShortTexts>},
    {"instructions", repeated<Instructions>},
    {"deep", deep},
    {"wideBelowDeep", wideBelowDeep},
    {"alikeAttributes", alikeAttributes},
    {"reversedAttributes", reversedAttributes, reversedOtherwise},
    {"shuffledAttributes", shuffledAttributes, alikeAttributes},
    {"manyTags", manyTags},
    {"manyNames", manyNames},
    {"longNames", longNames},
    {"longText", longText},
    {"longValue", longValue},
    {"lineEnds", lineEnds},
    {"longComment", longComment},
    {"references", repeated<References>},
    {"valuesWithReferences", repeated<ValuesWithReferences>},
    {"wideValues", repeated<WideValues>},
    {"keys", keys},
};

}  // namespace

std::span<const Shape> shapes() {
  return Shapes;
}

std::string shaped(const Shape& shape, const std::string& root, std::size_t bytes) {
  return "<" + root + ">" + shape.content(bytes) + "</" + root + ">";
}

}  // namespace bench
