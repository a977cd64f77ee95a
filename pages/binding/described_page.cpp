#include "pages/binding/described_page.h"

namespace lamp {

DescribedPage::DescribedPage(int templateNumber, const host::PageDescription& description,
                             XCDriver* driver, CWnd* parent)
    : SettingsPage(templateNumber, description.readSection, driver, parent),
      description_(description) {
  if (description.activation != 0) activation_.emplace(*this, description.activation);
}

bool DescribedPage::OnInitDialog() {
  if (activation_) activation_->initialise();
  return SettingsPage::OnInitDialog();
}

XCBasicString DescribedPage::DateFault() const {
  return activation_ ? activation_->fault() : XCBasicString();
}

void DescribedPage::ShowStamp() {
  if (const Node* section = Untouched())
    activation_->showStamp(section->getAttribute(attribute::Stamp));
}

std::optional<XCBasicString> DescribedPage::CheckedStamp() {
  return activation_ ? activation_->checkedStamp() : XCBasicString();
}

bool DescribedPage::Write() {
  if (!Changed()) return true;
  const std::optional<XCBasicString> stamp = CheckedStamp();
  return stamp && Send(*stamp);
}

bool DescribedPage::Send(const XCBasicString& stamp) {
  const Node* edited = Edited();
  return edited != nullptr && description_.makeWrite(Document(), Untouched(), *edited, stamp) &&
         writeCfg(false);
}

}  // namespace lamp
