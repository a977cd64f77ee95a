#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lamp::controller {

/// Keeps web pages of other sites out, which a browser on this machine would let in: pages that
/// send requests of their own (the header Origin names them), and pages whose site's name was made
/// to point at this machine (the header Host names that site).
///
/// A host is this controller's when it is an address in digits, "localhost" or a name that ends
/// with ".localhost", or one of the names that it was given. Requests without these headers come
/// from no browser and pass.
class VisitorCheck {
 public:
  /// `names` are compared without case: the address that is listened on, and what it is known by.
  explicit VisitorCheck(std::vector<std::string> names);

  /// Why a request with these headers is refused; empty where it is not, or where the headers are
  /// missing.
  std::string faultOf(std::string_view host, std::string_view origin) const;

 private:
  bool isOwn(std::string_view name) const;

  std::vector<std::string> names_;
};

}  // namespace lamp::controller
