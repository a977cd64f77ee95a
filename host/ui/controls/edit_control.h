#pragma once

#include "host/ui/control.h"
#include "host/ui/text_mask.h"

namespace host {

/// A one-line edit: free text, digits only, masked, or a password.
class HOST_API EditControl : public Control {
 public:
  EditControl(ControlOwner& owner, const ControlSpec& spec);

  /// Not held to the limit: see UserInput for what the user types.
  void setText(std::u16string_view text) override;

  int limit() const { return limit_; }
  void setLimit(int characters);
  bool isDigitsOnly() const { return digitsOnly_; }
  void setDigitsOnly(bool digitsOnly) { digitsOnly_ = digitsOnly; }
  bool isPassword() const { return password_; }
  bool isReadOnly() const { return readOnly_; }
  const TextMask& mask() const { return mask_; }
  void setMask(TextMask mask);

  /// The selected characters, in UTF-16 units, a mask's separators counted.
  std::size_t selectionFrom() const { return from_; }
  std::size_t selectionTo() const { return to_; }
  void select(std::size_t from, std::size_t to);
  void selectAll() { select(0, text().Length()); }

 private:
  int limit_;
  bool digitsOnly_;
  bool password_;
  bool readOnly_;
  TextMask mask_;
  std::size_t from_ = 0;
  std::size_t to_ = 0;
};

}  // namespace host
