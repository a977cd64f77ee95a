#include "pages/binding/working_copy.h"

namespace lamp {

void WorkingCopy::take(const XmlDocument& reply) {
  if (reply.Root() == nullptr) return;
  *untouched_.Root() = *reply.Root();
  *working_.Root() = *reply.Root();
}

XmlDocument::XmlNode* WorkingCopy::prepareWrite(XmlDocument& document,
                                                host::XmlName writeSection) {
  XmlDocument::XmlNode& written = beginWrite(document, writeSection);
  const XmlDocument::XmlNode* edited = section();
  if (edited == nullptr) return nullptr;
  written = *edited;
  written.SetTag(writeSection);  // the copy brought the section's own tag along
  return &written;
}

XmlDocument::XmlNode* WorkingCopy::prepareWrite(XmlDocument& document, host::XmlName writeSection,
                                                const XCBasicString& stamp) {
  XmlDocument::XmlNode* written = prepareWrite(document, writeSection);
  return written != nullptr && setActivationDate(*written, stamp) ? written : nullptr;
}

bool setActivationDate(XmlDocument::XmlNode& element, const XCBasicString& stamp) {
  element.setAttribute(attribute::Stamp, stamp);
  return element.renameAttribute(attribute::Stamp, attribute::ActivationDate);
}

}  // namespace lamp
