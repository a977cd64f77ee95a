#include "bench/bare_window.h"

#include <QtCore/QSortFilterProxyModel>
#include <QtWidgets/QDialog>
#include <QtWidgets/QVBoxLayout>

#include "bench/bare_table.h"

namespace bench {
namespace {

constexpr int Reference = 1;

class BareWindow : public TableWindow {
 public:
  explicit BareWindow(const XmlDocument& reply) : table_(reply) {
    view_ = new QTableView(&window_);
    view_->setModel(&table_);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setWordWrap(false);
    auto* column = new QVBoxLayout(&window_);
    column->addWidget(view_);
    window_.resize(640, 480);
    window_.show();
  }

  QTableView& view() override { return *view_; }
  void type(const QString& text) override { table_.setAll(Reference, text); }
  void sort() override {
    descending_ = !descending_;
    table_.sort(Reference, descending_ ? Qt::DescendingOrder : Qt::AscendingOrder);
  }
  void filter(const QString& text) override {
    if (filtered_.sourceModel() == nullptr) {
      filtered_.setSourceModel(&table_);
      filtered_.setFilterKeyColumn(-1);
      view_->setModel(&filtered_);
    }
    filtered_.setFilterFixedString(text);
  }

 private:
  BareTable table_;
  QSortFilterProxyModel filtered_;
  QDialog window_;
  QTableView* view_;
  bool descending_ = false;
};

}  // namespace

void openBareWindow(const std::string& xml, const AtWindow& then) {
  XmlDocument reply;
  reply.Parse(xml);
  BareWindow window(reply);
  then(window);
}

}  // namespace bench
