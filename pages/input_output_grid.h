#pragma once

#include <string>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/page_description.h"

// The two grids of the inputs and outputs page: a line of controls for every input and for every
// output of the controller, numbered from 1.

namespace lamp::io {

constexpr int LineCount = 8;

// The private ids below 100 are the page's own.
constexpr int FirstInputId = host::privateId(100);
constexpr int FirstOutputId = host::privateId(300);
constexpr int FirstHeadId = host::privateId(500);
/// From a control of a line to the same of the next one.
constexpr int IdStep = 20;
constexpr int LastOutputId = FirstOutputId + LineCount * IdStep - 1;

/// The values of an output by their columns.
enum OutputColumn { Sunset, Sunrise, FirstInput, Synchronised = FirstInput + LineCount, Mode };

/// A grid: a column with the names of the lines and one for each value of their rows, whose control
/// is the one in the first line.
struct Grid {
  using Node = XmlDocument::XmlNode;

  std::string name;       ///< of its controls, "input"
  host::TextId lineHead;  ///< above the names of the lines
  host::TextId lineName;  ///< with a place for the number
  int firstHead;
  int firstLine;  ///< the control with the name of the first line
  host::XmlName tag;
  host::RowSet rows = {};

  int control(const host::Binding& value, int line) const {
    return value.control + (line - 1) * IdStep;
  }
  /// Captions, names and values: "inputHead1", "input1", "input1.SponEnable".
  std::vector<host::ControlSpec> controls() const;
  host::LayoutItem layout() const;
  void showCaptions(XCBaseDlg& dialog) const;
  /// Shows the values of a row in a line. A box is checked unless the row says "N".
  void show(XCBaseDlg& dialog, int line, const Node& row) const;
  /// The row that a line edits, none when the section lacks it.
  Node* rowOf(Node& section, int line) const;
};

const Grid& inputs();
const Grid& outputs();

}  // namespace lamp::io
