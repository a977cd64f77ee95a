#include "host/ui/controls/list_control.h"

#include <algorithm>
#include <numeric>

namespace host {

/// What few rows have beside their element.
struct ListControl::Extra {
  std::unordered_map<std::size_t, XCBasicString> cells;
  std::optional<Colour> colour;
  std::optional<Colour> swatch;
};

/// The rows by the hash of their cell in one column, ordered by hash and then by row.
struct ListControl::KeyIndex {
  std::vector<std::pair<std::size_t, std::uint32_t>> entries;
};

namespace {

std::size_t hashOf(std::u16string_view text) {
  return std::hash<std::u16string_view>()(text);
}

}  // namespace

ListControl::ListControl(ControlOwner& owner, const ControlSpec& spec)
    : Control(owner, spec), multiSelect_(spec.multiSelect) {}

ListControl::~ListControl() = default;

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

const ListControl::KeyIndex& ListControl::keyIndex(std::size_t column) const {
  const auto [entry, isNew] = keys_.try_emplace(column);
  KeyIndex& index = entry->second;
  if (isNew) {
    index.entries.reserve(rows_.size());
    for (std::size_t row = 0; row < rows_.size(); ++row)
      index.entries.emplace_back(hashOf(cell(row, column)), static_cast<std::uint32_t>(at(row)));
    std::sort(index.entries.begin(), index.entries.end());
  }
  return index;
}

std::optional<std::size_t> ListControl::findRow(std::size_t column,
                                                std::u16string_view text) const {
  const auto& entries = keyIndex(column).entries;
  const std::size_t wanted = hashOf(text);
  std::optional<std::size_t> found;
  for (auto entry = std::lower_bound(entries.begin(), entries.end(), std::pair(wanted, 0U));
       entry != entries.end() && entry->first == wanted; ++entry) {
    const std::size_t place = place_.empty() ? entry->second : place_[entry->second];
    if ((!found || place < *found) && cell(place, column) == text) found = place;
  }
  return found;
}

bool ListControl::replaceSelection(std::vector<std::size_t> rows) {
  std::sort(rows.begin(), rows.end());
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

int ListControl::compareRows(const ListColumn& column, std::uint32_t a, std::uint32_t b) const {
  const ListRow& left = rows_[a];
  const ListRow& right = rows_[b];
  if (column.compare) return column.compare(left, right);
  const auto shown = [&](const ListRow& row) {
    return row.element ? row.element->attribute(*column.attribute) : XmlText();
  };
  return shown(left).compare(shown(right));
}

bool ListControl::showsPlainAttribute(std::size_t column) const {
  const ListColumn& definition = columns_[column];
  return definition.attribute && !definition.cell &&
         std::none_of(extras_.begin(), extras_.end(),
                      [column](const auto& own) { return own.second.cells.contains(column); });
}

void ListControl::cellsChanged() {
  keys_.clear();
  changed(Change::cells);
}

void ListControl::sort(ListSort order) {
  if (order.column >= columns_.size()) return;
  const ListColumn& column = columns_[order.column];
  if (order_.empty()) {
    order_.resize(rows_.size());
    std::iota(order_.begin(), order_.end(), 0U);
  }
  std::vector<std::uint32_t> selectedRows;
  for (const std::size_t row : selection_) selectedRows.push_back(order_[row]);

  // Where made texts are shown, they are compared; they are made once a row, not once a comparison.
  std::vector<XCBasicString> texts;
  if (!column.compare && !showsPlainAttribute(order.column)) {
    texts.resize(rows_.size());
    for (std::size_t row = 0; row < rows_.size(); ++row) texts[at(row)] = cell(row, order.column);
  }
  const auto before = [&](std::uint32_t a, std::uint32_t b) {
    if (order.descending) std::swap(a, b);
    return texts.empty() ? compareRows(column, a, b) < 0 : texts[a] < texts[b];
  };
  std::stable_sort(order_.begin(), order_.end(), before);
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
