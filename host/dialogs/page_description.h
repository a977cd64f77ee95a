#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/resources/texts.h"
#include "host/xml/xml_document.h"

// What a page edits, told by the page itself: which control edits which value of which row, what OK
// refuses, and how the write is made from the section and the section from the write. Whoever works
// around a page (undo, drafts, history, review, tables, backups) reads it here and nowhere else.

namespace host {

/// What kind of text a value is. An edit of a number takes digits alone, one of an IPv4 address
/// digits and dots.
enum class ValueKind { text, number, time, choice, flag, ipAddress };

/// Who decides a value: the engineer, or the controller (states, counters, stamps).
enum class ValueOwner { engineer, controller };

/// A caption in the language in force: a text, a number behind it, a suffix, a unit in parentheses.
struct HOST_API Caption {
  TextId text = TextId::None;
  TextId unit = TextId::None;
  std::u16string_view suffix = {};  ///< as it stands, with its own blank; alone without a text
  int number = 0;                   ///< 0 for none
  bool unitInside = false;          ///< the text has a place for its unit

  /// The whole caption, "Power (%)".
  XCBasicString toString() const;
};

/// One entry of a drop-down list.
struct ValueChoice {
  TextId text = TextId::None;
  std::u16string_view literal = {};  ///< shown when there is no text number
  char16_t value = 0;                ///< the one character that is sent

  constexpr ValueChoice(TextId shown, char16_t sent) : text(shown), value(sent) {}
  constexpr ValueChoice(std::u16string_view shown, char16_t sent) : literal(shown), value(sent) {}
};

/// What OK refuses of a value, and what it then says.
struct ValueRule {
  using Node = XmlDocument::XmlNode;
  /// Whether OK takes the value of a row or a section. @p place remembers where the attribute stood
  /// in the row before; see XmlNode::attribute.
  std::function<bool(const Node& element, std::size_t& place)> accepts = nullptr;
  /// The message for a value that is not accepted.
  std::function<XCBasicString(const Node& element)> message = nullptr;

  explicit operator bool() const { return accepts != nullptr; }
};

/// One value of a section or of each of its rows, and the control that edits it.
struct HOST_API Binding {
  using Node = XmlDocument::XmlNode;

  /// The attribute's name; the edit's where one edit shows several attributes or a part of one.
  std::string name;
  /// What the value is made of: one attribute, or those that one edit shows together.
  std::vector<XmlName> attributes;
  Caption caption = {};
  Caption frame = {};  ///< the box in which the control stands
  ValueKind kind = ValueKind::text;
  int limit = 0;                 ///< most characters of its edit, 0 for no limit
  int control = 0;               ///< 0 for a value that no control edits
  int label = 0;                 ///< the label that shows the caption
  std::string controlName = {};  ///< where it is not `name`
  std::vector<ValueChoice> choices = {};
  ValueRule rule = {};
  ValueOwner owner = ValueOwner::engineer;
  bool secret = false;     ///< shown as "***" wherever it is not edited
  bool writeOnly = false;  ///< never shown as it was read; sent whenever it is not empty
  bool part = false;       ///< other values show the rest of its attribute
  std::u16string_view column =
      {};  ///< its header in the list, where that is not the caption's text
  /// The value as its edit shows it; null: the text of its only attribute.
  std::function<XCBasicString(const Node&)> read = nullptr;
  /// Puts what the edit shows into an element; null: into its only attribute.
  std::function<void(Node&, const XCBasicString&)> write = nullptr;
  /// The value of a drop-down list's entry by its data; null: the data is the value's one
  /// character.
  std::function<XCBasicString(int data)> valueOfEntry = nullptr;

  const std::string& nameOfControl() const { return controlName.empty() ? name : controlName; }
  /// The value as its edit shows it, empty where the element lacks it.
  XCBasicString valueIn(const Node& element) const;
  void put(Node& element, const XCBasicString& value) const;
  /// The value of the entry with some data of its drop-down list.
  XCBasicString entryValue(int data) const;
  /// Whether the element has one of the value's attributes.
  bool isIn(const Node& element) const;
  /// The texts of its attributes themselves, joined by ":".
  XCBasicString ownText(const Node& element) const;
  /// Whether two elements agree in all of the value's attributes, or in its part of one.
  bool agrees(const Node& one, const Node& other) const;
};

/// Where rows stand in the section, and the list that shows them.
struct RowPlace {
  std::optional<XmlName> parent = std::nullopt;  ///< child of the section; none: the section itself
  int list = 0;                                  ///< 0 for lines of a grid
  std::u16string_view mark = {};                 ///< the value of RowSet::membership for rows here
  int moveControl = 0;  ///< the button that moves the selected rows away from here
};

/// Which rows a check on OK leaves selected.
enum class CheckVisit {
  nothing,    ///< the selection stays
  faultyRow,  ///< the row at fault
  everyRow    ///< as when each row is selected in turn: the row at fault, else the last one; the
              ///< selection's handlers run although that row was the selected one before
};

/// Rows of one kind: nodes of a table, tasks, actions of a task, lines of a grid.
struct RowSet {
  using Node = XmlDocument::XmlNode;

  std::vector<RowPlace> places;
  /// Which children are rows; null: all.
  std::function<bool(const Node&)> isRow = nullptr;
  /// Who a row is, empty where it has no identity; null: its place among its parent's rows, from 1,
  /// behind the parent's identity and "/".
  std::function<XCBasicString(const Node&)> identity = nullptr;
  std::vector<Binding> bindings = {};
  /// What a table calls the identity.
  std::string_view identityName = "Id";
  /// Rows that lie in a row of this set.
  std::vector<RowSet> within = {};
  /// For rows that wander between places: the value that tells where they are.
  std::optional<Binding> membership = std::nullopt;
  /// A row in which this value is empty is one that the write deletes.
  std::optional<Binding> deletedBy = std::nullopt;
  /// Whether a value that a row lacks is sent as an empty text.
  bool sendsAbsentAsEmpty = false;
  /// Buttons that make and delete a row; 0 for none.
  int addControl = 0;
  int removeControl = 0;
  CheckVisit visit = CheckVisit::faultyRow;
  /// The control of a value in a grid that has one for every line; null: the binding's.
  std::function<int(const Node& row, const Binding& binding)> controlOf = nullptr;
};

/// How a page sends: its whole section, only what differs, or an order that no section holds.
enum class WriteForm { whole, differences, order };

/// What a page edits, the same for every opening of it.
struct PageDescription {
  using Node = XmlDocument::XmlNode;

  std::optional<XmlName> readSection = std::nullopt;   ///< none for a page that reads nothing
  std::optional<XmlName> writeSection = std::nullopt;  ///< none for a dialog that sends nothing
  WriteForm form = WriteForm::whole;
  int activation = 0;  ///< the control of the activation date, 0 for none
  std::vector<Binding> fields = {};
  std::vector<RowSet> rows = {};
  /// Makes @p request the write that turns @p untouched (null where the reply lacked the section)
  /// into @p edited, from the activation date @p stamp on. False where that can't be made, as for a
  /// row without identity. Null for orders of what is selected, in a list or on disk.
  std::function<bool(XmlDocument& request, const Node* untouched, const Node& edited,
                     const XCBasicString& stamp)>
      makeWrite = nullptr;
  /// Puts the written section, the child of a request's root, into the section as it was read: as
  /// the controller holds it once the write is in force. Null where makeWrite is.
  std::function<void(Node& section, const Node& written)> applyWrite = nullptr;
};

/// The caption of a value with its unit; where other edits of the page have the same one, with the
/// caption of its frame and a colon before it. A value that no control edits is told apart from all
/// others.
HOST_API XCBasicString captionOf(const PageDescription& page, const Binding& binding);

/// A value that an order carries and no section does: a row that it names, a file.
struct OrderedValue {
  std::optional<XCBasicString> row;
  std::string name;
  Caption caption;
  XCBasicString value;
};

/// What an open dialog edits. Its dialog owns it.
class HOST_API EditedPage {
 public:
  using Node = XmlDocument::XmlNode;
  virtual ~EditedPage() = default;

  virtual const PageDescription& Description() const = 0;
  /// The section as it was read, null where the reply lacks it.
  virtual const Node* Untouched() const = 0;
  /// The section as OK would take it now; null where there is nothing to edit. Valid until the next
  /// change.
  virtual const Node* Edited() = 0;
  /// What an order names beside what differs between the two.
  virtual std::vector<OrderedValue> Ordered() const { return {}; }
  /// What OK would say of the activation date; empty when it is good, or there is none.
  virtual XCBasicString DateFault() const { return {}; }
  /// Shows rows anew whose elements were changed from outside, and their values in the edits.
  virtual void Refresh() {}
};

}  // namespace host
