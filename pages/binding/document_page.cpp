#include "pages/binding/document_page.h"

#include "pages/binding/row_check.h"

namespace lamp {

DocumentPage::DocumentPage(int templateNumber, const host::PageDescription& description,
                           XCDriver* driver, CWnd* parent)
    : DescribedPage(templateNumber, description, driver, parent), copy_(*description.readSection) {}

bool DocumentPage::OnInitDialog() {
  copy_.take(Document());
  return DescribedPage::OnInitDialog();
}

bool DocumentPage::Validate() {
  for (const host::RowSet& rows : Description().rows)
    if (rows.places.front().list != 0 && !checkRows(*this, rows)) return false;
  return true;
}

}  // namespace lamp
