#include "pages/binding/document_page.h"

namespace lamp {

DocumentPage::DocumentPage(int templateNumber, const host::PageDescription& description,
                           XCDriver* driver, CWnd* parent)
    : SettingsPage(templateNumber, *description.readSection, driver, parent),
      description_(description),
      copy_(*description.readSection) {
  if (description.activation != 0) activation_.emplace(*this, description.activation);
}

bool DocumentPage::OnInitDialog() {
  if (activation_) activation_->initialise();
  copy_.take(Document());
  return SettingsPage::OnInitDialog();
}

const host::EditedPage::Node* DocumentPage::Untouched() const {
  return copy_.untouchedSection();
}

XCBasicString DocumentPage::DateFault() const {
  return activation_ ? activation_->fault() : XCBasicString();
}

void DocumentPage::ShowStamp() {
  if (const XmlDocument::XmlNode* section = copy_.section())
    activation_->showStamp(section->getAttribute(attribute::Stamp));
}

bool DocumentPage::Validate() {
  for (const host::RowSet& rows : description_.rows)
    if (rows.places.front().list != 0 && !validateRows(rows)) return false;
  return true;
}

bool DocumentPage::validateRows(const host::RowSet& rows) {
  host::ListControl& list = List(rows.places.front().list);
  std::vector<std::size_t> places(rows.bindings.size());
  for (std::size_t row = 0; row < list.rowCount(); ++row)
    for (std::size_t i = 0; i < rows.bindings.size(); ++i) {
      const host::Binding& binding = rows.bindings[i];
      if (binding.rule && !binding.rule.accepts(*list.element(row), places[i]))
        return refuse(rows, row, binding);
    }
  if (rows.visit == host::CheckVisit::everyRow && list.rowCount() > 0)
    list.selectOnly(list.rowCount() - 1);
  return true;
}

// The row at fault becomes the selected one, so that the edits show what is wrong with it.
bool DocumentPage::refuse(const host::RowSet& rows, std::size_t row, const host::Binding& binding) {
  host::ListControl& list = List(rows.places.front().list);
  if (rows.visit != host::CheckVisit::nothing) list.selectOnly(row);
  MessageBox(binding.rule.message(*list.element(row)));
  FocusAndSelectAll(binding.control);
  return false;
}

bool DocumentPage::Write() {
  if (!Changed()) return true;
  XCBasicString stamp;
  if (activation_) {
    const std::optional<XCBasicString> checked = activation_->checkedStamp();
    if (!checked) return false;
    stamp = *checked;
  }
  const XmlDocument::XmlNode* edited = Edited();
  return edited != nullptr && description_.makeWrite(Document(), Untouched(), *edited, stamp) &&
         writeCfg(false);
}

}  // namespace lamp
