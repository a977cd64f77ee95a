#include "workbench/table/list_table.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "host/text/utf.h"
#include "workbench/pages/row_edit.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;
using host::ListControl;
using host::RowSet;

XCBasicString reason(const std::string& text) {
  return XCBasicString::FromUtf8(text);
}

class Import {
 public:
  Import(const XCBaseDlg& dialog, const RowSet& rows, ListControl& list, std::string_view csv)
      : rows_(rows), list_(list), edits_(editsBelow(dialog, rows, list)), table_(readCsv(csv)) {}

  TableImport run(host::EditedPage& page, bool dryRun) {
    for (const CsvFault& fault : table_.faults)
      add(fault.line, fault.column, nameOfColumn(fault.column),
          fault.unended ? "the quotes do not end" : "text stands behind the quotes");
    if (!readNames()) return finished();
    indexRows();
    for (std::size_t i = 1; i < table_.lines.size(); ++i) readLine(table_.lines[i]);
    if (!result_.faults.empty()) return finished();
    result_.changed = values_.size();
    std::set<std::size_t> rows;
    for (const Value& value : values_) rows.insert(value.row);
    result_.rows = rows.size();
    if (dryRun || values_.empty()) return std::move(result_);
    for (const Value& value : values_)
      value.edit->binding->put(*list_.element(value.row), value.text);
    page.Refresh();
    return std::move(result_);
  }

 private:
  struct Value {
    std::size_t row;
    const RowEdit* edit;
    XCBasicString text;
  };

  void add(std::size_t line, std::size_t column, std::optional<std::string> name,
           const std::string& text) {
    add(line, column, std::move(name), reason(text));
  }
  void add(std::size_t line, std::size_t column, std::optional<std::string> name,
           XCBasicString text) {
    result_.faults.push_back({line, column, std::move(name), std::move(text)});
  }
  TableImport finished() {
    std::stable_sort(result_.faults.begin(), result_.faults.end(),
                     [](const TableFault& a, const TableFault& b) {
                       return std::pair(a.line, a.column) < std::pair(b.line, b.column);
                     });
    return std::move(result_);
  }

  std::optional<std::string> nameOfColumn(std::size_t column) const {
    if (table_.lines.empty() || column > table_.lines[0].cells.size()) return std::nullopt;
    return table_.lines[0].cells[column - 1].text;
  }

  // False where there is no column that says who a row is.
  bool readNames() {
    if (table_.lines.empty()) {
      add(1, 1, std::nullopt, "the table has no line");
      return false;
    }
    const CsvLine& names = table_.lines[0];
    std::set<std::string_view> known;
    for (std::size_t i = 0; i < names.cells.size(); ++i) {
      const std::string& name = names.cells[i].text;
      columns_.push_back(nullptr);
      if (!known.insert(name).second) {
        add(names.cells[i].line, i + 1, name, "the column stands twice");
      } else if (name == rows_.identityName) {
        identity_ = i;
      } else if (const RowEdit* edit = editCalled(name)) {
        columns_[i] = edit;
      } else {
        add(names.cells[i].line, i + 1, name, "the list has no such column");
      }
    }
    if (identity_) return true;
    result_.faults.clear();
    add(1, 1, std::nullopt, "the table has no column \"" + std::string(rows_.identityName) + "\"");
    return false;
  }

  const RowEdit* editCalled(std::string_view name) const {
    for (const RowEdit& edit : edits_)
      if (edit.binding->name == name && name != rows_.identityName) return &edit;
    return nullptr;
  }

  void indexRows() {
    for (std::size_t row = 0; row < list_.rowCount(); ++row) {
      const auto [place, isNew] =
          rowsById_.try_emplace(rows_.identity(*list_.element(row)).str(), row);
      if (!isNew) shared_.insert(place->first);
    }
  }

  void readLine(const CsvLine& line) {
    const std::size_t faultsBefore = result_.faults.size();
    if (line.cells.size() != columns_.size()) {
      const bool missing = line.cells.size() < columns_.size();
      const std::size_t at = std::min(line.cells.size(), columns_.size());
      add(missing ? line.cells.back().line : line.cells[at].line, at + 1, std::nullopt,
          missing ? "a cell is missing" : "there is a cell too many");
    }
    if (*identity_ >= line.cells.size()) return;
    const CsvCell& idCell = line.cells[*identity_];
    const std::u16string id = wide(idCell).str();
    const auto row = rowsById_.find(id);
    const bool isKnown = row != rowsById_.end();
    if (!isKnown || !seen_.insert(id).second) {
      // Of a line that belongs to no row nothing else is told.
      result_.faults.resize(faultsBefore);
      return add(idCell.line, *identity_ + 1, std::string(rows_.identityName),
                 isKnown ? "the row stands twice in the table" : "the list has no such row");
    }
    readCells(line, row->second, id.empty() || shared_.contains(id));
  }

  static XCBasicString wide(const CsvCell& cell) {
    return XCBasicString::FromUtf8(unguardedCell(cell.text));
  }

  void readCells(const CsvLine& line, std::size_t row, bool ambiguous) {
    const Node& element = *list_.element(row);
    std::vector<std::pair<std::size_t, Value>> changes;
    for (std::size_t i = 0; i < std::min(line.cells.size(), columns_.size()); ++i) {
      const RowEdit* edit = columns_[i];
      if (edit == nullptr) continue;
      const XCBasicString text = wide(line.cells[i]);
      if (edit->binding->valueIn(element) == text) continue;
      changes.push_back({i, {row, edit, text}});
    }
    if (changes.empty()) return;
    if (ambiguous)
      return add(line.cells[*identity_].line, *identity_ + 1, std::string(rows_.identityName),
                 "several rows, or none, have this identity: none of them can be changed");
    XmlDocument scratch;
    Node& after = scratch.Create("row");
    after = element;
    for (const auto& [column, value] : changes) value.edit->binding->put(after, value.text);
    for (auto& [column, value] : changes) {
      const CsvCell& cell = line.cells[column];
      if (!isValidUtf8(cell.text)) {
        add(cell.line, column + 1, value.edit->binding->name, "the cell is not UTF-8");
      } else if (const std::string why = whyNotTyped(*value.edit, value.text); !why.empty()) {
        add(cell.line, column + 1, value.edit->binding->name, why);
      } else if (const host::ValueRule& rule = value.edit->binding->rule;
                 rule && refuses(rule, after)) {
        add(cell.line, column + 1, value.edit->binding->name, rule.message(after));
      } else {
        values_.push_back(std::move(value));
      }
    }
  }

  static bool refuses(const host::ValueRule& rule, const Node& element) {
    std::size_t place = 0;
    return !rule.accepts(element, place);
  }

  // What is no UTF-8 reads with replacement characters, and does not come back as it was.
  static bool isValidUtf8(std::string_view text) {
    return XCBasicString::FromUtf8(text).ToUtf8() == text;
  }

  const RowSet& rows_;
  ListControl& list_;
  std::vector<RowEdit> edits_;
  CsvTable table_;
  std::vector<const RowEdit*> columns_;  // by the table's columns; null for the identity
  std::optional<std::size_t> identity_;
  std::unordered_map<std::u16string, std::size_t> rowsById_;
  std::set<std::u16string> shared_;
  std::set<std::u16string> seen_;
  std::vector<Value> values_;
  TableImport result_;
};

}  // namespace

std::string exportTable(const XCBaseDlg& dialog, const RowSet& rows, ListControl& list,
                        const CsvStyle& style) {
  const std::vector<RowEdit> edits = editsBelow(dialog, rows, list);
  CsvWriter out(style);
  out.cell(rows.identityName);
  for (const RowEdit& edit : edits) out.cell(edit.binding->name);
  out.endLine();
  for (std::size_t row = 0; row < list.rowCount(); ++row) {
    const Node& element = *list.element(row);
    out.cell(guardedCell(rows.identity(element).ToUtf8()));
    for (const RowEdit& edit : edits)
      out.cell(guardedCell(edit.binding->valueIn(element).ToUtf8()));
    out.endLine();
  }
  return std::move(out.text());
}

TableImport importTable(const XCBaseDlg& dialog, host::EditedPage& page, const RowSet& rows,
                        ListControl& list, std::string_view csv, bool dryRun) {
  return Import(dialog, rows, list, csv).run(page, dryRun);
}

}  // namespace workbench
