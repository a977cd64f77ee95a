#include "host/ui/text_mask.h"

#include <algorithm>

namespace host {

TextMask::TextMask(std::u16string_view mask, std::u16string_view layout, char16_t fill,
                   std::u16string_view valid)
    : layout_(layout), valid_(valid), fill_(fill) {
  places_.resize(layout.size());
  for (std::size_t i = 0; i < layout.size(); ++i) places_[i] = i < mask.size() && mask[i] == u'D';
}

std::u16string TextMask::blank() const {
  std::u16string text = layout_;
  for (std::size_t i = 0; i < text.size(); ++i)
    if (places_[i]) text[i] = fill_;
  return text;
}

bool TextMask::type(std::u16string& text, std::size_t& caret, char16_t character) const {
  if (text.size() != layout_.size()) text = blank();
  if (caret < length() && !places_[caret] && layout_[caret] == character) {
    ++caret;
    return true;
  }
  if (valid_.find(character) == std::u16string::npos) return false;
  while (caret < length() && !places_[caret]) ++caret;
  if (caret >= length()) return false;
  text[caret++] = character;
  return true;
}

void TextMask::erase(std::u16string& text, std::size_t from, std::size_t to) const {
  if (text.size() != layout_.size()) text = blank();
  for (std::size_t i = from; i < std::min(to, length()); ++i)
    if (places_[i]) text[i] = fill_;
}

std::u16string TextMask::places(std::u16string_view text) const {
  std::u16string out;
  for (std::size_t i = 0; i < text.size() && i < places_.size(); ++i)
    if (places_[i]) out += text[i];
  return out;
}

}  // namespace host
