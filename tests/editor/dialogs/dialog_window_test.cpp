#include "editor/dialogs/dialog_window.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "tests/editor/support/editor_rig.h"

namespace {

namespace layout = host::layout;

class DialogWindow : public support::EditorRig {
 protected:
  /// Runs the dialog modally; @p script is called once it is shown.
  int run(std::function<void(editor::DialogWindow&)> script) {
    QTimer::singleShot(0, &window_, [this, script = std::move(script)] {
      ASSERT_NE(frontEnd_.topWindow(), nullptr);
      settle();
      script(*frontEnd_.topWindow());
      settle();
      if (!dialog_.HasEnded()) {
        ADD_FAILURE() << "the dialog is still open";
        dialog_.EndDialog(IDCANCEL);
      }
    });
    return dialog_.DoModal();
  }
  QWidget& shown(editor::DialogWindow& window, int id) {
    return window.body().renderer(id)->widget();
  }
  /// Title, a box with two edits, and the foot.
  void arrange() {
    dialog_.onInit = [](sample::Dialog& dialog) {
      dialog.SetLayout(XCVerticalLayout(
          {layout::control(Id::Title),
           layout::box(Id::Box, {layout::control(Id::Free), layout::control(Id::Limited)}),
           layout::okCancelRow()}));
    };
  }
};

TEST_F(DialogWindow, OkEndsItWithOkAndTheCloseButtonWithCancel) {
  EXPECT_EQ(run([](editor::DialogWindow& window) {
              auto* ok = window.body().renderer(host::IdOk)->focusWidget();
              QTest::mouseClick(ok, Qt::LeftButton);
            }),
            IDOK);
  EXPECT_EQ(run([](editor::DialogWindow& window) { window.close(); }), IDCANCEL);
}

TEST_F(DialogWindow, EnterInAnEditPressesOkAndEscapeCancel) {
  const auto keyInEdit = [this](Qt::Key key) {
    return run([key](editor::DialogWindow& window) {
      QWidget* edit = window.body().renderer(Id::Free)->focusWidget();
      edit->setFocus();
      QTest::keyClick(edit, key);
    });
  };
  EXPECT_EQ(keyInEdit(Qt::Key_Return), IDOK);
  EXPECT_EQ(keyInEdit(Qt::Key_Escape), IDCANCEL);
}

TEST_F(DialogWindow, ADialogThatRefusesOkStaysOpen) {
  bool refused = false;
  dialog_.onOk = [&] { return std::exchange(refused, true); };
  EXPECT_EQ(run([&](editor::DialogWindow& window) {
              QWidget* ok = window.body().renderer(host::IdOk)->focusWidget();
              QTest::mouseClick(ok, Qt::LeftButton);
              EXPECT_TRUE(refused);
              EXPECT_TRUE(window.isVisible());
              QTest::mouseClick(ok, Qt::LeftButton);
            }),
            IDOK);
}

TEST_F(DialogWindow, HiddenControlsTakeNoRoom) {
  arrange();
  run([&](editor::DialogWindow& window) {
    const int before = window.body().content().sizeHint().height();
    dialog_.GetDlgItem(Id::Free).setVisible(false);
    settle();
    EXPECT_LT(window.body().content().sizeHint().height(), before);
    dialog_.GetDlgItem(Id::Box).setVisible(false);
    settle();
    EXPECT_FALSE(shown(window, Id::Box).isVisible());
    EXPECT_FALSE(shown(window, Id::Limited).isVisible()) << "it goes with its box";
    EXPECT_LE(window.body().content().sizeHint().height(),
              shown(window, Id::Title).sizeHint().height() + 40);
    dialog_.EndDialog(IDOK);
  });
}

TEST_F(DialogWindow, ControlsWithoutAPlaceAreNotShown) {
  arrange();
  run([&](editor::DialogWindow& window) {
    EXPECT_TRUE(shown(window, Id::Free).isVisible());
    EXPECT_FALSE(shown(window, Id::Rows).isVisible());
    dialog_.GetDlgItem(Id::Rows).setVisible(false);
    dialog_.GetDlgItem(Id::Rows).setVisible(true);
    settle();
    EXPECT_FALSE(shown(window, Id::Rows).isVisible());
    dialog_.EndDialog(IDOK);
  });
}

TEST_F(DialogWindow, OkAndCancelStayInSightWhenTheContentScrolls) {
  dialog_.onInit = [](sample::Dialog& dialog) {
    std::vector<host::LayoutItem> items(100, layout::gap(50));
    items.push_back(layout::control(Id::Free));
    items.push_back(layout::okCancelRow());
    dialog.SetLayout(XCVerticalLayout(items));
  };
  run([&](editor::DialogWindow& window) {
    EXPECT_LE(window.height(), window.screen()->availableGeometry().height());
    QWidget& ok = shown(window, host::IdOk);
    EXPECT_TRUE(window.rect().contains(ok.mapTo(&window, ok.rect().center())));
    dialog_.EndDialog(IDOK);
  });
}

TEST_F(DialogWindow, CanBeMadeSmallerThanItOpened) {
  dialog_.onInit = [](sample::Dialog& dialog) {
    dialog.SetLayout(XCVerticalLayout({layout::control(Id::Rows, 1), layout::okCancelRow()}));
  };
  run([&](editor::DialogWindow& window) {
    const QSize smaller = window.size() - QSize(0, 40);
    window.resize(smaller);
    EXPECT_EQ(window.size(), smaller);
    dialog_.EndDialog(IDOK);
  });
}

/// A dialog of a template whose opening size is its least.
class DialogThatOpensAtItsLeast : public XCBaseDlg {
 public:
  static constexpr int Template = 9003;
  static constexpr int Rows = 6100;
  DialogThatOpensAtItsLeast() : XCBaseDlg(Template, nullptr) {}
};

TEST_F(DialogWindow, GetsNoSmallerThanItOpenedWhereTheTemplateWantsIt) {
  host::DialogTemplate made{
      DialogThatOpensAtItsLeast::Template,
      "LeastDialog",
      "",
      {host::list(DialogThatOpensAtItsLeast::Rows, "rows"), host::okButton(), host::cancelButton()},
      true};
  host::ExtensionModule module;
  module.name = "least";
  module.templates.emplace_back(made);
  host::registerModule(module);
  {
    DialogThatOpensAtItsLeast dialog;
    QTimer::singleShot(0, &window_, [&] {
      editor::DialogWindow& window = *frontEnd_.topWindow();
      settle();
      const QSize opened = window.size();
      EXPECT_GT(opened.height(), window.body().content().minimumSizeHint().height());
      window.resize(opened / 2);
      EXPECT_EQ(window.size(), opened);
      dialog.SetDlgItemText(host::IdOk, u"another text");
      settle();
      window.resize(opened / 2);
      EXPECT_EQ(window.size(), opened) << "also after a refresh";
      window.resize(opened * 2);
      EXPECT_EQ(window.size(), opened * 2);
      dialog.EndDialog(IDOK);
      settle();
    });
    dialog.DoModal();
  }
  host::unregisterModule(module);
}

TEST_F(DialogWindow, TheFocusGoesBothWays) {
  arrange();
  run([&](editor::DialogWindow& window) {
    dialog_.SetFocus(dialog_.GetDlgItem(Id::Limited));
    settle();
    EXPECT_TRUE(window.body().renderer(Id::Limited)->focusWidget()->hasFocus());
    window.body().renderer(Id::Free)->focusWidget()->setFocus();
    EXPECT_EQ(dialog_.Focus(), &dialog_.GetDlgItem(Id::Free));
    dialog_.EndDialog(IDOK);
  });
}

TEST_F(DialogWindow, TheTabKeyFollowsTheTable) {
  dialog_.onInit = [](sample::Dialog& dialog) {
    dialog.SetLayout(XCVerticalLayout({layout::control(Id::Digits), layout::control(Id::Limited),
                                       layout::control(Id::Free), layout::okCancelRow()}));
  };
  run([&](editor::DialogWindow& window) {
    const auto edit = [&](int id) { return window.body().renderer(id)->focusWidget(); };
    edit(Id::Free)->setFocus();
    QTest::keyClick(edit(Id::Free), Qt::Key_Tab);
    EXPECT_TRUE(edit(Id::Limited)->hasFocus());
    QTest::keyClick(edit(Id::Limited), Qt::Key_Tab);
    EXPECT_TRUE(edit(Id::Digits)->hasFocus());
    dialog_.EndDialog(IDOK);
  });
}

TEST_F(DialogWindow, ManyChangesAreShownTogether) {
  arrange();
  int refreshes = 0;
  run([&](editor::DialogWindow& window) {
    window.body().onRefreshed = [&refreshes, follow = window.body().onRefreshed] {
      ++refreshes;
      follow();
    };
    for (int i = 0; i < 1000; ++i) dialog_.Edit(Id::Free).setText(host::decimal(i));
    QCoreApplication::processEvents();
    EXPECT_EQ(refreshes, 1);
    auto& line = dynamic_cast<QLineEdit&>(*window.body().renderer(Id::Free)->focusWidget());
    EXPECT_EQ(line.text(), "999");
    dialog_.EndDialog(IDOK);
  });
}

TEST_F(DialogWindow, AMessageOffersItsButtonsInTheLanguageInForce) {
  dialog_.onPush = [&] {
    QTimer::singleShot(0, &window_, [] {
      auto* box = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      EXPECT_EQ(box->text(), "first\n\nsecond");
      ASSERT_EQ(box->buttons().size(), 2);
      EXPECT_EQ(box->buttons()[0]->text(), "[60002]");
      QTest::mouseClick(box->buttons()[0], Qt::LeftButton);
    });
    EXPECT_EQ(dialog_.MessageBox(u"first\r\n\r\nsecond", host::MessageButtons::retryCancel),
              IDRETRY);
  };
  run([&](editor::DialogWindow& window) {
    QTest::mouseClick(window.body().renderer(Id::Push)->focusWidget(), Qt::LeftButton);
    EXPECT_FALSE(dialog_.log.empty());
    dialog_.EndDialog(IDOK);
  });
}

TEST_F(DialogWindow, EscapeAnswersAQuestionWithNo) {
  dialog_.onPush = [&] {
    QTimer::singleShot(0, &window_,
                       [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
    EXPECT_EQ(dialog_.MessageBox(u"sure?", host::MessageButtons::yesNo), IDNO);
  };
  run([&](editor::DialogWindow& window) {
    QTest::mouseClick(window.body().renderer(Id::Push)->focusWidget(), Qt::LeftButton);
    dialog_.EndDialog(IDOK);
  });
}

}  // namespace
