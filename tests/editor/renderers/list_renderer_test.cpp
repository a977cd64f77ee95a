#include "editor/renderers/list_renderer.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QClipboard>
#include <QtGui/QContextMenuEvent>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <numeric>

#include "editor/renderers/list_table_model.h"
#include "editor/renderers/list_view.h"
#include "tests/editor/support/editor_rig.h"

namespace {

using Rows = std::vector<std::size_t>;

class ListRenderer : public support::EditorRig {
 protected:
  void openWith(std::size_t count) {
    dialog_.onInit = [this, count](sample::Dialog& dialog) {
      fillRows(dialog.List(Id::Rows), count);
    };
    open();
    dialog_.log.clear();
  }
  host::ListControl& list() { return dialog_.List(Id::Rows); }
  editor::ListView& view() { return rendererAs<editor::ListRenderer>(Id::Rows).view(); }
  QLineEdit& filter() { return *rendererAs<editor::ListRenderer>(Id::Rows).filterLine(); }
  QString cell(int row, int column) { return view().model()->index(row, column).data().toString(); }
  QPoint centre(int row) { return view().visualRect(view().model()->index(row, 0)).center(); }
  void click(int row, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(view().viewport(), Qt::LeftButton, modifiers, centre(row));
  }
  Rows shownSelection() {
    Rows rows;
    for (const QModelIndex& index : view().selectionModel()->selectedRows())
      rows.push_back(static_cast<std::size_t>(index.row()));
    std::sort(rows.begin(), rows.end());
    return rows;
  }
};

TEST_F(ListRenderer, CellsAreThoseOfTheElements) {
  openWith(3);
  EXPECT_EQ(cell(2, 0), "2");
  EXPECT_EQ(cell(1, 1), "no");
  list().element(1)->setAttribute("even", u"changed");
  EXPECT_EQ(cell(1, 1), "changed");
}

TEST_F(ListRenderer, ClicksSelectRowsAndTellOnceEach) {
  openWith(6);
  click(1);
  click(4, Qt::ControlModifier);
  EXPECT_EQ(list().selection(), (Rows{1, 4}));
  EXPECT_EQ(dialog_.log.size(), 2U);
  click(2, Qt::ShiftModifier);
  EXPECT_EQ(list().selection(), (Rows{1, 2, 3, 4}));
}

TEST_F(ListRenderer, ADragOverRowsIsOneGesture) {
  openWith(6);
  QTest::mousePress(view().viewport(), Qt::LeftButton, {}, centre(1));
  for (int row = 2; row <= 4; ++row) QTest::mouseMove(view().viewport(), centre(row));
  QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, centre(4));
  EXPECT_LE(dialog_.log.size(), 1U);
  EXPECT_FALSE(list().selection().empty());
}

TEST_F(ListRenderer, TheProgramsSelectionIsShownWithoutANotice) {
  openWith(6);
  list().select({0, 1, 5});
  dialog_.log.clear();
  settle();
  EXPECT_EQ(shownSelection(), (Rows{0, 1, 5}));
  EXPECT_TRUE(dialog_.log.empty());
}

TEST_F(ListRenderer, KeysAndDoubleClicksReachTheHandlers) {
  openWith(3);
  click(1);
  dialog_.log.clear();
  QTest::keyClick(&view(), Qt::Key_Delete);
  QTest::keyClick(&view(), Qt::Key_Insert);
  QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, centre(1));
  const std::string id = std::to_string(Id::Rows);
  EXPECT_EQ(dialog_.log, (std::vector<std::string>{"key " + id + " 0", "key " + id + " 1",
                                                   "double " + id + " 1"}));
}

TEST_F(ListRenderer, AHeaderClickSortsAndShowsTheOrder) {
  openWith(12);
  QHeaderView& header = *view().horizontalHeader();
  const QPoint point(header.sectionPosition(0) + 5, header.height() / 2);
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, point);
  settle();
  EXPECT_EQ(cell(2, 0), "10");
  EXPECT_TRUE(header.isSortIndicatorShown());
  QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, point);
  settle();
  EXPECT_EQ(cell(0, 0), "9");
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
}

TEST_F(ListRenderer, SortingMovesNothingInTheDocument) {
  openWith(12);
  const std::string before = rows_.ToString();
  QHeaderView& header = *view().horizontalHeader();
  for (const int column : {0, 1, 1})
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                      QPoint(header.sectionPosition(column) + 5, header.height() / 2));
  settle();
  EXPECT_EQ(cell(0, 1), "yes");
  EXPECT_EQ(cell(11, 1), "no");
  EXPECT_EQ(rows_.ToString(), before);
}

TEST_F(ListRenderer, AListOfOneRowIsSortedByItsHeaderToo) {
  dialog_.onInit = [this](sample::Dialog& dialog) { fillRows(dialog.List(Id::OneRow), 12); };
  open();
  editor::ListView& one = rendererAs<editor::ListRenderer>(Id::OneRow).view();
  QTest::mouseClick(one.horizontalHeader()->viewport(), Qt::LeftButton, {},
                    QPoint(5, one.horizontalHeader()->height() / 2));
  settle();
  EXPECT_EQ(one.model()->index(2, 0).data().toString(), "10");
}

TEST_F(ListRenderer, ColumnsHaveTheWidthsOfTheListUntilOneIsDragged) {
  openWith(3);
  const std::vector<int> widths = list().columnWidths(view().viewport()->width());
  EXPECT_EQ(view().columnWidth(0), widths[0]);
  EXPECT_EQ(view().columnWidth(1), widths[1]);
  view().horizontalHeader()->resizeSection(0, 40);
  window_.resize(window_.width() + 100, window_.height());
  settle();
  EXPECT_EQ(view().columnWidth(0), 40);
}

TEST_F(ListRenderer, RowsCopyAsLinesOfCells) {
  openWith(4);
  list().select({1, 2});
  settle();
  QTest::keySequence(&view(), QKeySequence::Copy);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "1\tno\n2\tyes\n");
}

TEST_F(ListRenderer, RowsCopyInTheOrderInWhichTheyStandAndWithoutHiddenOnes) {
  openWith(4);
  list().sort({0, true});
  settle();
  filter().setText("no");
  QTest::keySequence(&view(), QKeySequence::SelectAll);
  QTest::keySequence(&view(), QKeySequence::Copy);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "3\tno\n1\tno\n");
}

TEST_F(ListRenderer, ATabOrALineEndInACellDoesNotTearTheCopiedRow) {
  openWith(2);
  list().element(0)->setAttribute("k", u"a\tb\nc");
  list().select({0});
  settle();
  QTest::keySequence(&view(), QKeySequence::Copy);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "a b c\tyes\n");
}

TEST_F(ListRenderer, ItsMenuCopiesAndSelectsAll) {
  openWith(3);
  const auto choose = [this](int entry) {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(5, 5),
                            view().mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(view().viewport(), &event);
    auto* menu = dynamic_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QAction* action = menu->actions().at(entry);
    if (action->isEnabled()) action->trigger();
    menu->close();
  };
  QGuiApplication::clipboard()->setText("before");
  choose(0);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "before") << "nothing is selected";
  choose(1);
  EXPECT_EQ(list().selection(), (Rows{0, 1, 2}));
  choose(0);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "0\tyes\n1\tno\n2\tyes\n");
}

TEST_F(ListRenderer, ColoursAndSwatchesAreShown) {
  openWith(2);
  list().setColour(1, {0xA0, 0xA0, 0xA0});
  list().setSwatch(0, {1, 2, 3});
  const auto* model = view().model();
  EXPECT_EQ(model->index(1, 1).data(Qt::ForegroundRole).value<QColor>(), QColor(0xA0, 0xA0, 0xA0));
  EXPECT_FALSE(model->index(0, 1).data(Qt::ForegroundRole).isValid());
  const auto swatch = model->index(0, 0).data(Qt::DecorationRole).value<QIcon>();
  for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected})
    EXPECT_EQ(swatch.pixmap(16, mode).toImage().pixelColor(8, 8), QColor(1, 2, 3));
  EXPECT_FALSE(model->index(0, 1).data(Qt::DecorationRole).isValid());
}

TEST_F(ListRenderer, ASingleSelectListTakesOneRowAndHasNoFilter) {
  dialog_.onInit = [this](sample::Dialog& dialog) { fillRows(dialog.List(Id::OneRow), 3); };
  open();
  auto& one = rendererAs<editor::ListRenderer>(Id::OneRow);
  EXPECT_EQ(one.filterLine(), nullptr);
  const auto at = [&](int row) {
    return one.view().visualRect(one.view().model()->index(row, 0)).center();
  };
  QTest::mouseClick(one.view().viewport(), Qt::LeftButton, {}, at(0));
  QTest::mouseClick(one.view().viewport(), Qt::LeftButton, Qt::ControlModifier, at(2));
  EXPECT_EQ(dialog_.List(Id::OneRow).selection(), Rows{2});
}

// --- filter

TEST_F(ListRenderer, SelectAllTakesOnlyTheRowsThatTheFilterShows) {
  openWith(10);
  filter().setText("YES");
  EXPECT_EQ(view().model()->rowCount(), 5);
  QTest::keySequence(&view(), QKeySequence::SelectAll);
  EXPECT_EQ(list().selection(), (Rows{0, 2, 4, 6, 8}));
  filter().clear();
  EXPECT_EQ(list().selection(), (Rows{0, 2, 4, 6, 8})) << "shown again, but not selected";
}

TEST_F(ListRenderer, RowsThatTheFilterHidesAreNoLongerSelected) {
  openWith(10);
  list().select({1, 2, 3});
  settle();
  filter().setText("yes");
  EXPECT_EQ(list().selection(), Rows{2});
  filter().setText("");
  EXPECT_EQ(list().selection(), Rows{2});
}

TEST_F(ListRenderer, ARowThatTheProgramSelectsIsShownInSpiteOfTheFilter) {
  openWith(10);
  filter().setText("yes");
  list().selectOnly(7);
  settle();
  EXPECT_EQ(filter().text(), "");
  EXPECT_EQ(shownSelection(), Rows{7});
}

TEST_F(ListRenderer, EnterInTheFilterDoesNotSendTheDialog) {
  openWith(3);
  filter().setFocus();
  QTest::keyClick(&filter(), Qt::Key_Return);
  EXPECT_FALSE(dialog_.HasEnded());
  EXPECT_TRUE(view().hasFocus());
}

// --- many rows

TEST_F(ListRenderer, AHundredThousandRowsOpenSelectAndFilter) {
  constexpr std::size_t Count = 100'000;
  openWith(Count);
  EXPECT_EQ(view().model()->rowCount(), int(Count));
  view().selectAll();
  EXPECT_EQ(list().selection().size(), Count);
  EXPECT_EQ(dialog_.log.size(), 1U) << "one notice, however many rows";
  EXPECT_EQ(view().selectionModel()->selection().size(), 1) << "one range, not one per row";
  view().scrollToBottom();
  settle();
  EXPECT_EQ(cell(Count - 1, 0), "99999");
  filter().setText("99999");
  EXPECT_EQ(view().model()->rowCount(), 1);
  EXPECT_EQ(list().selection(), Rows{Count - 1});
}

TEST_F(ListRenderer, ScatteredRowsBecomeAsManyRanges) {
  openWith(1000);
  Rows rows;
  for (std::size_t row = 0; row < 1000; row += 4) rows.push_back(row);
  list().select(rows);
  settle();
  EXPECT_EQ(shownSelection(), rows);
  EXPECT_EQ(view().selectionModel()->selection().size(), 250);
}

}  // namespace
