#pragma once

#include <optional>

#include "host/dialogs/page_description.h"
#include "pages/binding/date_field.h"
#include "pages/binding/settings_page.h"

namespace lamp {

/// A settings page that tells what it edits by its description, and sends it once: nothing while
/// nothing changed, and only with a valid activation date where it has one.
class DescribedPage : public SettingsPage, public host::EditedPage {
 public:
  using Node = XmlDocument::XmlNode;

  /// @p description must outlive the page.
  DescribedPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
                CWnd* parent);

  bool OnInitDialog() override;
  host::EditedPage* Edits() override { return this; }

  const host::PageDescription& Description() const override { return description_; }
  XCBasicString DateFault() const override;

 protected:
  bool Write() override;
  /// Whether OK has something to send.
  virtual bool Changed() { return true; }
  /// Sends what changed, from the activation date @p stamp on. False keeps the page open.
  virtual bool Send(const XCBasicString& stamp);

  /// Lets the activation date start at the section's stamp, where that is 14 digits.
  void ShowStamp();
  /// The activation date, empty for a page without one; none after an invalid one, which is shown.
  std::optional<XCBasicString> CheckedStamp();

 private:
  const host::PageDescription& description_;
  std::optional<DateField> activation_;
};

}  // namespace lamp
