#pragma once

#include <string>

#include "host/ui/control.h"

namespace host {

/// A control with an image: a picture, or the base of a push button.
class HOST_API ImageControl : public Control {
 public:
  ImageControl(ControlOwner& owner, const ControlSpec& spec);

  /// The name of a file in the host's image folder, or "#RRGGBB" for a swatch of that colour; empty
  /// for none.
  const std::string& image() const { return image_; }
  void setImage(std::string file);

 private:
  std::string image_;
};

}  // namespace host

/// A push button with a caption, an image or both.
class HOST_API CImageButton : public host::ImageControl {
 public:
  using host::ImageControl::ImageControl;
};
