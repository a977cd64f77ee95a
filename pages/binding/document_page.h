#pragma once

#include <optional>

#include "host/dialogs/page_description.h"
#include "pages/binding/date_field.h"
#include "pages/binding/settings_page.h"
#include "pages/binding/working_copy.h"

namespace lamp {

/// A page that edits a working copy of its section and sends it by its description: nothing while
/// the copies are equal, and only with a valid activation date where there is one.
class DocumentPage : public SettingsPage, public host::EditedPage {
 public:
  /// @p description must outlive the page.
  DocumentPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
               CWnd* parent);

  bool OnInitDialog() override;
  host::EditedPage* Edits() override { return this; }

  const host::PageDescription& Description() const override { return description_; }
  const Node* Untouched() const override;
  const Node* Edited() override { return copy_.section(); }
  XCBasicString DateFault() const override;

 protected:
  /// Checks the rows of every list by their rules, in the order of the lists.
  bool Validate() override;
  bool Write() override;
  /// Whether OK has something to send.
  virtual bool Changed() { return copy_.changed(); }

  WorkingCopy& Copy() { return copy_; }
  /// Lets the activation date start at the section's stamp, where that is 14 digits.
  void ShowStamp();

 private:
  const host::PageDescription& description_;
  WorkingCopy copy_;
  std::optional<DateField> activation_;
};

}  // namespace lamp
