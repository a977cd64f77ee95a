#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/export.h"

namespace host {

/// The rule of a masked edit: where characters may be typed, and what stands between them.
/// In @p mask a "D" is a place for a digit and every other character a separator; @p layout is as
/// long and shows the separators that are seen, with "_" at the places. A separator that @p mask
/// and @p layout show differently is the layout's. Empty places show @p fill.
class HOST_API TextMask {
 public:
  TextMask() = default;
  TextMask(std::u16string_view mask, std::u16string_view layout, char16_t fill,
           std::u16string_view valid);

  bool isActive() const { return !layout_.empty(); }
  std::size_t length() const { return layout_.size(); }
  bool isPlace(std::size_t at) const { return at < places_.size() && places_[at]; }

  /// The text with every place empty.
  std::u16string blank() const;

  /// Types one character at @p caret over what stands there: the next place takes it and the caret
  /// moves behind it and behind separators. A separator that stands at the caret is stepped over.
  /// Returns false, with nothing changed, for a character that does not fit.
  bool type(std::u16string& text, std::size_t& caret, char16_t character) const;

  /// Empties the places from @p from up to @p to.
  void erase(std::u16string& text, std::size_t from, std::size_t to) const;

  /// The characters at the places, without the separators.
  std::u16string places(std::u16string_view text) const;

 private:
  std::u16string layout_;
  std::u16string valid_;
  std::vector<bool> places_;
  char16_t fill_ = u'0';
};

}  // namespace host
