#include "workbench/wire/masked_document.h"

#include <algorithm>

#include "workbench/wire/secret_names.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;

constexpr std::u16string_view Mask = u"***";

class Masking {
 public:
  explicit Masking(const Secrets& secrets) : passwords_(secrets.passwordPatterns()) {}

  // Whether something in the element or below it is to be masked; @p inside one with a secret's
  // name everything is.
  bool isNeeded(const Node& element, bool inside = false) const {
    inside = inside || isSecretName(element.Tag());
    for (std::size_t i = 0; i < element.attributeCount(); ++i)
      if (isSecret(element, i, inside)) return true;
    if (isSecret(element.text(), inside)) return true;
    for (const Node& child : element.Children())
      if (isNeeded(child, inside)) return true;
    return false;
  }

  // @p source is what @p element is a copy of.
  void apply(const Node& source, Node& element, bool inside = false) const {
    inside = inside || isSecretName(element.Tag());
    applyToValues(source, element, inside);
    auto below = source.Children().begin();
    for (Node& child : element.Children()) {
      apply(*below, child, inside);
      ++below;
    }
  }

  void applyToValues(const Node& source, Node& element, bool inside) const {
    for (std::size_t i = 0; i < source.attributeCount(); ++i)
      if (isSecret(source, i, inside)) element.setAttribute(source.attributeName(i), Mask);
    if (isSecret(source.text(), inside)) element.SetText(Mask);
  }

 private:
  bool isSecret(const Node& element, std::size_t attribute, bool inside) const {
    return isSecret(element.attributeText(attribute),
                    inside || isSecretName(element.attributeName(attribute).text()));
  }
  bool isSecret(host::XmlText value, bool named) const {
    if (value.empty()) return false;
    if (named) return true;
    if (passwords_.empty() || value.size() < Secrets::LeastCharacters) return false;
    std::string wide;
    if (value.isWide()) value.appendUtf8(wide);
    const std::string_view utf8 = value.isWide() ? std::string_view(wide) : value.narrowView();
    return std::any_of(passwords_.begin(), passwords_.end(),
                       [&](const SecretPattern& password) { return password.isIn(utf8); });
  }

  std::vector<SecretPattern> passwords_;
};

host::XmlText beginningOf(host::XmlText text, std::size_t size) {
  if (text.size() <= size) return text;
  return text.isWide() ? host::XmlText::wide(text.wideView().substr(0, size))
                       : host::XmlText::narrow(text.narrowView().substr(0, size));
}

// Copies elements as long as there is room for their text.
class Beginning {
 public:
  Beginning(const Masking& masking, std::size_t bytes) : masking_(masking), left_(bytes) {}

  void copy(const Node& from, Node& to, bool inside = false) {
    inside = inside || isSecretName(from.Tag());
    take(from.Tag().size() * 2);
    for (std::size_t i = 0; i < from.attributeCount(); ++i) {
      to.copyAttribute(from, from.attributeName(i));
      take(from.attributeName(i).text().size() + from.attributeText(i).size());
    }
    const host::XmlText text = beginningOf(from.text(), left_);
    isCut_ = isCut_ || text.size() < from.text().size();
    if (!text.empty()) to.SetText(text);
    take(text.size());
    masking_.applyToValues(from, to, inside);
    for (const Node& child : from.Children()) {
      if (left_ == 0) {
        isCut_ = true;
        return;
      }
      copy(child, to.NewChild(child.TagName()), inside);
    }
  }
  bool isCut() const { return isCut_; }

 private:
  void take(std::size_t bytes) { left_ -= std::min(left_, bytes); }

  const Masking& masking_;
  std::size_t left_;
  bool isCut_ = false;
};

XmlDocument masked(const XmlDocument& document, const Masking& masking) {
  XmlDocument copy;
  if (document.Root() == nullptr) return copy;
  copy.Create(document.Root()->TagName()) = *document.Root();
  masking.apply(*document.Root(), *copy.Root());
  return copy;
}

}  // namespace

XmlDocument maskedCopy(const XmlDocument& document, const Secrets& secrets) {
  return masked(document, Masking(secrets));
}

std::string maskedText(const XmlDocument& document, const Secrets& secrets) {
  const Masking masking(secrets);
  if (document.Root() == nullptr || !masking.isNeeded(*document.Root())) return document.ToString();
  return masked(document, masking).ToString();
}

XmlDocument maskedBeginning(const XmlDocument& document, const Secrets& secrets, std::size_t bytes,
                            bool& cut) {
  XmlDocument copy;
  cut = false;
  if (document.Root() == nullptr) return copy;
  const Masking masking(secrets);
  Beginning beginning(masking, bytes);
  beginning.copy(*document.Root(), copy.Create(document.Root()->TagName()));
  cut = beginning.isCut();
  return copy;
}

}  // namespace workbench
