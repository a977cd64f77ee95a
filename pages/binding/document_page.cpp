#include "pages/binding/document_page.h"

#include "pages/binding/row_check.h"

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
    if (rows.places.front().list != 0 && !checkRows(*this, rows)) return false;
  return true;
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
