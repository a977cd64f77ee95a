#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "host/ui/colour.h"
#include "host/ui/control.h"

namespace host {

/// A check box or a radio button. Radio buttons that stand together in the dialog's table exclude
/// one another.
class HOST_API CheckControl : public Control {
 public:
  using Control::Control;
  bool isOn() const { return on_; }
  void setOn(bool on);

  /// The colour that stands beside the caption; none when there is none.
  std::optional<Colour> swatch() const { return swatch_; }
  void setSwatch(Colour colour);

 private:
  bool on_ = false;
  std::optional<Colour> swatch_;
};

/// A drop-down list that can't be typed into.
class HOST_API ComboControl : public Control {
 public:
  struct Item {
    XCBasicString text;
    int data = 0;
  };
  using Control::Control;

  const std::vector<Item>& items() const { return items_; }
  void clearItems();
  void addItem(std::u16string_view text, int data = 0);

  /// The index of the selected entry, none when no entry is selected.
  std::optional<std::size_t> selected() const { return selected_; }
  std::optional<int> selectedData() const;
  /// None, or an index that does not exist, clears the selection. Tells no handler.
  void select(std::optional<std::size_t> index);
  /// Selects the first entry with this data; clears the selection when there is none.
  void selectData(int data);

 private:
  friend class UserInput;
  std::vector<Item> items_;
  std::optional<std::size_t> selected_;
};

/// An entry for an IPv4 address. It takes digits and dots; its parts are 0 to 255. It is empty
/// until it is filled or typed into; from then on it always holds an address.
class HOST_API IpControl : public Control {
 public:
  using Control::Control;
  /// What the entry holds once @p typed has taken the place of its text: parts beyond 255 are 255,
  /// missing ones 0. A text without a digit clears it to 0.0.0.0; an empty entry stays empty then.
  XCBasicString afterTyping(std::u16string_view typed) const;
};

}  // namespace host
