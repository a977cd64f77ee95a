#pragma once

#include <cstdint>
#include <string>

#include "host/export.h"
#include "host/text/basic_string.h"
#include "host/ui/control_spec.h"

namespace host {

class UserInput;

class Control;

/// What a control tells the handlers of its dialog.
enum class Notice {
  clicked,           ///< button, radio button, check box
  changed,           ///< the text of an edit
  chosen,            ///< another entry of a drop-down list, by the user
  selectionChanged,  ///< the selected rows of a list, once per gesture
  doubleClicked,     ///< a row of a list
  keyPressed,        ///< in a list
  painted,           ///< days of a year view, by the user
  posted,            ///< a message that the dialog posted to itself
};

enum class Key { deleteKey, insert, enter, escape };

/// What differs from what a front end shows. Bits.
enum class Change : unsigned {
  text = 1U << 0,
  state = 1U << 1,  ///< enabled, visible, checked, selected entry, colours, image
  items = 1U << 2,  ///< entries of a drop-down list, columns of a list
  rows = 1U << 3,   ///< rows of a list or their order
  cells = 1U << 4,  ///< texts of rows of a list, days of a year view
  selection = 1U << 5,
};

/// A dialog as its controls see it.
class HOST_API ControlOwner {
 public:
  virtual ~ControlOwner();
  virtual void onNotice(Control& control, Notice notice, int parameter) = 0;
  virtual void onChanged(Control& control) = 0;
};

/// The state of one control, with no idea how it is drawn. What the program does to it is not
/// limited by its rules; what the user does passes through UserInput, which enforces them.
class HOST_API Control {
 public:
  Control(ControlOwner& owner, const ControlSpec& spec);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control();

  int id() const { return id_; }
  /// Whether the id is a number that is known outside of the dialog.
  bool hasNumber() const { return id_ < FirstPrivateId; }
  const std::string& name() const { return name_; }
  ControlKind kind() const { return kind_; }

  const XCBasicString& text() const { return text_; }
  /// Sets caption or content. An edit tells its dialog when the text differs from the one before.
  virtual void setText(std::u16string_view text);

  bool isEnabled() const { return enabled_; }
  /// @p reason tells the user, in a tooltip, why the control is disabled.
  void setEnabled(bool enabled, std::u16string_view reason = {});
  const XCBasicString& disabledReason() const { return disabledReason_; }

  bool isVisible() const { return visible_; }
  void setVisible(bool visible);

  /// Takes the bits of Change that came together since the last call.
  unsigned takeChanges();

 protected:
  void notice(Notice notice, int parameter = 0) { owner_.onNotice(*this, notice, parameter); }
  void changed(Change change);
  void storeText(std::u16string_view text) { text_ = text; }

 private:
  friend class UserInput;
  ControlOwner& owner_;
  int id_;
  std::string name_;
  ControlKind kind_;
  XCBasicString text_;
  XCBasicString disabledReason_;
  bool enabled_;
  bool visible_;
  unsigned changes_ = 0;
};

}  // namespace host
