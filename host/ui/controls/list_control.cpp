#include "host/ui/controls/list_control.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace host {

/// What few rows have beside their element.
struct ListControl::Extra {
  std::unordered_map<std::size_t, XCBasicString> cells;
  std::optional<Colour> colour;
  std::optional<Colour> swatch;
};

/// The rows by their cell in one column: a slot for each text, with the first row that has it, and
/// from each row the next one with the same text. A general map would touch the memory three times
/// as often a row, and a slot for each row would crowd where many rows have one text.
struct ListControl::KeyIndex {
  static constexpr std::uint32_t None = ~0U;
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t row = None;
  };
  std::vector<Slot> slots;  // a power of two, at least half of them free
  std::vector<std::uint32_t> next;

  // The slot of a text, or the free one where it would stand.
  template <class HasText>
  Slot& slotOf(std::uint32_t hash, HasText hasText) {
    const std::size_t mask = slots.size() - 1;
    std::size_t at = hash & mask;
    while (slots[at].row != None && (slots[at].hash != hash || !hasText(slots[at].row)))
      at = (at + 1) & mask;
    return slots[at];
  }
};

namespace {

// FNV-1a over the code units: a text has one hash, whichever way it is kept.
template <class View>
std::uint32_t hashOfUnits(View text) {
  std::uint32_t hash = 0x811C9DC5U;
  for (const auto unit : text) hash = (hash ^ static_cast<std::uint16_t>(unit)) * 0x01000193U;
  return hash;
}

std::uint32_t hashOf(XmlText text) {
  return text.isWide() ? hashOfUnits(text.wideView()) : hashOfUnits(text.narrowView());
}

}  // namespace

ListControl::ListControl(ControlOwner& owner, const ControlSpec& spec)
    : Control(owner, spec), multiSelect_(spec.multiSelect) {}

ListControl::~ListControl() = default;

void ListControl::tellHeld(const Note& note) const {
  for (const ListRow& row : rows_) note(row.element);
}

void ListControl::setColumns(std::vector<ListColumn> columns) {
  columns_ = std::move(columns);
  keys_.clear();
  changed(Change::items);
}

std::vector<int> ListControl::columnWidths(int width) const {
  int shares = 0;
  for (const ListColumn& column : columns_) shares += column.share;
  std::vector<int> widths;
  int left = width;
  for (const ListColumn& column : columns_) {
    const bool last = widths.size() + 1 == columns_.size();
    widths.push_back(last ? left : width / shares * column.share);
    left -= widths.back();
  }
  return widths;
}

void ListControl::clearRows() {
  rows_.clear();
  order_.clear();
  place_.clear();
  extras_.clear();
  ownCells_.clear();
  selection_.clear();
  flags_.clear();
  sorted_.reset();
  keys_.clear();
  changed(Change::rows);
}

std::size_t ListControl::addRow(ListRow row) {
  if (!order_.empty()) {
    order_.push_back(static_cast<std::uint32_t>(rows_.size()));
    place_.push_back(static_cast<std::uint32_t>(rows_.size()));
  }
  rows_.push_back(row);
  flags_.push_back(0);
  if (!keys_.empty()) keys_.clear();
  changed(Change::rows);
  return rows_.size() - 1;
}

ListControl::Extra& ListControl::extra(std::size_t row) {
  return extras_[static_cast<std::uint32_t>(at(row))];
}

const ListControl::Extra* ListControl::findExtra(std::size_t row) const {
  if (extras_.empty()) return nullptr;
  const auto found = extras_.find(static_cast<std::uint32_t>(at(row)));
  return found == extras_.end() ? nullptr : &found->second;
}

XCBasicString ListControl::cell(std::size_t row, std::size_t column) const {
  if (const Extra* own = findExtra(row))
    if (const auto text = own->cells.find(column); text != own->cells.end()) return text->second;
  const XmlDocument::XmlNode* shown = element(row);
  const ListColumn& definition = columns_[column];
  if (shown == nullptr) return {};
  if (definition.cell) return definition.cell(*shown);
  return definition.attribute ? shown->getAttribute(*definition.attribute) : XCBasicString();
}

void ListControl::setCell(std::size_t row, std::size_t column, std::u16string_view text) {
  extra(row).cells[column] = text;
  if (ownCells_.size() <= column) ownCells_.resize(column + 1);
  ownCells_[column] = true;
  keys_.erase(column);
  changed(Change::cells);
}

void ListControl::setColour(std::size_t row, Colour colour) {
  extra(row).colour = colour;
  changed(Change::cells);
}

std::optional<Colour> ListControl::colour(std::size_t row) const {
  const Extra* own = findExtra(row);
  return own ? own->colour : std::nullopt;
}

void ListControl::setSwatch(std::size_t row, Colour colour) {
  extra(row).swatch = colour;
  changed(Change::cells);
}

std::optional<Colour> ListControl::swatch(std::size_t row) const {
  const Extra* own = findExtra(row);
  return own ? own->swatch : std::nullopt;
}

// Of a row as it was added, not of its place.
bool ListControl::rowShows(std::uint32_t row, std::size_t column, std::u16string_view text) const {
  if (showsPlainAttribute(column)) {
    const XmlDocument::XmlNode* element = rows_[row].element;
    return element != nullptr ? element->attribute(*columns_[column].attribute) == text
                              : text.empty();
  }
  return cell(place_.empty() ? row : place_[row], column) == text;
}

ListControl::KeyIndex& ListControl::keyIndex(std::size_t column) const {
  if (const auto known = keys_.find(column); known != keys_.end()) return known->second;
  // It counts as made once it is whole: there may be no memory for it.
  KeyIndex index;
  index.slots.resize(std::bit_ceil(2 * rows_.size() + 1));
  index.next.resize(rows_.size(), KeyIndex::None);
  const auto add = [&](std::uint32_t row, XmlText text, auto hasText) {
    const std::uint32_t hash = hashOf(text);
    KeyIndex::Slot& slot = index.slotOf(hash, hasText);
    index.next[row] = slot.row;
    slot = {hash, row};
  };
  const bool plain = showsPlainAttribute(column);
  std::size_t places[2] = {};
  const auto attributeOf = [&](std::uint32_t row, std::size_t& place) {
    const XmlDocument::XmlNode* element = rows_[row].element;
    return element ? element->attribute(*columns_[column].attribute, place) : XmlText();
  };
  // From the last row on, so that the first one with a text stands in its slot.
  for (auto row = static_cast<std::uint32_t>(rows_.size()); row-- > 0;) {
    if (plain) {
      const XmlText text = attributeOf(row, places[0]);
      add(row, text, [&](std::uint32_t other) { return attributeOf(other, places[1]) == text; });
    } else {
      const XCBasicString text = cell(place_.empty() ? row : place_[row], column);
      add(row, XmlText::wide(text),
          [&](std::uint32_t other) { return rowShows(other, column, text); });
    }
  }
  return keys_.emplace(column, std::move(index)).first->second;
}

std::optional<std::size_t> ListControl::findRow(std::size_t column,
                                                std::u16string_view text) const {
  KeyIndex& index = keyIndex(column);
  std::uint32_t row =
      index
          .slotOf(hashOfUnits(text),
                  [&](std::uint32_t other) { return rowShows(other, column, text); })
          .row;
  if (row == KeyIndex::None) return std::nullopt;
  if (place_.empty()) return row;
  std::size_t first = place_[row];
  while ((row = index.next[row]) != KeyIndex::None)
    first = std::min<std::size_t>(first, place_[row]);
  return first;
}

bool ListControl::replaceSelection(std::vector<std::size_t> rows) {
  if (!std::is_sorted(rows.begin(), rows.end())) std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  while (!rows.empty() && rows.back() >= rows_.size()) rows.pop_back();
  if (!multiSelect_ && rows.size() > 1) rows.erase(rows.begin() + 1, rows.end());
  if (rows == selection_) return false;
  for (const std::size_t row : selection_) flags_[row] = 0;
  for (const std::size_t row : rows) flags_[row] = 1;
  selection_ = std::move(rows);
  changed(Change::selection);
  return true;
}

void ListControl::select(std::vector<std::size_t> rows) {
  if (replaceSelection(std::move(rows))) notice(Notice::selectionChanged);
}

void ListControl::selectOnly(std::size_t row) {
  select({row});
}

void ListControl::selectAll() {
  std::vector<std::size_t> rows(rows_.size());
  std::iota(rows.begin(), rows.end(), std::size_t(0));
  select(std::move(rows));
}

void ListControl::addToSelection(std::size_t row) {
  if (row >= rows_.size() || isSelected(row)) return;
  if (!multiSelect_) return selectOnly(row);
  flags_[row] = 1;
  selection_.insert(std::lower_bound(selection_.begin(), selection_.end(), row), row);
  changed(Change::selection);
  notice(Notice::selectionChanged);
}

bool ListControl::showsPlainAttribute(std::size_t column) const {
  const ListColumn& definition = columns_[column];
  const bool hasOwnCells = column < ownCells_.size() && ownCells_[column];
  return definition.attribute && !definition.cell && !hasOwnCells;
}

void ListControl::cellsChanged() {
  keys_.clear();
  changed(Change::cells);
}

// Keys are made once a row, not once a comparison, wherever that is possible: looking at an element
// costs more than comparing.
void ListControl::sortRows(ListSort order) {
  const ListColumn& column = columns_[order.column];
  if (column.number && sortByNumbers(column, order.descending)) return;
  const auto byRow = [](std::uint32_t row) { return row; };
  if (column.compare)
    return sortKeyed(order.descending, byRow, [&](const auto& a, const auto& b) {
      return column.compare(rows_[a.row], rows_[b.row]) < 0;
    });
  if (showsPlainAttribute(order.column))
    return sortByAttribute(*column.attribute, order.descending);
  std::vector<XCBasicString> texts(rows_.size());
  for (std::size_t row = 0; row < rows_.size(); ++row) texts[at(row)] = cell(row, order.column);
  sortKeyed(order.descending, byRow,
            [&](const auto& a, const auto& b) { return texts[a.row] < texts[b.row]; });
}

// Puts order_ into the stable order of keys, each with its row.
template <class KeyOf, class Before>
void ListControl::sortKeyed(bool descending, KeyOf keyOf, Before before) {
  struct Keyed {
    decltype(keyOf(0U)) key;
    std::uint32_t row;
  };
  std::vector<Keyed> keyed;
  keyed.reserve(order_.size());
  for (const std::uint32_t row : order_) keyed.push_back({keyOf(row), row});
  if (descending)
    std::stable_sort(keyed.begin(), keyed.end(),
                     [&](const Keyed& a, const Keyed& b) { return before(b, a); });
  else
    std::stable_sort(keyed.begin(), keyed.end(), before);
  std::transform(keyed.begin(), keyed.end(), order_.begin(),
                 [](const Keyed& one) { return one.row; });
}

// False when a row has no number: the order is then that of the column's comparison.
bool ListControl::sortByNumbers(const ListColumn& column, bool descending) {
  std::vector<std::int64_t> numbers;
  numbers.reserve(rows_.size());
  for (const ListRow& row : rows_) {
    const auto number = row.element ? column.number(*row.element) : std::nullopt;
    if (!number) return false;
    numbers.push_back(*number);
  }
  sortKeyed(
      descending, [&](std::uint32_t row) { return numbers[row]; },
      [](const auto& a, const auto& b) { return a.key < b.key; });
  return true;
}

namespace {

// Eight characters of a narrow text as a number of the same order.
std::uint64_t eightFrom(XmlText text, std::size_t at) {
  std::uint64_t front = 0;
  const std::string_view bytes = text.narrowView();
  for (std::size_t i = 0; i < sizeof front; ++i)
    front = front << 8 | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0U);
  return front;
}

std::size_t commonFront(XmlText a, XmlText b, std::size_t most) {
  most = std::min({most, a.size(), b.size()});
  std::size_t at = 0;
  while (at < most && a.narrowView()[at] == b.narrowView()[at]) ++at;
  return at;
}

}  // namespace

// While all texts are narrow, the key is eight characters behind those that all have in common; the
// texts are looked at only where it is the same. What is moved while sorting stays small.
void ListControl::sortByAttribute(XmlName attribute, bool descending) {
  std::vector<XmlText> texts(rows_.size());
  bool narrow = true;
  std::size_t common = XmlText::MaxSize;
  std::size_t place = 0;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (rows_[row].element) texts[row] = rows_[row].element->attribute(attribute, place);
    narrow = narrow && !texts[row].isWide();
    if (narrow) common = commonFront(texts[0], texts[row], common);
  }
  sortKeyed(
      descending,
      [&](std::uint32_t row) { return narrow ? eightFrom(texts[row], common) : std::uint64_t(0); },
      [&](const auto& a, const auto& b) {
        return a.key != b.key ? a.key < b.key : texts[a.row].compare(texts[b.row]) < 0;
      });
}

void ListControl::sort(ListSort order) {
  if (order.column >= columns_.size()) return;
  if (order_.empty()) {
    order_.resize(rows_.size());
    std::iota(order_.begin(), order_.end(), 0U);
  }
  std::vector<std::uint32_t> selectedRows;
  for (const std::size_t row : selection_) selectedRows.push_back(order_[row]);

  sortRows(order);
  place_.resize(order_.size());
  for (std::size_t row = 0; row < order_.size(); ++row)
    place_[order_[row]] = static_cast<std::uint32_t>(row);

  for (const std::size_t row : selection_) flags_[row] = 0;
  selection_.clear();
  for (const std::uint32_t row : selectedRows) selection_.push_back(place_[row]);
  std::sort(selection_.begin(), selection_.end());
  for (const std::size_t row : selection_) flags_[row] = 1;
  sorted_ = order;
  changed(Change::rows);
}

}  // namespace host
