#include "workbench/pages/row_filter.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "host/dialogs/device_cfg.h"
#include "host/services/identity.h"
#include "workbench/pages/page_changes.h"
#include "workbench/pages/row_edit.h"

namespace workbench {
namespace {

using host::ListControl;

constexpr std::string_view Identity = "Id";
constexpr std::string_view Reference = "Reference";

std::u32string folded(std::u16string_view text) {
  return host::foldedText(text);
}

// --- the terms of a text

/// What a person typed as one term.
struct Token {
  std::u16string text;  ///< without quotes
  bool turned = false;
  bool quoted = false;                         ///< begins with a quote: a text and nothing else
  std::size_t quoteAt = std::u16string::npos;  ///< where a quoted part begins in `text`
};

bool isBlank(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\u00A0';
}

std::vector<Token> tokensOf(std::u16string_view text) {
  std::vector<Token> tokens;
  while (!text.empty()) {
    if (isBlank(text[0])) {
      text.remove_prefix(1);
      continue;
    }
    Token token;
    if (text[0] == u'-' && text.size() > 1 && !isBlank(text[1])) {
      token.turned = true;
      text.remove_prefix(1);
    }
    token.quoted = text[0] == u'"';
    bool inside = false;
    while (!text.empty() && (inside || !isBlank(text[0]))) {
      if (text[0] != u'"') {
        token.text += text[0];
      } else if (inside && text.size() > 1 && text[1] == u'"') {
        token.text += u'"';
        text.remove_prefix(1);
      } else {
        inside = !inside;
        token.quoteAt = std::min(token.quoteAt, token.text.size());
      }
      text.remove_prefix(1);
    }
    tokens.push_back(std::move(token));
  }
  return tokens;
}

enum class Comparison { contains, equal, different, less, atMost, greater, atLeast };

struct Operator {
  std::u16string_view text;
  Comparison comparison;
};
// The longer ones first.
constexpr std::array<Operator, 7> Operators = {{{u"!=", Comparison::different},
                                                {u"<=", Comparison::atMost},
                                                {u">=", Comparison::atLeast},
                                                {u":", Comparison::contains},
                                                {u"=", Comparison::equal},
                                                {u"<", Comparison::less},
                                                {u">", Comparison::greater}}};

/// "power1>=80" taken apart.
struct Condition {
  std::u16string name;
  Comparison comparison;
  std::u16string value;
};

std::optional<Condition> conditionIn(const Token& token) {
  if (token.quoted) return std::nullopt;
  for (std::size_t at = 1; at < std::min(token.text.size(), token.quoteAt); ++at)
    for (const Operator& candidate : Operators)
      if (token.text.compare(at, candidate.text.size(), candidate.text) == 0)
        return Condition{token.text.substr(0, at), candidate.comparison,
                         token.text.substr(at + candidate.text.size())};
  return std::nullopt;
}

// --- numbers of any length

/// Sign, digits, point, digits; compared without rounding.
struct Decimal {
  bool negative = false;
  std::u16string whole;     // without leading zeros
  std::u16string fraction;  // without zeros at its end

  static std::optional<Decimal> read(std::u16string_view text) {
    Decimal number;
    if (!text.empty() && (text[0] == u'+' || text[0] == u'-')) {
      number.negative = text[0] == u'-';
      text.remove_prefix(1);
    }
    const std::size_t point = text.find(u'.');
    number.whole = text.substr(0, point);
    if (point != std::u16string_view::npos) number.fraction = text.substr(point + 1);
    const auto isDigit = [](char16_t c) { return c >= u'0' && c <= u'9'; };
    if (number.whole.size() + number.fraction.size() == 0 ||
        !std::all_of(number.whole.begin(), number.whole.end(), isDigit) ||
        !std::all_of(number.fraction.begin(), number.fraction.end(), isDigit))
      return std::nullopt;
    number.whole.erase(0, std::min(number.whole.find_first_not_of(u'0'), number.whole.size()));
    number.fraction.erase(number.fraction.find_last_not_of(u'0') + 1);
    if (number.whole.empty() && number.fraction.empty()) number.negative = false;
    return number;
  }

  int compare(const Decimal& other) const {
    if (negative != other.negative) return negative ? -1 : 1;
    int order = whole.size() != other.whole.size() ? (whole.size() < other.whole.size() ? -1 : 1)
                                                   : whole.compare(other.whole);
    if (order == 0) order = fraction.compare(other.fraction);
    return negative ? -order : order;
  }
};

/// A cell against what a condition says.
class CellTest {
 public:
  explicit CellTest(const Condition& condition)
      : comparison_(condition.comparison),
        text_(folded(condition.value)),
        number_(Decimal::read(condition.value)) {}

  bool holds(const XCBasicString& cell) const {
    if (comparison_ == Comparison::contains)
      return folded(cell).find(text_) != std::u32string::npos;
    const bool ordered = comparison_ != Comparison::equal && comparison_ != Comparison::different;
    if (ordered && cell.IsEmpty()) return false;
    return accepts(orderOf(cell));
  }

 private:
  int orderOf(const XCBasicString& cell) const {
    if (number_)
      if (const auto number = Decimal::read(cell)) return number->compare(*number_);
    return folded(cell).compare(text_);
  }
  bool accepts(int order) const {
    switch (comparison_) {
      case Comparison::equal:
        return order == 0;
      case Comparison::different:
        return order != 0;
      case Comparison::less:
        return order < 0;
      case Comparison::atMost:
        return order <= 0;
      case Comparison::greater:
        return order > 0;
      case Comparison::atLeast:
        return order >= 0;
      case Comparison::contains:
        break;
    }
    return false;
  }

  Comparison comparison_;
  std::u32string text_;
  std::optional<Decimal> number_;
};

// --- columns

XCBasicString nameOf(const host::ListColumn& column) {
  if (!column.name.empty()) return XCBasicString::FromUtf8(column.name);
  return column.attribute ? XCBasicString::FromUtf8(column.attribute->text()) : XCBasicString();
}

// The column of an attribute, else the one of a header; "Id" is the one that says who a row is.
std::optional<std::size_t> columnCalled(const ListControl& list, const std::u32string& name) {
  const auto& columns = list.columns();
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (folded(nameOf(columns[i])) == name && !name.empty()) return i;
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (folded(columns[i].caption) == name) return i;
  if (!columns.empty() && name == folded(XCBasicString::FromUtf8(Identity))) return 0;
  return std::nullopt;
}

}  // namespace

RowFilter::RowFilter(std::u16string_view text, const ListControl& list, const FilterSource& source)
    : list_(list) {
  const auto flagged = [](std::vector<bool> flags) -> Test {
    return [flags = std::move(flags)](std::size_t row) { return row < flags.size() && flags[row]; };
  };
  const auto wordTest = [&list](const std::u16string& word) -> Test {
    return [&list, wanted = folded(word)](std::size_t row) {
      for (std::size_t column = 0; column < list.columns().size(); ++column)
        if (folded(list.cell(row, column)).find(wanted) != std::u32string::npos) return true;
      return false;
    };
  };
  const auto conditionTest = [&](const Condition& condition) -> Test {
    const CellTest test(condition);
    const std::u32string name = folded(condition.name);
    if (const auto column = columnCalled(list, name))
      return [&list, test, column = *column](std::size_t row) {
        return test.holds(list.cell(row, column));
      };
    if (!source.hidden || name != folded(XCBasicString::FromUtf8(Reference))) return nullptr;
    if (auto value = source.hidden(Reference))
      return [test, value = std::move(value)](std::size_t row) { return test.holds(value(row)); };
    return nullptr;
  };
  for (const Token& token : tokensOf(text)) {
    Test test;
    const std::u32string word = folded(token.text);
    if (!token.quoted && token.quoteAt == std::u16string::npos) {
      if (word == U"changed" && source.changed) test = flagged(source.changed());
      if (word == U"fault" && source.faulty) test = flagged(source.faulty());
    }
    if (!test)
      if (const auto condition = conditionIn(token)) test = conditionTest(*condition);
    if (!test) test = wordTest(token.text);
    terms_.push_back({std::move(test), token.turned});
  }
}

bool RowFilter::keeps(std::size_t row) const {
  return std::all_of(terms_.begin(), terms_.end(),
                     [row](const Term& term) { return term.holds(row) != term.turned; });
}

std::vector<std::size_t> RowFilter::rows() const {
  std::vector<std::size_t> kept;
  for (std::size_t row = 0; row < list_.rowCount(); ++row)
    if (keeps(row)) kept.push_back(row);
  return kept;
}

namespace {

// By the row's identity, from what a page tells of its rows.
template <class Told>
std::vector<bool> flagsOf(const ListControl& list, const host::RowSet& rows, const Told& told) {
  std::unordered_set<std::u16string> identities;
  for (const auto& one : told) {
    if (!one.row) continue;
    const std::u16string& row = one.row->str();
    identities.insert(row.substr(0, row.find(u'/')));
  }
  std::vector<bool> flags(list.rowCount());
  for (std::size_t row = 0; row < flags.size(); ++row)
    flags[row] = rows.identity && identities.contains(rows.identity(*list.element(row)).str());
  return flags;
}

XmlDocument::XmlNode* deviceOf(const XCBaseDlg& dialog) {
  for (const CWnd* window = &dialog; window != nullptr; window = window->GetParent())
    if (const auto* page = dynamic_cast<const XCBaseDeviceCfg*>(window)) return page->Device();
  return nullptr;
}

FilterSource::Value referencesOf(const ListControl& list, const host::RowSet& rows,
                                 const XmlDocument::XmlNode* device) {
  const auto* children = device == nullptr ? nullptr : device->Node("childDevices");
  if (children == nullptr || !rows.identity) return nullptr;
  auto references = std::make_shared<std::unordered_map<std::u16string, XCBasicString>>();
  for (const auto& child : children->Children())
    references->try_emplace(child.Value("name").str(), child.Value("description"));
  return [&list, identity = rows.identity, references](std::size_t row) {
    const auto found = references->find(identity(*list.element(row)).str());
    return found == references->end() ? XCBasicString() : found->second;
  };
}

}  // namespace

FilterSource filterSourceOf(const XCBaseDlg& dialog, const ListControl& list) {
  host::EditedPage* page = const_cast<XCBaseDlg&>(dialog).Edits();
  const host::RowSet* rows = page == nullptr ? nullptr : rowsShownIn(*page, list);
  FilterSource source;
  if (rows == nullptr) return source;
  source.changed = [&list, rows, page] { return flagsOf(list, *rows, changesOf(*page)); };
  source.faulty = [&list, rows, page, &dialog] {
    return flagsOf(list, *rows, faultsOf(dialog, *page));
  };
  source.hidden = [&list, rows, &dialog](std::string_view) {
    return referencesOf(list, *rows, deviceOf(dialog));
  };
  return source;
}

}  // namespace workbench
