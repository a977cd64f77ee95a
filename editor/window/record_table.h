#pragma once

#include <QtWidgets/QTableView>
#include <span>

namespace editor {

/// Gives a table the looks and keys of a record that is read line by line: a row is chosen as a
/// whole, Tab leaves the table, and each column has room for its sample text.
void makeRecordTable(QTableView& table, std::span<const char* const> samples);

}  // namespace editor
