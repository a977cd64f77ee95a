#include "workbench/pages/section_compare.h"

#include <algorithm>
#include <deque>
#include <map>
#include <unordered_map>

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;
using host::Binding;
using host::RowSet;

using Rows = std::vector<RowInSection>;

void addRows(Rows& rows, const RowSet& set, std::size_t place, const Node& child) {
  if (!set.isRow || set.isRow(child)) rows.push_back({&set, &child, place});
}

Rows rowsIn(const std::vector<RowSet>& sets, const Node& parent) {
  Rows rows;
  for (const Node& child : parent.Children())
    for (const RowSet& set : sets)
      for (std::size_t place = 0; place < set.places.size(); ++place) {
        const auto& container = set.places[place].parent;
        if (!container)
          addRows(rows, set, place, child);
        else if (child.TagName() == *container)
          for (const Node& row : child.Children()) addRows(rows, set, place, row);
      }
  return rows;
}

/// Pairs the rows of two sections. Mostly both hold the same rows in the same order; the index of
/// identities is made only where they do not.
class RowPairs {
 public:
  static constexpr std::size_t None = static_cast<std::size_t>(-1);

  RowPairs(const std::vector<RowSet>& sets, const Rows& before, const Rows& after)
      : sets_(sets),
        before_(before),
        after_(after),
        byPlace_(!sets.empty() && !sets.front().identity),
        taken_(before.size()) {}

  /// The row of the first section that is row @p i of the second; None when there is none.
  std::size_t partnerOf(std::size_t i) {
    if (i < before_.size() && !taken_[i] && isPair(i)) return take(i);
    if (byPlace_) return None;
    std::deque<std::size_t>& found = index()[keyOf(after_[i])];
    while (!found.empty() && taken_[found.front()]) found.pop_front();
    return found.empty() ? None : take(found.front());
  }
  bool isTaken(std::size_t i) const { return taken_[i]; }

 private:
  using Key = std::u16string;

  Key keyOf(const RowInSection& row) const {
    Key key = row.set->identity(*row.element).str();
    key.push_back(static_cast<char16_t>(row.set - sets_.data() + 1));
    return key;
  }
  bool isPair(std::size_t i) const {
    const RowInSection& one = before_[i];
    const RowInSection& other = after_[i];
    if (one.set != other.set) return false;
    return byPlace_ || one.set->identity(*one.element) == other.set->identity(*other.element);
  }
  std::size_t take(std::size_t i) {
    taken_[i] = true;
    return i;
  }
  std::unordered_map<Key, std::deque<std::size_t>>& index() {
    if (!indexed_)
      for (std::size_t i = 0; i < before_.size(); ++i)
        if (!taken_[i]) index_[keyOf(before_[i])].push_back(i);
    indexed_ = true;
    return index_;
  }

  const std::vector<RowSet>& sets_;
  const Rows& before_;
  const Rows& after_;
  bool byPlace_;
  std::vector<bool> taken_;
  bool indexed_ = false;
  std::unordered_map<Key, std::deque<std::size_t>> index_;
};

class Comparison {
 public:
  Comparison(const host::PageDescription& page, const CompareOptions& options)
      : page_(page), options_(options) {}

  std::vector<ValueChange> run(const Node* before, const Node* after) {
    if (before != nullptr && after != nullptr && *before == *after) return {};
    for (const Binding& field : page_.fields) compare(field, std::nullopt, before, after);
    XmlDocument empty;
    const Node& nothing = empty.Create("nothing");
    compareRows(page_.rows, before ? *before : nothing, after ? *after : nothing, {});
    return std::move(changes_);
  }

 private:
  std::optional<XCBasicString> textOf(const Binding& binding, const Node* element) const {
    if (element == nullptr || !binding.isIn(*element)) return std::nullopt;
    if (binding.secret && !options_.secretsToo) return XCBasicString(MaskedSecret);
    return binding.valueIn(*element);
  }

  void add(const std::optional<XCBasicString>& row, const Binding& binding,
           std::optional<XCBasicString> before, std::optional<XCBasicString> after) {
    changes_.push_back(
        {row, binding.name, captionOf(binding), std::move(before), std::move(after)});
  }

  const XCBasicString& captionOf(const Binding& binding) {
    const auto [place, isNew] = captions_.try_emplace(&binding);
    if (isNew) place->second = host::captionOf(page_, binding);
    return place->second;
  }

  void compare(const Binding& binding, const std::optional<XCBasicString>& row, const Node* before,
               const Node* after) {
    if (binding.owner == host::ValueOwner::controller && !options_.controllersToo) return;
    const bool isIn = after != nullptr && binding.isIn(*after);
    // Never read: what is typed is sent, and what the controller may say of it counts for nothing.
    if (binding.writeOnly) {
      if (isIn) add(row, binding, std::nullopt, textOf(binding, after));
      return;
    }
    if (before != nullptr && after != nullptr && binding.agrees(*before, *after)) return;
    if (!isIn && (before == nullptr || !binding.isIn(*before))) return;
    std::optional<XCBasicString> was = textOf(binding, before);
    std::optional<XCBasicString> is = textOf(binding, after);
    if (was && is && *was == *is && !binding.secret) {
      was = binding.ownText(*before);
      is = binding.ownText(*after);
    }
    add(row, binding, std::move(was), std::move(is));
  }

  // Captions and values of attributes that no edit shows are the attribute's.
  void addWholeRow(const RowSet& set, const Node& row, const XCBasicString& identity, bool isNew) {
    for (std::size_t i = 0; i < row.attributeCount(); ++i) {
      const host::XmlName attribute = row.attributeName(i);
      const Binding* binding = bindingOf(set, attribute);
      if (binding != nullptr && attribute != firstIn(row, *binding)) continue;
      const bool isWhole = binding != nullptr && binding->attributes.size() > 1;
      const std::string name = isWhole ? binding->name : std::string(attribute.text());
      XCBasicString value = binding ? *textOf(*binding, &row) : row.attributeText(i).toString();
      ValueChange change{
          identity, name, binding ? captionOf(*binding) : XCBasicString::FromUtf8(name),
          {},       {},   isNew ? ValueChange::Kind::added : ValueChange::Kind::gone};
      (isNew ? change.after : change.before) = std::move(value);
      changes_.push_back(std::move(change));
    }
    forEachWithin(set, row, identity,
                  [&](const RowSet& inner, const Node& child, const XCBasicString& name) {
                    addWholeRow(inner, child, name, isNew);
                  });
  }

  template <class Visit>
  void forEachWithin(const RowSet& set, const Node& row, const XCBasicString& identity,
                     const Visit& visit) const {
    int place = 0;
    for (const RowInSection& inner : rowsIn(set.within, row))
      visit(*inner.set, *inner.element, identityWithin(identity, ++place));
  }

  static XCBasicString identityWithin(const XCBasicString& parent, int place) {
    return parent + u"/" + host::decimal(place);
  }

  // The first of a value's attributes that a row has, in the value's order.
  static host::XmlName firstIn(const Node& row, const Binding& binding) {
    return *std::find_if(binding.attributes.begin(), binding.attributes.end(),
                         [&](host::XmlName attribute) { return row.hasAttribute(attribute); });
  }

  static const Binding* bindingOf(const RowSet& set, host::XmlName attribute) {
    const auto shows = [&](const Binding& binding) {
      const auto& all = binding.attributes;
      return !binding.part && std::find(all.begin(), all.end(), attribute) != all.end();
    };
    const auto found = std::find_if(set.bindings.begin(), set.bindings.end(), shows);
    if (found != set.bindings.end()) return &*found;
    return set.deletedBy && shows(*set.deletedBy) ? &*set.deletedBy : nullptr;
  }

  void compareRows(const std::vector<RowSet>& sets, const Node& before, const Node& after,
                   const XCBasicString& parent) {
    const Rows was = rowsIn(sets, before);
    const Rows is = rowsIn(sets, after);
    RowPairs pairs(sets, was, is);
    for (std::size_t i = 0; i < is.size(); ++i) {
      const std::size_t partner = pairs.partnerOf(i);
      const XCBasicString name = nameOf(is[i], i, parent);
      if (partner == RowPairs::None) {
        addWholeRow(*is[i].set, *is[i].element, name, true);
        continue;
      }
      compareRow(was[partner], is[i], name);
    }
    for (std::size_t i = 0; i < was.size(); ++i)
      if (!pairs.isTaken(i))
        addWholeRow(*was[i].set, *was[i].element, nameOf(was[i], i, parent), false);
  }

  static XCBasicString nameOf(const RowInSection& row, std::size_t place,
                              const XCBasicString& parent) {
    return row.set->identity ? row.set->identity(*row.element)
                             : identityWithin(parent, static_cast<int>(place) + 1);
  }

  void compareRow(const RowInSection& was, const RowInSection& is, const XCBasicString& name) {
    const RowSet& set = *is.set;
    if (was.place != is.place && set.membership)
      add(name, *set.membership, XCBasicString(set.places[was.place].mark),
          XCBasicString(set.places[is.place].mark));
    const bool differs = !(*was.element == *is.element);
    if (!differs && !(options_.asSent && set.sendsAbsentAsEmpty)) return;
    if (differs && set.deletedBy && set.deletedBy->valueIn(*is.element).IsEmpty()) {
      const std::size_t before = changes_.size();
      compare(*set.deletedBy, name, was.element, is.element);
      if (changes_.size() > before) changes_.back().kind = ValueChange::Kind::gone;
      return;
    }
    for (const Binding& binding : set.bindings)
      if (goesEmpty(set, binding, *is.element))
        add(name, binding, textOf(binding, was.element), binding.valueIn(*is.element));
      else
        compare(binding, name, was.element, is.element);
    if (differs && !set.within.empty()) compareRows(set.within, *was.element, *is.element, name);
  }

  bool goesEmpty(const RowSet& set, const Binding& binding, const Node& row) const {
    return options_.asSent && set.sendsAbsentAsEmpty &&
           binding.owner == host::ValueOwner::engineer && !binding.isIn(row);
  }

  const host::PageDescription& page_;
  CompareOptions options_;
  std::map<const Binding*, XCBasicString> captions_;
  std::vector<ValueChange> changes_;
};

}  // namespace

std::vector<RowInSection> rowsOf(const host::PageDescription& page, const Node& section) {
  return rowsIn(page.rows, section);
}

std::vector<ValueChange> compareSections(const host::PageDescription& page, const Node* before,
                                         const Node* after, const CompareOptions& options) {
  return Comparison(page, options).run(before, after);
}

}  // namespace workbench
