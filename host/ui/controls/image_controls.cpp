#include "host/ui/controls/image_controls.h"

#include <utility>

namespace host {

ImageControl::ImageControl(ControlOwner& owner, const ControlSpec& spec)
    : Control(owner, spec), image_(spec.image) {}

void ImageControl::setImage(std::string file) {
  if (image_ == file) return;
  image_ = std::move(file);
  changed(Change::state);
}

}  // namespace host
