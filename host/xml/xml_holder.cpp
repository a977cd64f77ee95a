#include "host/xml/xml_holder.h"

namespace host {
namespace {

XmlHolder* first = nullptr;

}  // namespace

XmlHolder::XmlHolder() : next_(first), link_(&first) {
  if (next_ != nullptr) next_->link_ = &next_;
  first = this;
}

XmlHolder::~XmlHolder() {
  *link_ = next_;
  if (next_ != nullptr) next_->link_ = link_;
}

void XmlHolder::tellAllHeld(const Note& note) {
  for (const XmlHolder* holder = first; holder != nullptr; holder = holder->next_)
    holder->tellHeld(note);
}

}  // namespace host
