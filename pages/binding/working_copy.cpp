#include "pages/binding/working_copy.h"

#include <utility>

namespace lamp {

void WorkingCopy::take(XmlDocument& reply) {
  if (reply.Root() == nullptr) return;
  untouched_ = std::move(reply);
  *working_.Root() = *untouched_.Root();
}

XmlDocument::XmlNode* WorkingCopy::prepareWrite(XmlDocument& document, host::XmlName writeSection) {
  const XmlDocument::XmlNode* edited = section();
  return edited == nullptr ? nullptr : &writeCopy(document, *edited, writeSection);
}

XmlDocument::XmlNode* WorkingCopy::prepareWrite(XmlDocument& document, host::XmlName writeSection,
                                                const XCBasicString& stamp) {
  XmlDocument::XmlNode* written = prepareWrite(document, writeSection);
  return written != nullptr && setActivationDate(*written, stamp) ? written : nullptr;
}

XmlDocument::XmlNode& writeCopy(XmlDocument& document, const XmlDocument::XmlNode& source,
                                host::XmlName writeSection) {
  XmlDocument::XmlNode& written = beginWrite(document, writeSection);
  written = source;
  written.SetTag(writeSection);  // the copy brought the source's own tag along
  return written;
}

bool setActivationDate(XmlDocument::XmlNode& element, const XCBasicString& stamp) {
  element.setAttribute(attribute::Stamp, stamp);
  return element.renameAttribute(attribute::Stamp, attribute::ActivationDate);
}

}  // namespace lamp
