#pragma once

#include "pages/binding/described_page.h"
#include "pages/binding/working_copy.h"

namespace lamp {

/// A page that edits a working copy of its section and sends it by its description: nothing while
/// the copies are equal.
class DocumentPage : public DescribedPage {
 public:
  /// @p description must outlive the page.
  DocumentPage(int templateNumber, const host::PageDescription& description, XCDriver* driver,
               CWnd* parent);

  bool OnInitDialog() override;

  const Node* Untouched() const override { return copy_.untouchedSection(); }
  const Node* Edited() override { return copy_.section(); }

 protected:
  /// Checks the rows of every list by their rules, in the order of the lists.
  bool Validate() override;
  bool Changed() override { return copy_.changed(); }

  WorkingCopy& Copy() { return copy_; }

 private:
  WorkingCopy copy_;
};

}  // namespace lamp
