#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "host/ui/controls/list_control.h"

using host::ListColumn;
using host::ListControl;

namespace {

class Owner : public host::ControlOwner {
 public:
  void onNotice(host::Control&, host::Notice, int) override {}
  void onChanged(host::Control&) override {}
};

const host::XmlName Value("value");

/// A list of many rows with one attribute, compared with what plain algorithms make of its texts.
class ListOrder : public testing::Test {
 protected:
  void fill(const std::vector<std::u16string>& texts, ListColumn column = {}) {
    texts_ = texts;
    column.attribute = Value;
    list_.setColumns({column});
    list_.clearRows();
    document_.Create("rows");
    for (std::size_t i = 0; i < texts.size(); ++i) {
      XmlDocument::XmlNode& node = document_.Root()->NewChild("row");
      node.setAttribute(Value, texts[i]);
      list_.addRow({&node, static_cast<std::int64_t>(i)});
    }
  }
  // The rows' places of origin as the list is sorted now.
  std::vector<std::size_t> order() const {
    std::vector<std::size_t> rows;
    for (std::size_t row = 0; row < list_.rowCount(); ++row)
      rows.push_back(static_cast<std::size_t>(list_.row(row).data));
    return rows;
  }
  template <class Less>
  std::vector<std::size_t> stable(std::vector<std::size_t> rows, Less less) const {
    std::stable_sort(rows.begin(), rows.end(),
                     [&](std::size_t a, std::size_t b) { return less(texts_[a], texts_[b]); });
    return rows;
  }
  void expectSortedAsTexts() {
    const auto asRead = order();
    list_.sort({0, false});
    const auto ascending = stable(asRead, std::less<>());
    EXPECT_EQ(order(), ascending);
    list_.sort({0, true});
    EXPECT_EQ(order(), stable(ascending, std::greater<>()));
  }

  XmlDocument document_;
  std::vector<std::u16string> texts_;
  Owner owner_;
  ListControl list_{owner_, host::list(1, "rows")};
};

std::vector<std::u16string> randomTexts(std::mt19937& random, std::u16string_view front,
                                        std::u16string_view alphabet, std::size_t longest) {
  std::vector<std::u16string> texts(500);
  for (std::u16string& text : texts) {
    text = front;
    for (std::size_t size = random() % (longest + 1); size > 0; --size)
      text += alphabet[random() % alphabet.size()];
  }
  return texts;
}

TEST_F(ListOrder, AttributesStandInTheOrderOfTheirUnitsAndEqualOnesAsBefore) {
  std::mt19937 random(7);
  const std::pair<std::u16string_view, std::u16string_view> kinds[] = {
      {u"", u"ab"},
      {u"", u"0123456789"},
      {u"0013A200", u"0123456789"},
      {u"a common beginning of some length ", u"xyz"},
      {u"", u"a\u00E9"},
      {u"", u"a\u00E9\U0001F600"},
      {u"caf\u00E9 ", u"ab"},
      {u"", u"\u0001\u007F"}};
  for (const auto& [front, alphabet] : kinds)
    for (const std::size_t longest : {1U, 3U, 12U}) {
      fill(randomTexts(random, front, alphabet, longest));
      expectSortedAsTexts();
    }
}

TEST_F(ListOrder, ATextThatBeginsAsAnotherStandsInFrontOfIt) {
  fill({u"abcdefghi", u"abcdefgh", u"abcdefghi\u007F", u"abcdefg", u"", u"abcdefgh"});
  expectSortedAsTexts();
}

TEST_F(ListOrder, NumbersAreUsedWhileAllRowsHaveOne) {
  ListColumn column;
  int compared = 0;
  column.compare = [&](const host::ListRow& a, const host::ListRow& b) {
    ++compared;
    return a.element->attribute(Value).toInt() - b.element->attribute(Value).toInt();
  };
  column.number = [](const XmlDocument::XmlNode& node) {
    const host::XmlText text = node.attribute(Value);
    return text.empty() ? std::nullopt : std::optional<std::int64_t>(text.toInt());
  };
  const auto byNumber = [](const std::u16string& a, const std::u16string& b) {
    return host::toInt(a) < host::toInt(b);
  };
  fill({u"10", u"9", u"100", u"09", u"9"}, column);
  list_.sort({0, false});
  EXPECT_EQ(order(), stable({0, 1, 2, 3, 4}, byNumber));
  EXPECT_EQ(compared, 0);
  fill({u"10", u"", u"100", u"09", u"9"}, column);
  list_.sort({0, false});
  EXPECT_EQ(order(), stable({0, 1, 2, 3, 4}, byNumber));
  EXPECT_GT(compared, 0);
}

TEST_F(ListOrder, TheRowOfATextIsTheFirstAsSorted) {
  std::mt19937 random(11);
  for (const std::u16string_view alphabet : {u"abc", u"ab\u00E9"}) {
    fill(randomTexts(random, u"", alphabet, 3));
    for (const bool sorted : {false, true}) {
      if (sorted) {
        list_.sort({0, true});
        list_.sort({0, false});
      }
      std::map<std::u16string, std::size_t> first;
      for (std::size_t row = 0; row < list_.rowCount(); ++row)
        first.try_emplace(list_.cell(row, 0).str(), row);
      for (const auto& [text, row] : first) EXPECT_EQ(list_.findRow(0, text), row);
      EXPECT_EQ(list_.findRow(0, u"abcd"), std::nullopt);
    }
  }
}

TEST_F(ListOrder, ManyRowsWithOneTextAreFoundAsQuicklyAsOthers) {
  // With a walk from row to row this would take minutes.
  fill(std::vector<std::u16string>(100000, u"Lamp"));
  EXPECT_EQ(list_.findRow(0, u"Lamp"), 0U);
  EXPECT_EQ(list_.findRow(0, u"lamp"), std::nullopt);
}

TEST_F(ListOrder, TextsOfTheirOwnInAnotherColumnAreNotWalkedOverWhenARowIsLookedFor) {
  // With a walk over them at each row this would take minutes.
  fill(std::vector<std::u16string>(50000, u"Lamp"));
  list_.setColumns({list_.columns()[0], ListColumn()});
  for (std::size_t row = 0; row < list_.rowCount(); ++row) list_.setCell(row, 1, u"own");
  for (std::size_t row = 0; row < list_.rowCount(); ++row) ASSERT_EQ(list_.findRow(0, u"Lamp"), 0U);
}

TEST_F(ListOrder, TextsOfTheirOwnAreForgottenWithTheRows) {
  fill({u"b", u"a"});
  list_.setCell(0, 0, u"own");
  list_.sort({0, false});
  EXPECT_EQ(order(), (std::vector<std::size_t>{1, 0}));
  fill({u"d", u"c"});
  EXPECT_EQ(list_.findRow(0, u"own"), std::nullopt);
  EXPECT_EQ(list_.findRow(0, u"c"), 1U);
}

TEST_F(ListOrder, NothingIsFoundInAnEmptyList) {
  fill({});
  EXPECT_EQ(list_.findRow(0, u""), std::nullopt);
  list_.sort({0, false});
  EXPECT_EQ(order(), std::vector<std::size_t>());
}

}  // namespace
