#include "workbench/unkept_content.h"

#include <algorithm>
#include <vector>

#include "host/resources/texts.h"

namespace workbench {
namespace {

using host::TextId;

constexpr std::string_view CommentBegin = "<!--";
constexpr std::string_view CommentEnd = "-->";
constexpr std::string_view RawBegin = "<![CDATA[";
constexpr std::string_view RawEnd = "]]>";
constexpr std::string_view InstructionBegin = "<?";
constexpr std::string_view InstructionEnd = "?>";
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// The declaration in front is made anew, with the same meaning.
bool isDeclaration(std::string_view instruction) {
  constexpr std::string_view Name = "<?xml";
  return instruction.starts_with(Name) && isBlank(instruction[Name.size()]);
}

/// Walks over the pieces of a document, which is known to be well-formed.
class Scan {
 public:
  explicit Scan(std::string_view xml) : xml_(xml) {
    if (xml_.starts_with(ByteOrderMark)) at_ = ByteOrderMark.size();
  }

  UnkeptContent run() {
    while (at_ < xml_.size()) xml_[at_] == '<' ? markup() : text(until("<", 0));
    return found_;
  }

 private:
  // The piece from here up to @p end, which begins @p from characters behind here, and goes along
  // when it is markup's.
  std::string_view until(std::string_view end, std::size_t from) {
    const std::size_t place = xml_.find(end, at_ + from);
    const std::size_t size = from > 0 ? end.size() : 0;
    const std::size_t behind = place == std::string_view::npos ? xml_.size() : place + size;
    const std::string_view piece = xml_.substr(at_, behind - at_);
    at_ = behind;
    return piece;
  }

  void markup() {
    const std::string_view rest = xml_.substr(at_);
    const char* begin = rest.data();
    if (rest.starts_with(CommentBegin)) {
      until(CommentEnd, CommentBegin.size());
      note(found_.comment, begin);
    } else if (rest.starts_with(RawBegin)) {
      const std::string_view raw = until(RawEnd, RawBegin.size());
      if (raw.size() > RawBegin.size() + RawEnd.size()) noteText(begin);
    } else if (rest.starts_with(InstructionBegin)) {
      if (!isDeclaration(until(InstructionEnd, InstructionBegin.size())))
        note(found_.instruction, begin);
    } else {
      tag();
    }
  }

  // ">" stands for itself inside of a quoted value.
  void tag() {
    const bool closes = xml_.substr(at_).starts_with("</");
    char quote = 0;
    std::size_t end = at_;
    for (; end < xml_.size(); ++end) {
      const char c = xml_[end];
      if (quote == 0 && c == '>') break;
      if (quote == 0 && (c == '"' || c == '\'')) {
        quote = c;
      } else if (c == quote) {
        quote = 0;
      }
    }
    const bool empty = end > at_ && xml_[end - 1] == '/';
    at_ = std::min(end + 1, xml_.size());
    if (closes) {
      if (!hasChild_.empty()) hasChild_.pop_back();
      return;
    }
    if (!hasChild_.empty()) hasChild_.back() = true;
    if (!empty) hasChild_.push_back(false);
  }

  void text(std::string_view piece) {
    if (!std::all_of(piece.begin(), piece.end(), isBlank)) noteText(piece.data());
  }

  void noteText(const char* place) {
    if (!hasChild_.empty() && hasChild_.back()) note(found_.movedText, place);
  }

  void note(std::size_t& line, const char* place) const {
    if (line == 0) line = 1 + static_cast<std::size_t>(std::count(xml_.data(), place, '\n'));
  }

  std::string_view xml_;
  std::size_t at_ = 0;
  std::vector<bool> hasChild_;  // of the open elements: whether a child came already
  UnkeptContent found_;
};

}  // namespace

XCBasicString UnkeptContent::text() const {
  XCBasicString list;
  const auto add = [&list](TextId text, std::size_t line) {
    if (line == 0) return;
    if (!list.IsEmpty()) list += u", ";
    list += XCBasicString::Format(XCLoadString(text), line).str();
  };
  add(TextId::CommentsNotKept, comment);
  add(TextId::InstructionsNotKept, instruction);
  add(TextId::TextMoves, movedText);
  return list;
}

UnkeptContent unkeptContentOf(std::string_view xml) {
  return Scan(xml).run();
}

}  // namespace workbench
